#pragma once

#include <QString>
#include <optional>

namespace core {

/// The heading of a day: trimmed short weekday name, two blanks and the date text ("Mar  17/06/2008").
QString DayCaption(const QString& dateText);

/// The long weekday name of a dd/mm/yyyy text, trimmed ("Mardi").
QString LongDayName(const QString& dateText);

/// Whether a dd/mm/yyyy text is a valid date, with any separators. Stricter than the date fields, which accept
/// "17/0612008".
bool IsDateText(const QString& dateText);

/// Days of a month (1 to 12). Every fourth year is a leap year: no century rule.
int DaysInMonth(int month, int year);

/// Shows the date picker, preset with the current date. Returns the chosen day as dd/mm/yyyy, which is also in
/// PickedDate; none on cancel.
std::optional<QString> PickDateFromToday();

/// The same, preset with a dd/mm/yyyy text.
std::optional<QString> PickDateFrom(const QString& dateText);

} // namespace core
