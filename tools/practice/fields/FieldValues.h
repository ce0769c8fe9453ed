#pragma once

#include "platform/store/Value.h"
#include "practice/fields/FieldRules.h"

#include <QDate>

namespace practice {

/// A text read for a field: the value, or the reason why it is refused (in French).
struct ReadValue {
    store::Value value;
    QString problem;
};
/// Reads a text as spreadsheets and exports write it; an empty text is Null. Dates are dd/mm/yyyy or yyyy-mm-dd, with
/// or without a time of midnight, and days of the calendar; amounts have a decimal point or comma and blanks of any
/// kind between groups of three digits; times are HH:MM, also with seconds, which are dropped.
ReadValue ReadField(const FieldRule& rule, const QString& text);

/// Reads a day as dd/mm/yyyy or yyyy-mm-dd; invalid unless it is a day of the calendar from `FirstYear` on.
QDate DayOf(const QString& text);

/// Whether a text is a tariff code: "C" or "K0" to "K30".
bool IsActType(const QString& text);

} // namespace practice
