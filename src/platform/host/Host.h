#pragma once

#include <QDate>

/// What the machine gives: clock, files. Number and date conversions are the program's own and depend on no setting of
/// the machine.
namespace host {

/// The current date. FixToday sets it for tests and for the tour; an invalid date gives the real one again.
QDate Today();
void FixToday(const QDate& date);

} // namespace host
