#pragma once

#include <QDate>
#include <QSize>
#include <QString>

/// What the machine gives: display size, clock. Number and date conversions are the program's own and depend on no
/// setting of the machine; instead of a display mode there is a working area that the main window keeps to.
namespace host {

/// The size of the display in pixels.
QSize DisplaySize();
/// The area in pixels that the main window works in; the whole display until ChangeWorkingArea is called.
QSize WorkingArea();
/// Sets the working area, never more than the display. Never fails visibly.
void ChangeWorkingArea(const QSize& pixels);

/// The current date. FixToday sets it for tests and for the tour; an invalid date gives the real one again.
QDate Today();
void FixToday(const QDate& date);

} // namespace host
