#pragma once

#include <QString>
#include <QWidget>

namespace tests {

/// How a screen is built, for comparison with a reviewed text: a line for each layout, gap and control, indented under
/// what it is in, with the properties that the screen has set.
QString ScreenAsText(const QWidget& screen);

/// Compares the text of a screen with a reviewed one. Sizes in pixels, which come from the metrics of fonts, count only
/// with the version of Qt that the reviewed texts were made with.
void ExpectGoldenScreen(const QString& text, const QString& reviewed, const QString& actual);

} // namespace tests
