#pragma once

#include "platform/pages/PageLayout.h"

#include <QString>

namespace tests {

/// All pages of a report as text, one line for each run: position and width in tenths of a millimetre, alignment and
/// font, text. Of the shapes of a chart those with more than two points: kind, colours and bounds.
QString PagesAsText(const pages::PageLayout& layout);

/// The texts of one page in the order they are painted.
QStringList TextsOf(const pages::PageLayout& layout, int page);

} // namespace tests
