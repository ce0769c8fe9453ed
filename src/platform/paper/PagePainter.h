#pragma once

#include "platform/pages/Page.h"
#include "platform/paper/Typeface.h"

class QPainter;

namespace paper {

/// Paints pages on the screen, the printer or a PDF, all in the same way.
class PagePainter {
public:
    /// Paints with the sheet's upper left corner at the painter's origin. Doesn't paint the paper itself.
    void Paint(QPainter& painter, const pages::Page& page, double dotsPerMillimetre);

private:
    void PaintRun(QPainter& painter, const pages::Run& run);

    Typefaces typefaces;
};

} // namespace paper
