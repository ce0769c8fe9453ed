#pragma once

#include "platform/dao/TableSet.h"

namespace dao {

/// All rows of a table in key order, up to the highest key at opening, followed by the rows added through the set. No
/// key list: rows are read by key when reached, with read-ahead while nobody writes.
class WholeSet final : public TableSet {
public:
    WholeSet(std::shared_ptr<Connection> opened, Table& over);
    ~WholeSet() override { WholeSet::Close(); }

    int RecordCount() override;

private:
    bool HasMembers() const override { return hadRows || !added.empty(); }
    void GoToFirst() override;
    void GoToNext() override;
    void GoToLast() override;
    bool GoToKey(qint64 sought) override;
    void NoteAdded(qint64 newKey) override;
    void NoteDeleted() override {}

    bool GoToFollowing(qint64 after);
    void ReadAhead(qint64 after);
    /// Goes to the first row that still exists from here on.
    bool GoToAdded(std::size_t from);
    void Jump(std::size_t addedIndex);

    bool hadRows = false;
    qint64 upTo = 0;           // the highest key at the opening
    std::vector<qint64> added; // added keys above it, in order of addition
    std::size_t inAdded;       // index of the current row in `added`, or InTable

    RowStore ahead;
    std::vector<qint64> aheadKeys;
    std::size_t aheadNext = 0;
    DataVersion aheadVersion;
    int aheadSize = 1;

    bool reachedAll = false;
};

} // namespace dao
