#pragma once

class QPrinter;

namespace pages {
class PageLayout;
}
namespace paper {
class PagePainter;
}

namespace report {

/// Sends the pages chosen in `printer` (its page range, or all of them) to it, on paper of the template's size, whole
/// sheets without the printer's own margins. Raises 482 when the printer refuses.
void PrintPages(const pages::PageLayout& layout, paper::PagePainter& painter, QPrinter& printer);

} // namespace report
