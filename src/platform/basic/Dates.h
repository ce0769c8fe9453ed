#pragma once

#include <QDate>
#include <QString>

namespace basic {

/// Parses a date: day, month, year in this order, or year first when the first group has four digits; any
/// separators. A day past the end of its month runs on into the next month ("29/02/2100" is 1 March 2100).
/// Raises 13 when the text holds no date.
QDate DateValue(const QString& text);

/// The date as dd/mm/yyyy.
QString DateText(const QDate& date);

QDate AddDays(const QDate& date, int days);

/// Days from the first date to the second; negative when the second lies before.
int DaysBetween(const QDate& from, const QDate& to);

/// 1 for Sunday to 7 for Saturday.
int Weekday(const QDate& date);

/// The month-first text of a date literal, without the "#" around it: characters 4 and 5, "/", the left two, "/", the
/// right four of a dd/mm/yyyy text. The text is cut and not validated.
QString QueryDate(const QString& dayFirstText);

/// The yyyy/mm/dd text from which a typed day-first date can be read whatever the short date format; "..../.../..." for
/// an empty text. Digits go to day, month and year by group; a fourth group is dropped, no zeros are added.
QString DateToQueryText(const QString& text);

} // namespace basic
