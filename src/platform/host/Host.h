#pragma once

#include <QDate>

/// Access to the machine: clock and files. Number and date conversions don't depend on its settings.
namespace host {

/// The current date. FixToday overrides it for tests and the tour; an invalid date restores the real one.
QDate Today();
void FixToday(const QDate& date);

} // namespace host
