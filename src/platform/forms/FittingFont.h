#pragma once

#include <QFont>
#include <QString>

namespace forms {

/// The font, or a smaller one in which `text` takes at most `width` pixels: a figure is never cut.
QFont FittingFont(QFont font, const QString& text, int width);

} // namespace forms
