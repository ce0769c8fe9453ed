#pragma once

#include "platform/dao/Connection.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/RowStore.h"

namespace dao {

/// Rows with columns on an open connection; read-only unless overridden (3027, 3020).
class RowSet : public RecordsetState {
public:
    RowSet(std::shared_ptr<Connection> opened, const Columns& fields) : connection(std::move(opened)), columns(fields)
    {
    }

    bool IsOpen() const final { return !closed && connection->IsOpen(); }
    void Close() noexcept override { closed = true; }
    int FieldCount() const final { return columns.Count(); }
    int PositionOf(const char* name) const final { return columns.PositionOf(name); }
    bool IsNull(int column) final;
    Value Get(int column) final;

    void FindFirst(Key) override { Refuse(Error::InvalidOperation); }
    bool NoMatch() const override { return false; }
    void Write(int, const Value&) override { Refuse(Error::NoPendingEdit); }
    void AddNew() override { Refuse(Error::ReadOnly); }
    void Edit() override { Refuse(Error::ReadOnly); }
    void Update() override { Refuse(Error::NoPendingEdit); }
    void CancelUpdate() override { Refuse(Error::NoPendingEdit); }
    void Delete() override { Refuse(Error::ReadOnly); }
    void LockEdits(bool) override {}
    Key LastKey() const override { Refuse(Error::NoCurrentRecord); }

protected:
    [[noreturn]] static void Refuse(Error error) { throw RuntimeError(error); }
    /// Raises 3420 when the set or its database is closed.
    void RequireOpen() const;

    /// The value of a column in a pending edit; null if not written.
    virtual const Value* PendingValue(int) const { return nullptr; }
    /// A field of the current row.
    virtual StoredValue Current(int column) = 0;

    const std::shared_ptr<Connection> connection;
    const Columns& columns;

private:
    bool closed = false;
};

/// The result of a select of single columns, counts and sums: read completely at opening.
class SnapshotSet final : public RowSet {
public:
    SnapshotSet(std::shared_ptr<Connection> opened, std::shared_ptr<Plan> select, const std::vector<Value>& literals);

    void MoveFirst() override { GoTo(0); }
    void MoveNext() override;
    void MoveLast() override { GoTo(rows.Count() - 1); }
    bool IsEOF() const override { return position == rows.Count(); }
    int RecordCount() override { return static_cast<int>(rows.Count()); }

private:
    StoredValue Current(int column) override;
    void GoTo(std::size_t row);

    const std::shared_ptr<Plan> plan;
    RowStore rows;
    std::size_t position = 0;
};

} // namespace dao
