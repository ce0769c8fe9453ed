#pragma once

#include <QDate>
#include <QSize>
#include <QString>

/// What the machine would give: regional values, display size, clock. On this platform the regional values are settings
/// of the program's own conversions, and a display mode is the working area that the main window keeps to.
namespace host {

enum class LocaleSetting { DecimalMark = 14, ShortDate = 31 };

QString LocaleInfo(LocaleSetting setting);
/// False when the host refuses the change.
bool SetLocaleInfo(LocaleSetting setting, const QString& value);
/// Makes the next changes of regional values fail, as a host without the right to change them does.
void RefuseLocaleChanges(bool refuse);

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
