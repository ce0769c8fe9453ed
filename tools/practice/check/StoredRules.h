#pragma once

#include "practice/check/Structure.h"

#include <span>

namespace practice {

/// A way in which a stored value is wrong.
struct ValueFault {
    QString condition; ///< in SQLite's language
    QString text;      ///< in French
    bool isRemark = false;
};

/// A field and what may be wrong with its values: the first condition that is met counts.
struct FieldFaults {
    QString field;
    QList<ValueFault> faults;
};

/// What may be wrong with the values of a table: values that aren't of the field's declared type, and what the screens
/// ask beyond that. Fields that `found` lacks are left out, and so are keys of tables that it lacks.
QList<FieldFaults> FaultsOf(const Structure::Table& expected, const Structure& found);

/// A field that holds days.
struct DateField {
    QString table;
    QString field;
    bool isDayFirst = false; ///< dd/mm/yyyy rather than yyyy-mm-dd
    QString fault;           ///< the condition under which a value is wrong
};
/// Those that `found` has.
QList<DateField> DateFields(const Structure& expected, const Structure& found);

/// A field that repeats a part of the field Date in its row.
struct PartOfDate {
    const char* table;
    const char* field;
    const char* right; ///< the expression of what it should be
    const char* text;  ///< of the fault, in French

    /// The condition under which the row has a date and the field is another part.
    QString Fault() const;
};
std::span<const PartOfDate> PartsOfDate();

} // namespace practice
