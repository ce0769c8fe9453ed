#include "platform/dao/TableSet.h"

#include "platform/basic/RuntimeError.h"

#include <sqlite3.h>

#include <algorithm>

namespace dao {

void TableSet::AddNew()
{
    DropPending();
    RequireOpen();
    Pending begun;
    begun.adds = true;
    pending = std::move(begun);
}

void TableSet::Edit()
{
    DropPending();
    RequireRow();
    Pending begun;
    if (locksEdits)
        begun.lock = std::make_unique<EditLock>(*connection);
    // An edit starts from the row as it is now, not as it was when it was reached.
    if (!connection->IsStill(heldSince)) {
        connection->Settle();
        if (!ReadSingle(key))
            held = nullptr;
        RequireRow();
    }
    pending.emplace(std::move(begun));
}

void TableSet::Write(int column, const Value& value)
{
    RequireOpen();
    if (!pending)
        throw basic::RuntimeError(basic::Error::NoPendingEdit);
    if (column == table.keyColumn && !pending->adds)
        throw basic::RuntimeError(basic::Error::FieldNotUpdatable);
    Datum stored = Stored(value, columns[column].type);
    const auto written = std::ranges::find(pending->fields, column, &std::pair<int, Datum>::first);
    if (written == pending->fields.end())
        pending->fields.emplace_back(column, std::move(stored));
    else
        written->second = std::move(stored);
}

void TableSet::CancelUpdate()
{
    RequireOpen();
    if (!pending)
        throw basic::RuntimeError(basic::Error::NoPendingEdit);
    DropPending();
}

void TableSet::Update()
{
    RequireOpen();
    if (!pending)
        throw basic::RuntimeError(basic::Error::NoPendingEdit);
    // Taken out first: whatever happens now, the edit is over and its lock is given back.
    const Pending writing = *std::exchange(pending, std::nullopt);
    if (writing.adds)
        UpdateAdded(writing);
    else
        UpdateEdited(writing);
}

void TableSet::UpdateAdded(const Pending& added)
{
    std::string names;
    std::string places;
    bool givesKey = false;
    for (const auto& [column, value] : added.fields) {
        names += (names.empty() ? "" : ",") + Quoted(columns[column].name);
        places += places.empty() ? "?" : ",?";
        givesKey = givesKey || (column == table.keyColumn && value.kind != Kind::Null);
    }
    const std::string values = names.empty() ? " default values" : " (" + names + ") values (" + places + ")";

    connection->Settle();
    if (members.tail)
        ListTail();
    if (givesKey) // one that the store gives lies above all others and can't come between those of a whole set
        connection->SettleWhole(table);
    Statement& insert = connection->Kept("insert into " + Quoted(table.name) + values);
    int number = 0;
    for (const auto& [column, value] : added.fields)
        insert.Bind(++number, value);
    connection->RunChange(insert);
    lastAdded = sqlite3_last_insert_rowid(Handle());
    members.Add(*lastAdded);
}

void TableSet::UpdateEdited(const Pending& edited)
{
    if (edited.fields.empty())
        return;
    std::string assignments;
    for (const auto& [column, value] : edited.fields)
        assignments += (assignments.empty() ? "" : ",") + Quoted(columns[column].name) + "=?";

    connection->Settle();
    Statement& update =
        connection->Kept("update " + Quoted(table.name) + " set " + assignments + " where " + table.key + "=?");
    int number = 0;
    for (const auto& [column, value] : edited.fields)
        update.Bind(++number, value);
    update.Bind(++number, key);
    connection->RunChange(update, edited.lock != nullptr);
    if (sqlite3_changes(Handle()) == 0) {
        held = nullptr;
        throw basic::RuntimeError(basic::Error::RecordDeleted);
    }
    isOutdated = true;
}

void TableSet::Delete()
{
    DropPending();
    RequireOpen();
    RequireRow();
    connection->SettleWhole(table);
    Statement& removal = connection->Kept("delete from " + Quoted(table.name) + " where " + table.key + "=?");
    removal.Bind(1, key);
    connection->RunChange(removal);
    held = nullptr;
    if (sqlite3_changes(Handle()) == 0)
        throw basic::RuntimeError(basic::Error::RecordDeleted);
    // What follows moves up: MoveNext goes on with it, and the row is no member any more.
    members.Remove(index);
    fetched.Clear();
    fetchedAt = {};
    wasDeleted = true;
    reached -= qint64(index) < reached ? 1 : 0;
}

Key TableSet::LastKey() const
{
    RequireOpen();
    if (!lastAdded)
        throw basic::RuntimeError(basic::Error::NoCurrentRecord);
    return LongOf(Seen(Datum::Of(*lastAdded)));
}

} // namespace dao
