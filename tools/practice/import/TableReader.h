#pragma once

#include "practice/fields/FieldValues.h"
#include "practice/import/CsvFile.h"
#include "practice/import/Problems.h"
#include "practice/import/RowTarget.h"

namespace practice {

/// What becomes of a row with a value that can't be taken.
enum class BadRows : quint8 {
    Refuse,
    Mend, ///< the value becomes Null where the field may be Null, or follows the date; otherwise the row is refused
};

/// Checks the rows of a CSV file against the rules of a table and passes valid ones to the target.
///
/// The first row names the fields, in any order and case. MM and AA are taken from the date; an empty Flag_H becomes 0.
/// Rows without any value, which spreadsheets leave at the end, are skipped. What is mended is a problem too.
class TableReader {
public:
    /// Whether rows have all the fields that a row must have, or may have only some beside the key; then MM and AA
    /// don't come without a date, and problems name the row by its key.
    enum class Rows : quint8 { Whole, Partial };

    TableReader(const TableRule& rule, RowTarget& destination, Problems& found, BadRows badRows = BadRows::Refuse,
                Rows rowsGiven = Rows::Whole)
        : table(rule), target(destination), problems(found), mends(badRows == BadRows::Mend), rows(rowsGiven)
    {
    }

    void Take(const CsvRow& row);
    /// Whether the first row was valid.
    bool HasFields() const { return hasFields; }
    /// To be called after the last row. An empty file is a problem.
    void End();

private:
    void TakeHeader(const CsvRow& row);
    void RequireFields(qint64 line);
    bool HasPartOfDay() const;
    void AddDerivedFields();
    void TakeRow(const CsvRow& row);
    QStringList ReadCells(const CsvRow& row);
    QString ProblemOf(std::size_t column, const CsvRow& row, const ReadValue& read) const;
    QStringList CompleteRow(const CsvRow& row);
    bool IsRepeated(std::size_t column, const CsvRow& row) const;
    void Refuse(qint64 line, const QString& reason) { problems.Add(line, reason); }
    qint64 KeyIn(const CsvRow& row) const;
    std::size_t Place(const char* field) const;

    const TableRule& table;
    RowTarget& target;
    Problems& problems;
    bool mends;
    Rows rows;
    bool hasHeader = false;
    bool hasFields = false;
    std::vector<const FieldRule*> fields; ///< of the columns, then derived ones
    std::size_t columns = 0;
    std::vector<store::Value> values; ///< of the current row, by field
    QDate dayOfRow;
    QStringList previous; ///< the cells of the row before, if all its values could be read
    QStringList mended;   ///< what was changed in it, and why
    std::size_t day = 0;  ///< positions in `fields`; its size if missing
    std::size_t month = 0;
    std::size_t year = 0;
    std::size_t archived = 0;
};

} // namespace practice
