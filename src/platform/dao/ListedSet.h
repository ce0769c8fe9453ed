#pragma once

#include "platform/dao/TableSet.h"

namespace dao {

/// Rows of one table under a condition or in an order: a list of keys, fixed at opening.
///
/// Opening reads one row and leaves the select open, which holds the snapshot. The remaining keys are read, and the
/// snapshot released, when the set moves on or the connection starts another statement. The rows cached with the keys
/// are used until somebody writes; then each row is read by key when it is reached.
class ListedSet final : public TableSet, public HalfReadSet {
public:
    ListedSet(std::shared_ptr<Connection> opened, std::shared_ptr<Plan> select, const std::vector<Value>& literals);
    ~ListedSet() override { ListedSet::Close(); }

    int RecordCount() override;
    void Close() noexcept override;

    void FinishReading() override;
    bool Reads(const Plan* other) const override { return plan.get() == other; }

private:
    bool HasMembers() const override { return !keys.empty(); }
    void GoToFirst() override;
    void GoToNext() override;
    void GoToLast() override;
    bool GoToKey(qint64 sought) override;
    void NoteAdded(qint64 added) override { keys.push_back(added); }
    void NoteDeleted() override;

    void Take(const Rows& read);
    void GoTo(std::size_t place);

    const std::shared_ptr<Plan> plan;
    std::optional<Rows> reading;
    std::vector<qint64> keys;
    RowStore fetched; // cached rows of the first keys
    DataVersion fetchedVersion;

    std::size_t index = 0;
    bool isRemoved = false; // this set deleted the current row: `index` is the following one
    std::size_t walked = 0; // rows since the last jump
    bool reachedAll = false;
};

} // namespace dao
