#pragma once

#include "practice/import/CsvFile.h"
#include "practice/import/ImportTarget.h"

namespace practice {

/// Checks the rows of a CSV file against the rules of a table and hands on those that are good.
///
/// The first row names the fields, in any order and case. MM and AA follow from the row's day; an empty Flag_H is 0.
/// Rows without any value are passed over, as spreadsheets leave them at the end.
class TableReader {
public:
    TableReader(const TableRule& rule, ImportTarget& destination, Problems& found)
        : table(rule), target(destination), problems(found)
    {
    }

    void Take(const CsvRow& row);
    /// Whether there was a first row and all its names are fields.
    bool HasFields() const { return hasFields; }
    /// Notes a file without a first row.
    void End();

private:
    void TakeHeader(const CsvRow& row);
    void RequireFields(qint64 line);
    void AddDerivedFields();
    void TakeRow(const CsvRow& row);
    QStringList ReadCells(const CsvRow& row);
    QStringList CompleteRow();
    void Refuse(qint64 line, const QString& reason) { problems.Add(line, reason); }
    std::size_t Place(const char* field) const;

    const TableRule& table;
    ImportTarget& target;
    Problems& problems;
    bool hasHeader = false;
    bool hasFields = false;
    std::vector<const FieldRule*> fields; ///< those of the columns, then those that follow from them
    std::size_t columns = 0;
    std::vector<dao::Value> values; ///< of the row in hand, by field
    std::size_t day = 0;            ///< places among the fields; their number for one that isn't there
    std::size_t month = 0;
    std::size_t year = 0;
    std::size_t archived = 0;
};

} // namespace practice
