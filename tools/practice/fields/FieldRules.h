#pragma once

#include "platform/dao/Value.h"

#include <QDate>
#include <QString>
#include <QStringList>
#include <span>

namespace practice {

enum class FieldKind { Key, Reference, Text, Date, Time, Amount, Code, ActType };

/// What a field of a table may hold.
struct FieldRule {
    const char* name;
    FieldKind kind;
    bool required = false; ///< the screens stop on a Null here
    int lowest = -32768;   ///< of a Code
    int highest = 32767;
};

/// A table that can be filled from outside.
struct TableRule {
    const char* name;
    std::span<const FieldRule> fields;
    bool hasOneRow = false; ///< and no key

    /// The position of a field by its name, without regard to case; -1 when there is none.
    int Find(const QString& field) const;
};

/// Patients first, then what refers to them, then what the program itself keeps.
std::span<const TableRule> ImportTables();
/// The table by its name without regard to case; null when it isn't one that can be filled from outside.
const TableRule* FindTable(const QString& name);
/// The names of all of them.
QString ImportTableNames();

/// The tables that the program fills by itself before each print.
QStringList ScratchTables();

/// A text read for a field: the value, or the reason why it can't be (in French).
struct ReadValue {
    dao::Value value;
    QString problem;
};
/// An empty text is Null. A text is taken as spreadsheets and exports write it: dates are dd/mm/yyyy or yyyy-mm-dd,
/// also with a time of midnight, and must be days of the calendar; amounts have a decimal point or comma and blanks of
/// any kind between groups of three digits; times are HH:MM, also with seconds, which are dropped.
ReadValue ReadField(const FieldRule& rule, const QString& text);

/// What a field takes, in French.
QString DescribeField(const FieldRule& rule);

/// The day that a text names, dd/mm/yyyy or yyyy-mm-dd; an invalid date when it isn't a day of the calendar from the
/// year 100 on.
QDate DayOf(const QString& text);

/// Whether a text is a tariff code: "C" or "K0" to "K30".
bool IsActType(const QString& text);

} // namespace practice
