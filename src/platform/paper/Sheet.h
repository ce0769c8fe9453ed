#pragma once

#include "platform/pages/Template.h"

#include <QPageLayout>

namespace paper {

/// The sheet of a report: the template's paper size and orientation, without device margins.
QPageLayout SheetOf(const pages::Template& design);

} // namespace paper
