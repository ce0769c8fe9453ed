#pragma once

#include "TourDesk.h"

#include "core/Form1.h"

namespace tour {

/// The deleted acts of a day, and their report.
void VisitDeletedActs(TourDesk& desk, core::Form1& main);

} // namespace tour
