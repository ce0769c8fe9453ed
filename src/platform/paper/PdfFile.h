#pragma once

#include <QString>

namespace pages {
class PageLayout;
}

namespace paper {

class PagePainter;

/// Writes all pages into a PDF at `path` that only its owner can read, also where it replaces a file that others could.
/// The PDF names the application as its creator.
///
/// Raises 61 when the disk is full, 70 when writing there is refused, 76 when the folder is missing. On failure an
/// existing file is unchanged and no partial file is left.
void WritePdf(const pages::PageLayout& layout, PagePainter& painter, const QString& path);

} // namespace paper
