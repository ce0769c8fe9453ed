#pragma once

#include "TourDesk.h"

#include "core/Form1.h"

namespace tour {

/// An expense is entered, changed and deleted; then a period is chosen.
void VisitExpenses(TourDesk& desk, core::Form1& main);

} // namespace tour
