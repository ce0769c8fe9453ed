#pragma once

#include "TourDesk.h"

#include "core/Form1.h"

namespace tour {

/// Searches for patients by name and returns from the results to the criteria.
void VisitPatients(TourDesk& desk, core::Form1& main);

} // namespace tour
