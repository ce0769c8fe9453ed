#pragma once

#include <QString>

namespace core {
class Form1;
}

namespace tour {

class TourDesk;

/// Looks at a day and a month of the planning and at a unit's appointments, and prints the day for that unit and for
/// all of them; the latter is saved in `pictures`.
void VisitPlanning(TourDesk& desk, core::Form1& main, const QString& pictures);

} // namespace tour
