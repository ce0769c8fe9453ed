#pragma once

#include "platform/dao/DirectStatements.h"

#include <QStringList>
#include <functional>
#include <string>
#include <vector>

namespace dao {

class Table;

/// Bulk insert for one table: rows are staged in a temporary table and written together once all are valid.
///
/// Staging takes no lock on the database; Write inserts in index order to hold the write lock briefly. A full disk (61)
/// during staging is that of the temporary files. Use the database for nothing else between the first Add and Compare.
class StagedRows {
public:
    /// Raises 3265 when there is no such table or field, or the key isn't one of the fields.
    StagedRows(const Database& target, const QString& table, const QStringList& fields);
    ~StagedRows();
    Q_DISABLE_COPY_MOVE(StagedRows)

    /// Stages a row, its values in the order of the fields; other fields get their defaults. False when a row with this
    /// key is staged already. Raises what writing a field raises, and 3314 without a key.
    bool Add(const std::vector<Value>& values);

    /// Write also replaces the rows' values of these fields, by key, in another table. Call before Compare.
    void AlsoNote(const QStringList& fields, const QString& otherTable);

    /// Call once after the last Add: separates rows that the table already has. Only the given fields are compared;
    /// blanks around a text don't count, and a blank text equals none.
    void Compare();
    int Fresh() const { return fresh; }     ///< rows whose key the table doesn't have
    int Same() const { return same; }       ///< rows that the table has with the same values
    int Changed() const { return changed; } ///< rows that the table has with other values

    int Noted() const { return noted; } ///< rows of which the other table has other values or nothing

    struct Difference {
        Key key = 0;
        QStringList fields;
    };
    /// The changed rows by ascending key, at most so many.
    std::vector<Difference> Differences(int most) const;

    /// Adds the fresh rows and updates the changed ones; call within a Transaction. Returns false, having written
    /// nothing, when another program has added, changed or deleted one of them since Compare.
    bool Write();
    /// The keys of those rows, at most so many.
    std::vector<Key> WrittenMeanwhile(int most) const;

private:
    void MakeStore();
    void SortFreshRows();
    bool AreAmongOthers(const std::string& leadingColumn) const;
    std::vector<std::string> ColumnsOfFirstIndex() const;
    void MakeIndexes();
    void FindNotes();
    void SeparateKnownRows();
    void FindChangedFields();
    std::string Name(std::size_t field) const;
    std::string IsSame(std::size_t field) const;
    std::string ForEachField(const std::string& separator, const std::function<std::string(std::size_t)>& part) const;
    void DropStore() noexcept;

    DirectStatements direct;
    const Table* table = nullptr;
    std::vector<int> columns; ///< of the fields, in the order of the values
    std::size_t keyField = 0; ///< which of them is the key
    std::string freshRows;    ///< the temporary tables as statements name them
    std::string
        changedRows; ///< k: the key; n0, o0, d0: the first field's new value, old one, whether they differ; and so on
    std::string sortedRows; ///< the fresh rows again, in the order of the table's first index
    std::string notedRows;  ///< the key and the fields for the other table
    std::string notes;      ///< the other table, quoted
    std::vector<std::string> notedFields;
    bool isSorted = false;
    std::vector<bool> isChanged; ///< by field: whether any row has another value
    std::unique_ptr<RepeatedStatement> insert;
    bool isFilling = false;
    int fresh = 0;
    int same = 0;
    int changed = 0;
    int noted = 0;
};

} // namespace dao
