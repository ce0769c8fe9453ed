#include "platform/forms/FittingFont.h"

#include <QFontMetricsF>

namespace forms {

QFont FittingFont(QFont font, const QString& text, int width)
{
    constexpr double step = 0.5; // points
    constexpr double smallest = 3;
    while (width > 0 && font.pointSizeF() > smallest && QFontMetricsF(font).horizontalAdvance(text) > width)
        font.setPointSizeF(font.pointSizeF() - step);
    return font;
}

} // namespace forms
