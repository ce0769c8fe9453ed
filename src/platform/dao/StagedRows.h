#pragma once

#include "platform/dao/Database.h"

#include <QStringList>
#include <functional>
#include <string>
#include <vector>

namespace dao {

class Statement;
class Table;

/// New rows for one table, put aside until all of them are known to be good, then written in one go.
///
/// They are kept in a temporary file that goes with the process. Reading, checking and sorting them locks nothing in
/// the database; Write takes them over in the order of the table's pages, so that the write lock is held for no longer
/// than that takes. A full disk (61) while they are put aside is that of the temporary files. Between the first Add and
/// Compare nothing else is to be done with the database.
class StagedRows {
public:
    /// Raises 3265 when there is no such table or field, or the key isn't one of the fields.
    StagedRows(const Database& target, const QString& table, const QStringList& fields);
    ~StagedRows();
    Q_DISABLE_COPY_MOVE(StagedRows)

    /// Puts a row aside, its values in the order of the fields; fields that weren't named get their defaults. False
    /// when a row with its key was put aside before. Raises what writing a field raises, and 3314 without a key.
    bool Add(const std::vector<Value>& values);

    /// To be called once, after the last Add: sets the rows apart that the table has already. Only the fields that were
    /// named are compared; blanks around a text don't count, and a blank text is the same as none.
    void Compare();
    int Fresh() const { return fresh; }     ///< rows whose key the table doesn't have
    int Same() const { return same; }       ///< rows that the table has with the same values
    int Changed() const { return changed; } ///< rows that the table has with other values

    struct Difference {
        Key key = 0;
        QStringList fields;
    };
    /// The changed rows by ascending key, so many at most.
    std::vector<Difference> Differences(int most) const;

    /// Adds the fresh rows and gives the changed ones their new values. To be called within a Transaction. Returns
    /// false, having written nothing, when another program has added, changed or deleted one of them since Compare.
    bool Write();
    /// The keys of those rows, so many at most.
    std::vector<Key> WrittenMeanwhile(int most) const;

private:
    void MakeStore();
    void SortFreshRows();
    bool AreAmongOthers(const std::string& leadingColumn) const;
    std::vector<std::string> ColumnsOfFirstIndex() const;
    void MakeIndexes();
    void SeparateKnownRows();
    void FindChangedFields();
    std::string Name(std::size_t field) const;
    std::string IsSame(std::size_t field) const;
    std::string ForEachField(const std::string& separator, const std::function<std::string(std::size_t)>& part) const;
    void Run(const std::string& statement) const;
    void DropStore() noexcept;

    std::shared_ptr<Connection> connection;
    const Table* table = nullptr;
    std::vector<int> columns; ///< of the fields, in the order of the values
    std::size_t keyField = 0; ///< which of them is the key
    std::string freshRows;    ///< the temporary tables as statements name them
    std::string
        changedRows; ///< k: the key; n0, o0, d0: the first field's new value, old one, whether they differ; and so on
    std::string sortedRows; ///< the fresh rows again, in the order of the table's first index
    bool isSorted = false;
    std::vector<bool> isChanged; ///< by field: whether any row has another value
    std::unique_ptr<Statement> insert;
    bool isFilling = false;
    int fresh = 0;
    int same = 0;
    int changed = 0;
};

} // namespace dao
