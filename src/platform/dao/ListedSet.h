#pragma once

#include "platform/dao/TableSet.h"

namespace dao {

/// Rows of one table that meet a condition or are in an order: a list of keys that is fixed at the opening.
///
/// Opening reads one row and leaves its statement open, which holds the file as it was. The set finishes reading, that
/// is reads its other keys and lets go of the file, when it moves on or when the connection asks for it. Rows that were
/// read with the keys serve as long as nobody has written; then each row is read by its key as it is reached.
class ListedSet final : public TableSet {
public:
    ListedSet(std::shared_ptr<Connection> opened, std::shared_ptr<Plan> select, const std::vector<Value>& literals);
    ~ListedSet() override { ListedSet::Close(); }

    int RecordCount() override;
    void Close() noexcept override;

    /// Reads the keys that are still to be read and lets go of the file. Called by the connection.
    void FinishReading();
    bool Uses(const Plan* other) const { return plan.get() == other; }

private:
    bool HasMembers() const override { return !keys.empty(); }
    void GoToFirst() override;
    void GoToNext() override;
    void GoToLast() override;
    bool GoToAny(const std::vector<qint64>& sought) override;
    void NoteAdded(qint64 added) override { keys.push_back(added); }
    void NoteDeleted() override;

    void Take();
    void GoTo(std::size_t place);

    const std::shared_ptr<Plan> plan;
    std::vector<qint64> keys;
    RowStore fetched; // rows of the first keys
    DataVersion fetchedVersion;
    bool isReading = false;

    std::size_t index = 0;
    bool isRemoved = false; // the current row, by this set: what followed it is at `index` now
    std::size_t walked = 0; // rows since the last jump
    bool reachedAll = false;
};

} // namespace dao
