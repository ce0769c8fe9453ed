#pragma once

#include "practice/fields/FieldValues.h"
#include "practice/import/CsvFile.h"
#include "practice/import/ImportTarget.h"

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
    TableReader(const TableRule& rule, ImportTarget& destination, Problems& found, BadRows badRows = BadRows::Refuse)
        : table(rule), target(destination), problems(found), mends(badRows == BadRows::Mend)
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
    void AddDerivedFields();
    void TakeRow(const CsvRow& row);
    QStringList ReadCells(const CsvRow& row);
    QString ProblemOf(std::size_t column, const CsvRow& row, const ReadValue& read) const;
    QStringList CompleteRow();
    void Refuse(qint64 line, const QString& reason) { problems.Add(line, reason); }
    std::size_t Place(const char* field) const;

    const TableRule& table;
    ImportTarget& target;
    Problems& problems;
    bool mends;
    bool hasHeader = false;
    bool hasFields = false;
    std::vector<const FieldRule*> fields; ///< of the columns, then derived ones
    std::size_t columns = 0;
    std::vector<store::Value> values; ///< of the current row, by field
    QStringList mended;               ///< what was changed in it, and why
    std::size_t day = 0;              ///< positions in `fields`; its size if missing
    std::size_t month = 0;
    std::size_t year = 0;
    std::size_t archived = 0;
};

} // namespace practice
