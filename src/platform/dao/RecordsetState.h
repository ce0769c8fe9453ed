#pragma once

#include "platform/dao/Connection.h"
#include "platform/dao/Recordset.h"
#include "platform/dao/RowStore.h"

namespace dao {

/// What a record set is behind its handles. The operations mean what Recordset says of them.
class RecordsetState {
public:
    RecordsetState(std::shared_ptr<Connection> opened, const Columns& fields)
        : connection(std::move(opened)), columns(fields)
    {
    }
    virtual ~RecordsetState() = default;
    RecordsetState(const RecordsetState&) = delete;
    RecordsetState& operator=(const RecordsetState&) = delete;

    bool IsOpen() const { return !closed && connection->IsOpen(); }
    /// Raises 3420 when the set or its database is closed.
    void RequireOpen() const
    {
        if (!IsOpen())
            RaiseClosed();
    }
    const Columns& FieldColumns() const { return columns; }

    virtual void MoveFirst() = 0;
    virtual void MoveNext() = 0;
    virtual void MoveLast() = 0;
    virtual bool IsEOF() const = 0;
    virtual int RecordCount() = 0;
    virtual void FindFirst(const QString& criteria) = 0;
    bool NoMatch() const { return noMatch; }

    /// A field of the current row or of the one being edited.
    virtual Seen ValueAt(int column) = 0;

    // A set that can't be written raises 3027 for these.
    virtual void Write(int column, const Value& value);
    virtual void AddNew();
    virtual void Edit();
    virtual void Update();
    virtual void CancelUpdate();
    virtual void Delete();
    virtual void LockEdits(bool pessimistic);
    virtual Key LastKey() const;

    virtual void Close() noexcept { closed = true; }

protected:
    const std::shared_ptr<Connection> connection;
    const Columns& columns;
    bool noMatch = false;

private:
    [[noreturn]] static void RaiseClosed();
    bool closed = false;
};

} // namespace dao
