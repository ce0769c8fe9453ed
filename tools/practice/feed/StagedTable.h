#pragma once

#include "platform/dao/DirectStatements.h"
#include "practice/fields/FieldRules.h"
#include "practice/import/Problems.h"
#include "practice/import/RowTarget.h"

#include <optional>
#include <string>

namespace practice {

/// The numbers of a table's rows in the source by what becomes of them, and of rows that are deleted.
struct FeedCounts {
    qint64 added = 0;
    qint64 changed = 0;
    qint64 unchanged = 0;
    qint64 kept = 0; ///< rows in which something stays as it is here
    qint64 gone = 0;
};

/// The rows of one table of the source, in a temporary table, and which of them are new or different.
///
/// Flag_H and the settlement of an act stay as they are in rows that are here. Staging takes no lock on the database.
class StagedTable : public RowTarget {
public:
    StagedTable(const dao::Database& target, const TableRule& rule);
    ~StagedTable() override;
    Q_DISABLE_COPY_MOVE(StagedTable)

    const TableRule& Rule() const { return table; }
    /// The temporary table as statements name it, with a column for each given field.
    const std::string& Rows() const { return rows; }
    bool Has(const char* field) const;
    bool HasSettlements() const { return hasSettlements; }

    void Begin(const QStringList& fields) override;
    QString Add(const std::vector<store::Value>& values, qint64 line) override;
    /// To be called after the last row.
    void End();

    /// Compares with the rows that are here. Rows with keys up to `highestEver` that aren't here are left out: they
    /// were taken away. Adds a problem for each new row without a field that it must have.
    void Compare(qint64 highestEver, Problems& problems);
    const FeedCounts& Counts() const { return counts; }
    qint64 Count() const { return staged; }
    /// The number of rows that are here.
    qint64 Known() const { return staged - counts.added - counts.kept; }
    FeedCounts& Counts() { return counts; }
    /// Temporary tables of the new rows, and of the keys `num` of different ones.
    const std::string& NewRows() const { return newRows; }
    const std::string& ChangedRows() const { return changedRows; }

    bool HasChanges() const { return counts.added > 0 || hasDifferences; }
    /// Within a transaction in which the rows are as they were compared.
    void Write() const;

private:
    struct Field {
        const FieldRule* rule;
        std::size_t position; ///< among the values of a row
        store::ColumnType type;
        bool isDifferent = false;
        store::Value day = {}; ///< of the row before, and as it is stored
        store::Value storedDay = {};

        const store::Value& StoredDay(const store::Value& value);
    };
    std::string Quoted(const Field& field) const;
    bool IsOurs(const FieldRule& field) const;
    void FindOtherRows();
    void RequireFields(Problems& problems) const;
    std::string OrderOfFirstIndex() const;

    dao::DirectStatements direct;
    const TableRule& table;
    std::string target;
    std::string rows;
    std::string newRows;
    std::string changedRows;
    std::vector<Field> fields;
    std::optional<dao::RepeatedStatement> insert;
    qint64 staged = 0;
    bool hasSettlements = false;
    bool hasDifferences = false;
    FeedCounts counts;
};

/// Whether both texts or values are the same: blanks around a text don't count, and a blank text is none.
std::string IsSame(const std::string& left, const std::string& right, const FieldRule& field);

} // namespace practice
