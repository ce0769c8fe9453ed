#pragma once

#include "platform/pages/Template.h"

#include <QPageLayout>

namespace paper {

/// The sheet a report is printed on: the template's paper size and orientation, without margins of the device.
QPageLayout SheetOf(const pages::Template& design);

} // namespace paper
