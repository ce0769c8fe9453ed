#pragma once

#include <QString>
#include <QStringList>
#include <span>

namespace practice {

/// `DayText` is a text dd/mm/yyyy; `Month` and `Year` repeat those of the field Date in the same row.
enum class FieldKind { Key, Reference, Text, Date, DayText, Month, Year, Time, Amount, Code, ActType };

/// What a missing value of a field means.
enum class Missing {
    Fine,
    Remark, ///< the screens show an empty cell: a remark of the check
    Fault,  ///< a screen stops, or no list or sum has the row: import refuses it, the check reports an error
};

/// The values that a field may have. Import refuses any other, and the check reports it as an error.
struct FieldRule {
    const char* name;
    FieldKind kind;
    Missing missing = Missing::Fine;
    int lowest = -32768; ///< of a Code
    int highest = 32767;
    const char* target = nullptr;   ///< the table of a Reference
    const char* uniqueIn = nullptr; ///< the field's table, if the check remarks on a value that two rows have
};

/// The fields of a table, in the order of the schema.
struct TableRule {
    const char* name;
    std::span<const FieldRule> fields;
    bool hasOneRow = false;    ///< and no key
    bool isByPosition = false; ///< the screens read its fields by position

    /// The position of a field by its name, without regard to case; -1 if there is none.
    int Find(const QString& field) const;
};

/// The tables that can be imported, patients first.
std::span<const TableRule> ImportTables();
/// One of them by its name, without regard to case; null if there is none.
const TableRule* FindImportTable(const QString& name);
QString ImportTableNames();
/// The same among all tables with rules: also the texts of the reports.
const TableRule* FindTable(const QString& name);

/// The tables that the program fills before each print.
QStringList ScratchTables();

/// The lowest and the highest value of a whole number.
struct Limits {
    int lowest;
    int highest;
};
Limits LimitsOf(const FieldRule& rule);
/// Amounts are smaller than this, in dinars.
inline constexpr double AmountLimit = 1e15;
/// No date is before this year.
inline constexpr int FirstYear = 100;

/// A description of the values, in French.
QString DescribeField(const FieldRule& rule);

} // namespace practice
