#pragma once

#include <QDate>
#include <QString>

namespace basic {

/// Parses a date: day, month, year in this order, or year first when the first group has four digits; any separators. A
/// day past the end of its month rolls over into the next month ("29/02/2100" is 1 March 2100). Raises 13 when the text
/// isn't a date.
QDate DateValue(const QString& text);

/// Whether DateValue can parse the text.
bool IsDate(const QString& text);

/// Length of a dd/mm/yyyy text.
inline constexpr qsizetype DateLength = 10;

/// The date as dd/mm/yyyy.
QString DateText(const QDate& date);

QDate AddDays(const QDate& date, int days);

/// Days from the first date to the second; negative if the second is earlier.
int DaysBetween(const QDate& from, const QDate& to);

/// 1 for Sunday to 7 for Saturday.
int Weekday(const QDate& date);

/// The mm/dd/yyyy text for a date literal (without "#"): characters 4 and 5, "/", the first two, "/", the last four of
/// a dd/mm/yyyy text, without validation.
QString QueryDate(const QString& dayFirstText);

/// A typed day-first date as yyyy/mm/dd, which is parsed the same with any short date format; "..../.../..." for an
/// empty text. The digit groups are day, month and year; a fourth group is dropped, no zeros are added.
QString DateToQueryText(const QString& text);

} // namespace basic
