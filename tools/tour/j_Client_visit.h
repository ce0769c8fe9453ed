#pragma once

#include "TourDesk.h"

#include "core/Form1.h"

namespace tour {

/// Patients are searched for by name; the result page goes back to the criteria.
void VisitPatients(TourDesk& desk, core::Form1& main);

} // namespace tour
