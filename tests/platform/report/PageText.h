#pragma once

#include "platform/report/PageLayout.h"

#include <QString>

namespace tests {

/// All pages of a report as text, one line for each run: place and width in tenths of a millimetre, letters, text.
QString PagesAsText(const report::PageLayout& layout);

/// The texts of one page in the order they are painted.
QStringList TextsOf(const report::PageLayout& layout, int page);

} // namespace tests
