#pragma once

#include "platform/pages/Page.h"
#include "platform/paper/Typeface.h"

#include <QImage>

class QPainter;

namespace paper {

/// Paints pages on the screen, the printer or a PDF, all in the same way.
class PagePainter {
public:
    /// Paints with the sheet's upper left corner at the painter's origin. Doesn't paint the paper itself.
    void Paint(QPainter& painter, const pages::Page& page, double dotsPerMillimetre);

private:
    void PaintPicture(QPainter& painter, const pages::Picture& picture);
    void PaintRun(QPainter& painter, const pages::Run& run);

    Typefaces typefaces;
    QByteArray decodedFile; ///< the picture painted last; a report has one
    QImage decoded;
};

} // namespace paper
