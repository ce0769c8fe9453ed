#pragma once

#include "TourDesk.h"

namespace tour {

/// Expects the screen "Évolution": looks at its pages, opens a month, and saves both reports as PDFs in `pictures`.
void VisitEvolution(TourDesk& desk, const QString& pictures);

/// Expects the same screen in a year of losses.
void LookAtLosses(TourDesk& desk);

} // namespace tour
