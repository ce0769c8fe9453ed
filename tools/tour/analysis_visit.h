#pragma once

#include "TourDesk.h"

#include "core/Form1.h"

namespace tour {

/// Shows two months, enters charges, prints the result of a month and shows it in Arabic too. Saves the reports in
/// `pictures` as PDF.
void VisitAnalysis(TourDesk& desk, core::Form1& main, const QString& pictures);

} // namespace tour
