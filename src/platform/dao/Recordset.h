#pragma once

#include "platform/store/Value.h"

#include <QList>
#include <memory>

namespace dao {

using store::Value;

/// Table keys are 32-bit; a hidden list beside a grid is a plain list of them.
using Key = qint32;
using KeyList = QList<Key>;

/// The implementation behind Recordset handles: same operations, columns by position.
class RecordsetState {
public:
    RecordsetState() = default;
    virtual ~RecordsetState() = default;
    Q_DISABLE_COPY_MOVE(RecordsetState)

    virtual bool IsOpen() const = 0;
    virtual void Close() noexcept = 0;
    virtual int FieldCount() const = 0;
    virtual int PositionOf(const char* name) const = 0; ///< -1 if there is no such field

    virtual void MoveFirst() = 0;
    virtual void MoveNext() = 0;
    virtual void MoveLast() = 0;
    virtual bool IsEOF() const = 0;
    virtual int RecordCount() = 0;
    virtual void FindFirst(Key key) = 0;
    virtual bool NoMatch() const = 0;

    virtual bool IsNull(int column) = 0;
    virtual Value Get(int column) = 0;
    virtual void Write(int column, const Value& value) = 0;
    virtual void AddNew() = 0;
    virtual void Edit() = 0;
    virtual void Update() = 0;
    virtual void CancelUpdate() = 0;
    virtual void Delete() = 0;
    virtual void LockEdits(bool pessimistic) = 0;
    virtual Key LastKey() const = 0;
};

/// A field of the current row, or of the row being added or edited. Valid until the record set moves.
class Field {
public:
    bool IsNull() const { return state->IsNull(column); }
    Value Get() const { return state->Get(column); }
    /// The value as text: numbers in plain decimal notation, dates as dd/mm/yyyy. All readers raise 94 on Null.
    QString Text() const { return Get().Text(); }
    double Double() const { return Get().Double(); }
    qint32 Long() const { return Get().Long(); }
    basic::Int16 Integer() const { return Get().Integer(); }
    dao::Key Key() const { return Get().Long(); }

    /// Writes the field of the row in AddNew or Edit; raises 3020 outside them. Text for a date field is parsed as
    /// dd/mm/yyyy, text for a numeric field as a number (3421 on failure).
    Field& operator=(const Value& value);
    Field& operator=(const Field& other);
    Field(const Field&) = default;

private:
    friend class Recordset;
    Field(RecordsetState* owner, int position) : state(owner), column(position) {}
    RecordsetState* state;
    int column;
};

/// The rows of a table or of a statement.
///
/// A whole table ("Actes", "select * from Actes order by num") is traversed by key up to the highest key at opening:
/// rows deleted before they are reached are skipped, rows added below the highest key are included. Rows under a
/// condition or in another order: a list of keys fixed at opening, with live values; reading a row deleted meanwhile
/// raises 3167. In both cases rows added through the set come last. Reading is lazy: opening reads one row. Without an
/// order, and on ties, rows are in ascending key order. Counts, sums and single fields: a read-only snapshot.
///
/// A current row deleted meanwhile raises 3167; changes made by this program show at once. Changes by other programs
/// are noticed at opening, a search, Edit, DBEngine.Idle, MoveFirst and MoveLast, at the first rows of a traversal, and
/// then every 256 rows of a listed set or with the next batch (512 rows at most) of a whole table.
///
/// A Recordset is a handle: copies share rows and position; the last one closes it. A default-constructed one is
/// closed: every operation but Close raises 3420.
class Recordset {
public:
    Recordset() = default;
    explicit Recordset(std::shared_ptr<RecordsetState> opened) : state(std::move(opened)) {}

    bool IsOpen() const { return state != nullptr && state->IsOpen(); }

    /// Raise 3021 in an empty set; MoveNext also at the end.
    void MoveFirst() { Open().MoveFirst(); }
    void MoveNext() { Open().MoveNext(); }
    void MoveLast() { Open().MoveLast(); }
    bool IsEOF() const { return Open().IsEOF(); }

    /// 0 for an empty set, 1 until the last row was reached (MoveLast, end), then the number of rows.
    int RecordCount() const { return Open().RecordCount(); }

    /// Finds the row with this key and makes it current: one look-up.
    ///
    /// On a miss the current row doesn't change and can still be read, NoMatch() is true, and Edit and Delete raise
    /// 3021 until the set moves or finds a row. Rows that no longer meet the set's condition are still found. Raises
    /// 3021 when the set is empty, 3219 on a snapshot.
    void FindFirst(dao::Key key) { Open().FindFirst(key); }
    bool NoMatch() const { return Open().NoMatch(); }

    /// A field by name, case-insensitive (3265 if there is none), or by position from 0.
    Field operator[](const char* name) const;
    Field Collect(const QString& name) const;
    Field Fields(int position) const;
    int FieldCount() const { return Open().FieldCount(); }

    /// AddNew starts an empty row (fields not written get the table's defaults), Edit a copy of the current one (3021,
    /// 3167); Update writes it durably (3020 without either), CancelUpdate discards it. Adding a row doesn't change the
    /// current one; the new row comes last and its key is LastKey() (3021 if none was added). Moving, searching and a
    /// failed Update (3022 for a duplicate key, 3187, 61) discard the edit as well. Keys can be written in AddNew only
    /// (3164). On a snapshot AddNew and Edit raise 3027.
    void AddNew() { Open().AddNew(); }
    void Edit() { Open().Edit(); }
    void Update() { Open().Update(); }
    void CancelUpdate() { Open().CancelUpdate(); }
    dao::Key LastKey() const { return Open().LastKey(); }

    /// Deletes the current row; reading it afterwards raises 3167. MoveNext continues with the row that followed.
    void Delete() { Open().Delete(); }

    /// Pessimistic locking: when set, Edit takes the write lock of the database (3187 after the busy timeout) and
    /// Update or CancelUpdate releases it. One edit at a time holds it; a change through another set or Execute is
    /// committed at once and ends it.
    void LockEdits(bool pessimistic) { Open().LockEdits(pessimistic); }

    /// Closes the set for all its handles. A second Close does nothing.
    void Close();

private:
    RecordsetState& Open() const;
    std::shared_ptr<RecordsetState> state;
};

} // namespace dao
