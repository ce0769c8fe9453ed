#pragma once

#include "platform/dao/Value.h"

#include <QList>
#include <memory>

namespace dao {

class RecordsetState;

/// Table keys are 32-bit; a hidden list beside a grid is a plain list of them.
using Key = qint32;
using KeyList = QList<Key>;

/// One field of the current row, or of the row being added or edited. Valid until the record set moves.
class Field {
public:
    bool IsNull() const;
    /// The value as text: a number in its plain decimal text, a date as dd/mm/yyyy. All readers raise 94 on Null.
    QString Text() const;
    double Double() const;
    qint32 Long() const;
    basic::Int16 Integer() const;
    dao::Key Key() const;
    Value Get() const;

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
/// Over one table: a fixed list of keys with live rows. Membership is settled when the set is opened, values are those
/// at the moment a row is reached, a row deleted meanwhile raises 3167 on reading, a row added through the set stands
/// at its end. Nothing is read before it is needed: opening reads one key. Without an order rows come by ascending key;
/// so do ties of an order. Over a count, a sum or any other expression: a read-only snapshot.
///
/// A Recordset is a handle: copies share rows and position; the last one closes it. A default-made one is closed, and
/// every operation on it but Close raises 3420.
class Recordset {
public:
    Recordset();
    explicit Recordset(std::shared_ptr<RecordsetState> opened);
    ~Recordset();
    Recordset(const Recordset&);
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(const Recordset&);
    Recordset& operator=(Recordset&&) noexcept;

    bool IsOpen() const;

    /// Moving in an empty set raises 3021; MoveNext at the end as well.
    void MoveFirst();
    void MoveNext();
    void MoveLast();
    bool IsEOF() const;

    /// Rows reached so far: 0 for an empty set, at least 1 otherwise, the true count after MoveLast or at the end.
    int RecordCount() const;

    /// Finds the first row that meets `criteria` ("num = 12") and makes it current.
    ///
    /// On a miss the current row stays where it was and NoMatch() turns true. On the key field this is one look-up; on
    /// any other field a search in the set's order. Rows that no longer meet the condition the set was opened with are
    /// still found: membership is settled at opening. Raises 3021 when the set has no row at all, 3075 when `criteria`
    /// can't be read, 3070 for a field that isn't there.
    void FindFirst(const QString& criteria);
    bool NoMatch() const;

    /// A field by name, without regard to case (3265 when there is none), or by position from 0.
    Field operator[](const char* name) const;
    Field Collect(const QString& name) const;
    Field Fields(int position) const;
    int FieldCount() const;

    /// AddNew starts an empty row (fields at their table's defaults), Edit a copy of the current one (3021, 3167);
    /// Update writes it at once and durably (3020 without either), CancelUpdate drops it. After AddNew and Update the
    /// current row is the one from before; the new row stands at the end, and its key is LastKey() (3021 when none was
    /// added). Moving, a search and a failed Update (3022 for a double key, 3187, 61) drop the edit as well. A key is
    /// written in AddNew only (3164). Over a statement's answer AddNew and Edit raise 3027.
    void AddNew();
    void Edit();
    void Update();
    void CancelUpdate();
    dao::Key LastKey() const;

    /// Deletes the current row; reading it afterwards raises 3167. It leaves the set: MoveNext goes on with the row
    /// that followed, later walks pass over it.
    void Delete();

    /// Pessimistic locking: when set, Edit takes the write lock of the database (3187 when another holds it for longer
    /// than the busy timeout) and Update or CancelUpdate frees it.
    void LockEdits(bool pessimistic);

    /// Closes the set for all its handles. A second Close does nothing.
    void Close();

private:
    RecordsetState& Open() const;
    std::shared_ptr<RecordsetState> state;
};

} // namespace dao
