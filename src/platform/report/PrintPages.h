#pragma once

class QPrinter;

namespace pages {
class PageLayout;
}
namespace paper {
class PagePainter;
}

namespace report {

/// Prints the page range chosen in `printer`, or all pages, on the template's paper size without printer margins.
/// Raises 482 when the printer refuses.
void PrintPages(const pages::PageLayout& layout, paper::PagePainter& painter, QPrinter& printer);

} // namespace report
