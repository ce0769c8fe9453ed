#pragma once

#include "TourDesk.h"

#include "core/Form1.h"

namespace tour {

/// Enters, changes and deletes an expense, then chooses a period.
void VisitExpenses(TourDesk& desk, core::Form1& main);

} // namespace tour
