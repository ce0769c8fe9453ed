#pragma once

#include <QFont>
#include <QString>

namespace forms {

/// The font, reduced until `text` fits into `width` pixels.
QFont FittingFont(QFont font, const QString& text, int width);

} // namespace forms
