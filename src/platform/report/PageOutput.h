#pragma once

#include <QString>

class QPrinter;

namespace report {

class PageLayout;
class PagePainter;

/// Writes all pages into a PDF at `path`. Raises 61 when the disk is full, 70 when writing there is refused, 76 when
/// the folder is missing, 57 for another failure; a file that stood there before then stands there still, and no half
/// one does.
void WritePdf(const PageLayout& layout, PagePainter& painter, const QString& path);

/// Sends the pages chosen in `printer` (its page range, or all of them) on paper of the template's size, whole sheets
/// without the printer's own margins. Raises 482 when the printer refuses.
void PrintPages(const PageLayout& layout, PagePainter& painter, QPrinter& printer);

} // namespace report
