#pragma once

#include <QString>

namespace pages {
class PageLayout;
}

namespace paper {

class PagePainter;

/// Writes all pages into a PDF at `path`, readable by its owner only, even if it replaces a file that others could
/// read. The PDF's creator is the application.
///
/// Raises 61 when the disk is full, 70 when writing there is refused, 76 when the folder is missing. On failure an
/// existing file is unchanged and no partial file is left.
void WritePdf(const pages::PageLayout& layout, PagePainter& painter, const QString& path);

} // namespace paper
