#pragma once

#include "platform/dao/Members.h"
#include "platform/dao/RecordsetState.h"

#include <optional>

namespace dao {

/// Rows of one table: a fixed list of keys with live rows.
///
/// Opening reads one row and leaves its statement open, which holds the file as it was. The set settles, that is reads
/// its other keys and lets go of the file, when it moves on or when another statement is to run (Connection sees to
/// that). Rows that were fetched with the keys serve as long as nobody has written; then each row is read by its key as
/// it is reached. A whole table is listed up to a bound only, and walked by key behind it.
class TableSet final : public RecordsetState {
public:
    TableSet(std::shared_ptr<Connection> opened, Plan& rows, std::vector<Datum> statementLiterals);
    ~TableSet() override;

    void MoveFirst() override;
    void MoveNext() override;
    void MoveLast() override;
    bool IsEOF() const override { return place == Place::End; }
    int RecordCount() override;
    void FindFirst(const QString& criteria) override;
    Seen ValueAt(int column) override;

    void Write(int column, const Value& value) override;
    void AddNew() override;
    void Edit() override;
    void Update() override;
    void CancelUpdate() override;
    void Delete() override;
    void LockEdits(bool pessimistic) override { locksEdits = pessimistic; }
    Key LastKey() const override;
    void Close() noexcept override;

    /// Reads the keys that are still to be read and lets go of the file. Called by the connection.
    void Settle();
    /// Lists the tail as well, when the set is over this table.
    void SettleWhole(const Table& table);

private:
    enum class Place : quint8 { Listed, Tail, End };

    /// The row being added or edited: the fields written so far, and the lock when edits take one.
    struct Pending {
        bool adds = false;
        std::vector<std::pair<int, Datum>> fields;
        std::unique_ptr<EditLock> lock;
    };

    sqlite3* Handle() const { return connection->Handle(); }
    void BindLiterals(Statement& statement) const;
    void SettleList();
    void SettleRows();
    void ListTail();
    qint64 CountTail() const;

    void RequireRows() const;
    void RequireRow() const;
    void DropPending() noexcept { pending.reset(); }
    void GoToEnd();
    void Stand(Place where, std::size_t listIndex, qint64 rowKey);
    void Reach(Place where, std::size_t listIndex, qint64 rowKey);
    void Hold(const RowStore& store, std::size_t row, const Moment& since);
    bool ServeFetched(std::size_t listIndex);
    bool ServeAhead(qint64 rowKey);
    void ReadAhead(qint64 from, qint64 upTo);
    qint64 LastListed() const;
    std::optional<qint64> NextInTail(qint64 after);
    bool ReadSingle(qint64 rowKey);
    void LookAgain();

    bool FindKey(qint64 sought);
    bool FindWhere(const QString& criteria, const Phrase& condition);
    bool FindByScan(const Criteria& criteria, const std::vector<Datum>& values);
    bool FindByKeys(const Criteria& criteria, const std::vector<Datum>& values);

    void UpdateAdded(const Pending& added);
    void UpdateEdited(const Pending& edited);

    Plan& plan;
    Table& table;
    std::vector<Datum> literals;
    Members members;
    bool isReading = false;

    // The current row: where it stands, and which store holds it (none when it was deleted).
    Place place = Place::End;
    std::size_t index = 0;
    qint64 key = 0;
    qint64 ordinal = 0;      // of a row in the tail that was walked to, 0 when it was jumped to
    bool wasDeleted = false; // by this set: what followed it stands at `index` now
    const RowStore* held = nullptr;
    std::size_t heldIndex = 0;
    Moment heldSince;        // when its values were read
    Moment seenAt;           // when it was last known to exist
    bool isOutdated = false; // the row was written through this set

    RowStore fetched; // rows of the first keys, in the order of the list
    Moment fetchedAt;
    RowStore ahead; // rows of a whole table, read some ahead
    std::vector<qint64> aheadKeys;
    std::size_t aheadNext = 0;
    Moment aheadAt;
    int aheadSize = 1;
    RowStore single;

    qint64 reached = 0;
    bool reachedAll = false;
    std::optional<Pending> pending;
    bool locksEdits = false;
    std::optional<qint64> lastAdded;
};

} // namespace dao
