#pragma once

#include "TourDesk.h"

#include "core/Form1.h"

namespace tour {

/// Looks at two months, enters charges, and prints the result of a month, which is looked at in Arabic as well. The
/// reports go to `pictures` as PDF.
void VisitAnalysis(TourDesk& desk, core::Form1& main, const QString& pictures);

} // namespace tour
