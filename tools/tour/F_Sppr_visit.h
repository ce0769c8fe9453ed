#pragma once

#include "TourDesk.h"

#include "core/Form1.h"

namespace tour {

/// Shows the deleted acts of a day and prints their report.
void VisitDeletedActs(TourDesk& desk, core::Form1& main);

} // namespace tour
