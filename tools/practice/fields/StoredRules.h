#pragma once

#include "practice/fields/FieldRules.h"

#include <QList>

namespace practice {

/// A way in which a stored value is wrong.
struct ValueFault {
    QString condition; ///< in SQLite's language, with the functions of a store::DatabaseReader
    QString text;      ///< in French
    bool isRemark = false;
    /// What the condition reads besides the field: another table, or another field of the row.
    const char* readsTable = nullptr;
    const char* readsField = nullptr;
};

/// The faults that stored values of a field can have; the first condition that is met counts. `name` is that of the
/// field in the database.
QList<ValueFault> FaultsOf(const FieldRule& rule, const QString& name);

/// The condition under which the value of a Date or DayText is no day in the form of its kind.
QString DayFault(const FieldRule& rule);

/// The field whose month and year a row repeats.
inline constexpr auto DayField = "Date";
/// What a Month or Year should be, as an expression.
QString PartOfDay(const FieldRule& rule);
/// The condition under which the row has a day and the Month or Year is another one.
QString PartFault(const FieldRule& rule);

} // namespace practice
