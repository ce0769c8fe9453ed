#pragma once

#include <QString>

namespace core {
class Form1;
}

namespace tour {

class TourDesk;

/// Shows a day and a month of the planning and the appointments of a unit; prints the day for that unit and for all
/// units, and saves the latter in `pictures`.
void VisitPlanning(TourDesk& desk, core::Form1& main, const QString& pictures);

} // namespace tour
