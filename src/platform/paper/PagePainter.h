#pragma once

#include "platform/pages/Page.h"
#include "platform/paper/Typeface.h"

#include <QColor>
#include <QImage>

class QPainter;

namespace paper {

/// The colours of a page by their roles.
struct Inks {
    QColor paper{Qt::white};
    QColor text{0x1a, 0x1f, 0x24};
    QColor faint{0x5f, 0x6b, 0x73};
    QColor faintRule{0xd3, 0xd9, 0xdd};
    QColor shade{0xec, 0xf0, 0xf2};
    QColor first{0x1f, 0x6f, 0x8b}; ///< the series of a chart
    QColor second{0x5f, 0x6b, 0x73};
    QColor third{0xa8, 0x5a, 0x00};
    QColor loss{0xb3, 0x1b, 0x1b};
};

/// Paints pages on the screen, the printer or a PDF, all in the same way.
class PagePainter {
public:
    PagePainter() = default;
    explicit PagePainter(const Inks& roles) : inks(roles) {}

    /// Paints with the sheet's upper left corner at the painter's origin. Doesn't paint the paper itself.
    void Paint(QPainter& painter, const pages::Page& page, double dotsPerMillimetre);

private:
    void PaintPicture(QPainter& painter, const pages::Picture& picture);
    void PaintRun(QPainter& painter, const pages::Run& run);

    void PaintShape(QPainter& painter, const pages::Shape& shape) const;
    QColor ColourOf(pages::Tint tint) const;

    Inks inks;
    Typefaces typefaces;
    QByteArray decodedFile; ///< the picture painted last; a report has one
    QImage decoded;
};

} // namespace paper
