#pragma once

#include <QString>

namespace core {

/// The heading of a day: trimmed short weekday name, two blanks and the date text ("Mar  17/06/2008").
QString DayCaption(const QString& dateText);

/// The long weekday name of a dd/mm/yyyy text, trimmed ("Mardi").
QString LongDayName(const QString& dateText);

/// Whether a dd/mm/yyyy text, with whatever separators, can be read as a date. The check of the date fields lets some
/// texts pass that can't ("17/0612008").
bool HoldsDate(const QString& dateText);

/// Days of a month (1 to 12). Every fourth year is a leap year; there is no century rule.
int DaysInMonth(int month, int year);

/// Presets the date picker with the current date, shows it, and returns whether a day was chosen. The chosen date is
/// then in PickedDate, PickedDay, PickedMonth and PickedYear.
bool PickDateFromToday();

/// Presets the date picker with a dd/mm/yyyy text, shows it, and returns whether a day was chosen.
bool PickDateFrom(const QString& dateText);

} // namespace core
