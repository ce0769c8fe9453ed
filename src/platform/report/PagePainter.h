#pragma once

#include "platform/report/Page.h"
#include "platform/report/Typeface.h"

class QPainter;

namespace report {

/// Paints pages: the one way from a page to the screen, the printer or a PDF.
class PagePainter {
public:
    /// Paints with the sheet's upper left corner at the painter's origin. The paper itself is not painted.
    void Paint(QPainter& painter, const Page& page, double dotsPerMillimetre);

private:
    void PaintRun(QPainter& painter, const Run& run);

    Typefaces typefaces;
};

} // namespace report
