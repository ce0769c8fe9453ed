#include "platform/dao/TableSet.h"

#include <QScopeGuard>
#include <algorithm>

namespace dao {

TableSet::TableSet(std::shared_ptr<Connection> opened, Table& over)
    : RowSet(std::move(opened), over.columns), table(over)
{
}

void TableSet::Close() noexcept
{
    DropPending();
    RowSet::Close();
}

// -- the current row

void TableSet::SetCurrent(qint64 rowKey, const RowStore& store, std::size_t row, const DataVersion& version)
{
    isAtEnd = false;
    key = rowKey;
    rows = &store;
    rowIndex = row;
    readVersion = version;
}

void TableSet::SetDeleted(qint64 rowKey)
{
    isAtEnd = false;
    key = rowKey;
    rows = nullptr;
}

void TableSet::SetEnd()
{
    isAtEnd = true;
    rows = nullptr;
}

void TableSet::TakeRow(const Rows& read)
{
    single.Clear();
    single.Append(read.Row(), 1, columns.Count());
    SetCurrent(read.Row().WholeAt(0), single, 0, connection->Version());
}

bool TableSet::ReadRow(qint64 rowKey)
{
    Rows row = connection->Select(table.byKey, {rowKey});
    if (!row.Step())
        return false;
    TakeRow(row);
    return true;
}

void TableSet::RequireMembers() const
{
    if (!HasMembers())
        Refuse(Error::NoCurrentRecord);
}

void TableSet::RequireRow() const
{
    if (isAtEnd)
        Refuse(Error::NoCurrentRecord);
    if (rows == nullptr)
        Refuse(Error::RecordDeleted);
}

/// After a failed search the current row isn't the one the caller means.
void TableSet::RequireEditable() const
{
    if (hasMissed)
        Refuse(Error::NoCurrentRecord);
    RequireRow();
}

void TableSet::RequirePending() const
{
    if (!pending)
        Refuse(Error::NoPendingEdit);
}

/// Re-reads the current row after a write; it may be deleted.
void TableSet::Revalidate()
{
    RequireRow();
    if (connection->IsCurrent(readVersion))
        return;
    if (!ReadRow(key))
        rows = nullptr;
    RequireRow();
}

const Value* TableSet::PendingValue(int column) const
{
    if (!pending)
        return nullptr;
    if (const auto written = std::ranges::find(pending->columns, column); written != pending->columns.end())
        return &pending->values[static_cast<std::size_t>(written - pending->columns.begin())];
    static const Value null;
    return pending->adds ? &null : nullptr;
}

StoredValue TableSet::Current(int column)
{
    Revalidate();
    return rows->At(rowIndex, column);
}

// -- moving

void TableSet::MoveFirst()
{
    DropPending();
    RequireMembers();
    hasMissed = false;
    GoToFirst();
}

void TableSet::MoveNext()
{
    DropPending();
    if (isAtEnd)
        Refuse(Error::NoCurrentRecord);
    hasMissed = false;
    GoToNext();
}

void TableSet::MoveLast()
{
    DropPending();
    RequireMembers();
    hasMissed = false;
    GoToLast();
}

void TableSet::FindFirst(Key sought)
{
    DropPending();
    RequireMembers();
    noMatch = !GoToKey(sought);
    hasMissed = noMatch;
}

// -- writing

void TableSet::DropPending() noexcept
{
    pending.reset();
    connection->UnlockEdit(*this);
}

void TableSet::AddNew()
{
    DropPending();
    pending = Pending{.adds = true, .columns = {}, .values = {}};
    pending->columns.reserve(columns.Count());
    pending->values.reserve(columns.Count());
}

void TableSet::Edit()
{
    DropPending();
    RequireEditable();
    if (locksEdits)
        connection->LockForEdit(*this);
    pending = Pending{.adds = false, .columns = {}, .values = {}};
    try {
        connection->LookForChanges();
        Revalidate(); // an edit starts from the current values
    } catch (...) {
        DropPending();
        throw;
    }
}

void TableSet::Write(int column, const Value& value)
{
    RequireOpen();
    RequirePending();
    if (column == table.keyColumn && !pending->adds)
        Refuse(Error::FieldNotUpdatable);
    Value stored = store::ToColumn(value, columns[column].type);
    const auto written = std::ranges::find(pending->columns, column);
    if (written != pending->columns.end()) {
        pending->values[static_cast<std::size_t>(written - pending->columns.begin())] = std::move(stored);
        return;
    }
    pending->columns.push_back(column);
    pending->values.push_back(std::move(stored));
}

void TableSet::CancelUpdate()
{
    RequirePending();
    DropPending();
}

void TableSet::Update()
{
    RequirePending();
    // Ends the edit and releases its lock in any case.
    Pending writing = *std::exchange(pending, std::nullopt);
    const auto unlock = qScopeGuard([this] { DropPending(); });
    if (writing.adds)
        UpdateAdded(writing);
    else
        UpdateEdited(writing);
}

/// The insert of a row with these columns. The last one is kept: rows are often added one after another.
const std::string& TableSet::InsertOf(const std::vector<int>& written)
{
    if (!insert.text.empty() && insert.columns == written)
        return insert.text;
    std::string names;
    std::string parameters;
    for (const int column : written) {
        names += (names.empty() ? "" : ",") + Quoted(columns[column].name);
        parameters += parameters.empty() ? "?" : ",?";
    }
    insert.columns = written;
    insert.text = "insert into " + Quoted(table.name) +
                  (names.empty() ? " default values" : " (" + names + ") values (" + parameters + ")");
    return insert.text;
}

void TableSet::UpdateAdded(const Pending& added)
{
    connection->Change(InsertOf(added.columns), added.values);
    lastAdded = connection->LastAddedKey();
    NoteAdded(*lastAdded);
}

void TableSet::UpdateEdited(Pending& edited)
{
    if (edited.columns.empty())
        return;
    std::string assignments;
    for (const int column : edited.columns)
        assignments += (assignments.empty() ? "" : ",") + Quoted(columns[column].name) + "=?";
    edited.values.emplace_back(key);
    ChangeCurrent("update " + Quoted(table.name) + " set " + assignments + " where " + table.key + "=?", edited.values);
}

void TableSet::ChangeCurrent(const std::string& sql, const std::vector<Value>& parameters)
{
    if (connection->Change(sql, parameters) != 0)
        return;
    rows = nullptr;
    Refuse(Error::RecordDeleted);
}

void TableSet::Delete()
{
    DropPending();
    RequireEditable();
    ChangeCurrent("delete from " + Quoted(table.name) + " where " + table.key + "=?", {key});
    rows = nullptr;
    NoteDeleted();
}

Key TableSet::LastKey() const
{
    if (!lastAdded)
        Refuse(Error::NoCurrentRecord);
    return Value(*lastAdded).Long();
}

} // namespace dao
