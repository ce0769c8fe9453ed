#pragma once

#include <QString>
#include <optional>

namespace forms {
class DateField;
} // namespace forms

namespace core {

/// The heading of a day: trimmed short weekday name, two blanks and the date text ("Mar  17/06/2008").
QString DayCaption(const QString& dateText);

/// The long weekday name of a dd/mm/yyyy text, trimmed ("Mardi").
QString LongDayName(const QString& dateText);

/// A typed day as dd/mm/yyyy: the first two characters of the trimmed text, the fourth and fifth, and the last four,
/// whatever stands between. None for a text of less than ten characters or when that is no day. As in a date field,
/// every fourth year has a 29 February, which DateValue reads as 1 March where there is none.
std::optional<QString> TypedDay(const QString& text);

/// Days of a month (1 to 12). Every fourth year is a leap year: no century rule.
int DaysInMonth(int month, int year);

/// Shows the date picker, preset with the current date. Returns the chosen day as dd/mm/yyyy, which is also in
/// PickedDate; none on cancel.
std::optional<QString> PickDateFromToday();

/// The same, preset with a dd/mm/yyyy text.
std::optional<QString> PickDateFrom(const QString& dateText);

/// Shows the date picker when a date field wants it, preset with the field's day, or with the current date if it has
/// none; on cancel the field keeps its text.
void OfferCalendar(forms::DateField& field);

} // namespace core
