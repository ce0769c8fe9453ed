#pragma once

#include <QString>

class QPrinter;

namespace report {

class PageLayout;
class PagePainter;

/// Writes all pages into a PDF at `path` that only its owner can read, also where it replaces a file that others could.
///
/// Raises 61 when the disk is full, 70 when writing there is refused, 76 when the folder is missing. On failure an
/// existing file is unchanged and no partial file is left.
void WritePdf(const PageLayout& layout, PagePainter& painter, const QString& path);

/// Sends the pages chosen in `printer` (its page range, or all of them) on paper of the template's size, whole sheets
/// without the printer's own margins. Raises 482 when the printer refuses.
void PrintPages(const PageLayout& layout, PagePainter& painter, QPrinter& printer);

} // namespace report
