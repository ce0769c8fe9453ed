#pragma once

#include "platform/dao/Value.h"

#include <QList>
#include <memory>

namespace dao {

/// Table keys are 32-bit; a hidden list beside a grid is a plain list of them.
using Key = qint32;
using KeyList = QList<Key>;

/// What a record set is behind its handles: the operations mean what Recordset says of them, columns are positions.
class RecordsetState {
public:
    RecordsetState() = default;
    virtual ~RecordsetState() = default;
    Q_DISABLE_COPY_MOVE(RecordsetState)

    virtual bool IsOpen() const = 0;
    virtual void Close() noexcept = 0;
    virtual int FieldCount() const = 0;
    virtual int PositionOf(const char* name) const = 0; ///< -1 when there is no such field

    virtual void MoveFirst() = 0;
    virtual void MoveNext() = 0;
    virtual void MoveLast() = 0;
    virtual bool IsEOF() const = 0;
    virtual int RecordCount() = 0;
    virtual void FindFirst(const QString& criteria) = 0;
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

/// One field of the current row, or of the row being added or edited. Valid until the record set moves.
class Field {
public:
    bool IsNull() const { return state->IsNull(column); }
    Value Get() const { return state->Get(column); }
    /// The value as text: a number in its plain decimal text, a date as dd/mm/yyyy. All readers raise 94 on Null.
    QString Text() const { return Get().Text(); }
    double Double() const { return Get().Double(); }
    qint32 Long() const { return Get().Long(); }
    basic::Int16 Integer() const { return Get().Integer(); }
    dao::Key Key() const { return Get().Long(); }

    /// Writes the field of the row in AddNew or Edit; raises 3020 outside them. Text for a date field is read as
    /// dd/mm/yyyy (3421 when it can't be), text for a numeric field as a number (3421).
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
/// A whole table ("Actes", "select * from Actes order by num") is walked by key up to the highest key at the opening,
/// the same way at ten rows and at a million: a row that was deleted before it is reached is passed over, one that was
/// added below the highest key is met. Rows that meet a condition or are in another order: a fixed list of keys, as it
/// was at the opening, each with the values that its row has when it is reached; a row deleted meanwhile raises 3167 on
/// reading. In both a row added through the set is at its end. Nothing is read before it is needed: opening reads one
/// row. Without an order rows come by ascending key; so do ties of an order. Over counts, sums and single fields: a
/// read-only snapshot.
///
/// A current row that was deleted meanwhile raises 3167, one that this program has written since shows what was
/// written. What other programs have written is noticed at an opening, a search, Edit, DBEngine.Idle, MoveFirst and
/// MoveLast and at the first rows of a walk, then at every 256th of a listed set or with the next bundle (512 at most)
/// of a whole table.
///
/// A Recordset is a handle: copies share rows and position; the last one closes it. A default-made one is closed, and
/// every operation on it but Close raises 3420.
class Recordset {
public:
    Recordset() = default;
    explicit Recordset(std::shared_ptr<RecordsetState> opened) : state(std::move(opened)) {}

    bool IsOpen() const { return state != nullptr && state->IsOpen(); }

    /// Moving in an empty set raises 3021; MoveNext at the end as well.
    void MoveFirst() { Open().MoveFirst(); }
    void MoveNext() { Open().MoveNext(); }
    void MoveLast() { Open().MoveLast(); }
    bool IsEOF() const { return Open().IsEOF(); }

    /// 0 for an empty set, the number of rows once the last one was reached (MoveLast, the end), 1 until then.
    int RecordCount() const { return Open().RecordCount(); }

    /// Finds the first row that meets `criteria` ("num = 12") and makes it current.
    ///
    /// On a miss the current row stays where it was and can be read, NoMatch() turns true, and Edit and Delete raise
    /// 3021 until the set moves or finds again. On the key field this is one look-up; on any other field a search in
    /// the set's order. Rows that no longer meet the condition the set was opened with are still found. Raises 3021
    /// when the set has no row at all, 3075 when `criteria` can't be read, 3070 for a field that isn't there, 3219 over
    /// a snapshot.
    void FindFirst(const QString& criteria) { Open().FindFirst(criteria); }
    bool NoMatch() const { return Open().NoMatch(); }

    /// A field by name, without regard to case (3265 when there is none), or by position from 0.
    Field operator[](const char* name) const;
    Field Collect(const QString& name) const;
    Field Fields(int position) const;
    int FieldCount() const { return Open().FieldCount(); }

    /// AddNew starts an empty row (fields that aren't written get their table's defaults), Edit a copy of the current
    /// one (3021, 3167); Update writes it at once and durably (3020 without either), CancelUpdate drops it. After
    /// AddNew and Update the current row is the one from before; the new row is at the end, and its key is LastKey()
    /// (3021 when none was added). Moving, a search and a failed Update (3022 for a double key, 3187, 61) drop the edit
    /// as well. A key is written in AddNew only (3164). Over a snapshot AddNew and Edit raise 3027.
    void AddNew() { Open().AddNew(); }
    void Edit() { Open().Edit(); }
    void Update() { Open().Update(); }
    void CancelUpdate() { Open().CancelUpdate(); }
    dao::Key LastKey() const { return Open().LastKey(); }

    /// Deletes the current row; reading it afterwards raises 3167. It leaves the set: MoveNext goes on with the row
    /// that followed, later walks pass over it.
    void Delete() { Open().Delete(); }

    /// Pessimistic locking: when set, Edit takes the write lock of the database (3187 when another holds it for longer
    /// than the busy timeout) and Update or CancelUpdate frees it. One edit at a time has it; a change that is made
    /// through another set or by Execute meanwhile is committed at once and ends it.
    void LockEdits(bool pessimistic) { Open().LockEdits(pessimistic); }

    /// Closes the set for all its handles. A second Close does nothing.
    void Close();

private:
    RecordsetState& Open() const;
    std::shared_ptr<RecordsetState> state;
};

} // namespace dao
