#include "platform/dao/TableSet.h"

#include "platform/basic/RuntimeError.h"

#include <algorithm>
#include <limits>

namespace dao {
namespace {

constexpr std::size_t listedOfWhole = 4096; // keys of a whole table
constexpr std::size_t rowsFetched = 32768;  // rows kept with their keys, of a part of a table
constexpr std::size_t fetchedOfAll = 1024;  // the same of a table in another order, where few are reached of many
constexpr int mostAhead = 512;              // rows of a whole table read at a time

} // namespace

TableSet::TableSet(std::shared_ptr<Connection> opened, Plan& rows, std::vector<Datum> statementLiterals)
    : RecordsetState(std::move(opened), rows.table->columns), plan(rows), table(*rows.table),
      literals(std::move(statementLiterals))
{
    connection->Settle();
    BindLiterals(plan.statement);
    fetchedAt = connection->Now();
    if (!plan.statement.Step()) {
        plan.statement.Reset();
        return;
    }
    isReading = true;
    connection->BeginReading(*this);
    if (plan.whole)
        connection->WatchGrowth(*this);
    members.Add(plan.statement.WholeAt(0));
    fetched.Append(plan.statement.Raw(), 1, columns.Count());
    place = Place::Listed;
    key = members[0];
    reached = 1;
    Hold(fetched, 0, fetchedAt);
}

TableSet::~TableSet()
{
    Close();
}

void TableSet::Close() noexcept
{
    DropPending();
    if (isReading)
        plan.statement.Reset();
    isReading = false;
    connection->Leave(*this);
    RecordsetState::Close();
}

void TableSet::BindLiterals(Statement& statement) const
{
    for (std::size_t i = 0; i < literals.size(); ++i)
        statement.Bind(int(i) + 1, literals[i]);
}

// -- membership

void TableSet::Settle()
{
    if (!isReading)
        return;
    isReading = false;
    const ResetAtEnd reset(plan.statement); // until then the file stays as it was at the opening
    try {
        if (plan.whole)
            SettleList();
        else
            SettleRows();
    } catch (...) {
        Close(); // rather no set than one that has lost members
        throw;
    }
}

void TableSet::SettleList()
{
    Statement& rest = connection->Kept("select " + table.key + " from " + Quoted(table.name) + " where " + table.key +
                                       ">? order by " + table.key + " limit ?");
    const ResetAtEnd reset(rest);
    rest.Bind(1, members[0]);
    rest.Bind(2, qint64(listedOfWhole));
    while (rest.Step())
        members.Add(rest.WholeAt(0));
    if (members.Count() <= listedOfWhole)
        return;
    Statement& highest = connection->Kept("select max(" + table.key + ") from " + Quoted(table.name));
    const ResetAtEnd resetHighest(highest);
    highest.Step();
    members.tail = Members::Tail{LastListed(), highest.WholeAt(0)};
}

void TableSet::SettleRows()
{
    const std::size_t most = plan.isConditional ? rowsFetched : fetchedOfAll;
    while (fetched.Count() < most) {
        if (!plan.statement.Step())
            return;
        members.Add(plan.statement.WholeAt(0));
        fetched.Append(plan.statement.Raw(), 1, columns.Count());
    }
    // Of so many rows only the keys are kept; they are read again from the first, which an index may give alone.
    if (!plan.keysStatement)
        plan.keysStatement = Statement(Handle(), plan.keysSql);
    const ResetAtEnd reset(plan.keysStatement);
    BindLiterals(plan.keysStatement);
    members.Clear();
    while (plan.keysStatement.Step())
        members.Add(plan.keysStatement.WholeAt(0));
}

void TableSet::SettleWhole(const Table& changed)
{
    if (changed.name == table.name && members.tail)
        ListTail();
}

void TableSet::ListTail()
{
    Statement& rest = connection->Kept("select " + table.key + " from " + Quoted(table.name) + " where " + table.key +
                                       ">? and " + table.key + "<=? order by " + table.key);
    const ResetAtEnd reset(rest);
    rest.Bind(1, members.tail->above);
    rest.Bind(2, members.tail->upTo);
    while (rest.Step())
        members.Add(rest.WholeAt(0));
    members.tail.reset();
    if (place != Place::Tail)
        return;
    place = Place::Listed;
    index = members.FirstFrom(key);
    wasDeleted = index == members.Count() || members[index] != key; // deleted behind: what follows takes its place
}

qint64 TableSet::LastListed() const
{
    return members[members.Count() - 1];
}

qint64 TableSet::CountTail() const
{
    if (!members.tail)
        return 0;
    // All rows less those outside of the tail: counting all is far quicker than counting between two keys.
    const std::string from = " from " + Quoted(table.name);
    Statement& count = connection->Kept("select (select count(*)" + from + ")-(select count(*)" + from + " where " +
                                        table.key + "<=?1)-(select count(*)" + from + " where " + table.key + ">?2)");
    const ResetAtEnd reset(count);
    count.Bind(1, members.tail->above);
    count.Bind(2, members.tail->upTo);
    count.Step();
    return count.WholeAt(0);
}

int TableSet::RecordCount()
{
    if (members.Count() == 0)
        return 0;
    if (!reachedAll)
        return int(std::max<qint64>(reached, 1));
    connection->Settle();
    return int(qint64(members.Count()) + CountTail());
}

// -- moving

void TableSet::RequireRows() const
{
    if (members.Count() == 0)
        throw basic::RuntimeError(basic::Error::NoCurrentRecord);
}

void TableSet::MoveFirst()
{
    DropPending();
    RequireRows();
    const bool isThere = isReading && connection->IsStill(fetchedAt);
    if (isThere)
        return;
    connection->Settle();
    Reach(Place::Listed, 0, members[0]);
}

void TableSet::MoveNext()
{
    DropPending();
    if (place == Place::End)
        throw basic::RuntimeError(basic::Error::NoCurrentRecord);
    connection->Settle();
    if (place == Place::Listed) {
        const std::size_t next = wasDeleted ? index : index + 1;
        if (next < members.Count()) {
            Reach(Place::Listed, next, members[next]);
            return;
        }
    }
    const bool fromTail = place == Place::Tail;
    const qint64 before = fromTail ? ordinal : qint64(members.Count());
    if (const auto next = members.tail ? NextInTail(fromTail ? key : members.tail->above) : std::nullopt) {
        Reach(Place::Tail, 0, *next);
        if (before > 0)
            ordinal = before + 1;
        reached = std::max(reached, ordinal);
        return;
    }
    GoToEnd();
}

void TableSet::MoveLast()
{
    DropPending();
    RequireRows();
    connection->Settle();
    reachedAll = true;
    if (members.tail) {
        Statement& last = connection->Kept("select max(" + table.key + ") from " + Quoted(table.name) + " where " +
                                           table.key + ">? and " + table.key + "<=?");
        const ResetAtEnd reset(last);
        last.Bind(1, members.tail->above);
        last.Bind(2, members.tail->upTo);
        if (last.Step() && last.WholeAt(0) > members.tail->above) {
            Reach(Place::Tail, 0, last.WholeAt(0));
            return;
        }
    }
    Reach(Place::Listed, members.Count() - 1, LastListed());
}

void TableSet::GoToEnd()
{
    place = Place::End;
    held = nullptr;
    wasDeleted = false;
    reachedAll = true;
}

void TableSet::Stand(Place where, std::size_t listIndex, qint64 rowKey)
{
    place = where;
    index = listIndex;
    key = rowKey;
    ordinal = 0;
    wasDeleted = false;
    isOutdated = false;
    if (where == Place::Listed)
        reached = std::max(reached, qint64(listIndex) + 1);
}

/// Makes a member the current row and gets its values as they are now.
void TableSet::Reach(Place where, std::size_t listIndex, qint64 rowKey)
{
    Stand(where, listIndex, rowKey);
    const bool served = (where == Place::Listed && ServeFetched(listIndex)) || (plan.whole && ServeAhead(rowKey));
    if (!served && !ReadSingle(rowKey))
        held = nullptr;
}

bool TableSet::ServeFetched(std::size_t listIndex)
{
    if (listIndex >= fetched.Count() || !connection->IsStill(fetchedAt))
        return false;
    Hold(fetched, listIndex, fetchedAt);
    return true;
}

void TableSet::Hold(const RowStore& store, std::size_t row, const Moment& since)
{
    held = &store;
    heldIndex = row;
    heldSince = since;
    seenAt = since;
}

/// A whole table walked on: rows come in growing bundles as long as nobody writes, one by one otherwise.
bool TableSet::ServeAhead(qint64 rowKey)
{
    if (!connection->IsStill(aheadAt)) {
        aheadSize = 1;
        ReadAhead(rowKey, rowKey);
    }
    while (aheadNext < aheadKeys.size() && aheadKeys[aheadNext] < rowKey)
        ++aheadNext; // a row that was added in between and is no member
    if (aheadNext == aheadKeys.size() || aheadKeys[aheadNext] != rowKey) {
        const bool walksOn = !aheadKeys.empty() && aheadNext == aheadKeys.size() && rowKey > aheadKeys.back();
        aheadSize = walksOn ? std::min(aheadSize * 2, mostAhead) : 1;
        ReadAhead(rowKey, std::numeric_limits<qint64>::max());
    }
    if (aheadNext == aheadKeys.size() || aheadKeys[aheadNext] != rowKey)
        return false;
    Hold(ahead, aheadNext++, aheadAt);
    return true;
}

void TableSet::ReadAhead(qint64 from, qint64 upTo)
{
    Statement& some = connection->Kept("select " + table.rowParts + " from " + Quoted(table.name) + " where " +
                                       table.key + ">=? and " + table.key + "<=? order by " + table.key + " limit ?");
    const ResetAtEnd reset(some);
    some.Bind(1, from);
    some.Bind(2, upTo);
    some.Bind(3, qint64(aheadSize));
    aheadAt = connection->Now();
    ahead.Clear();
    aheadKeys.clear();
    aheadNext = 0;
    while (some.Step()) {
        aheadKeys.push_back(some.WholeAt(0));
        ahead.Append(some.Raw(), 1, columns.Count());
    }
}

/// The next key of the tail, with its row read ahead.
std::optional<qint64> TableSet::NextInTail(qint64 after)
{
    if (aheadNext < aheadKeys.size() && aheadKeys[aheadNext] > after && connection->IsStill(aheadAt)) {
        const bool follows = aheadNext > 0 && aheadKeys[aheadNext - 1] == after;
        if (follows)
            return members.tail->Holds(aheadKeys[aheadNext]) ? std::optional(aheadKeys[aheadNext]) : std::nullopt;
    }
    aheadSize = connection->IsStill(aheadAt) ? std::min(aheadSize * 2, mostAhead) : 1;
    if (after == std::numeric_limits<qint64>::max())
        return std::nullopt;
    ReadAhead(after + 1, members.tail->upTo);
    return aheadKeys.empty() ? std::nullopt : std::optional(aheadKeys.front());
}

bool TableSet::ReadSingle(qint64 rowKey)
{
    Statement& row = table.RowByKey(Handle());
    const ResetAtEnd reset(row);
    row.Bind(1, rowKey);
    const Moment now = connection->Now();
    if (!row.Step())
        return false;
    single.Clear();
    single.Append(row.Raw(), 1, columns.Count());
    Hold(single, 0, now);
    return true;
}

// -- reading

void TableSet::RequireRow() const
{
    if (place == Place::End)
        throw basic::RuntimeError(basic::Error::NoCurrentRecord);
    if (held == nullptr || wasDeleted)
        throw basic::RuntimeError(basic::Error::RecordDeleted);
}

/// Somebody has written since the row was reached: its values stand, unless this set wrote them, but it must still
/// exist.
void TableSet::LookAgain()
{
    connection->Settle();
    if (isOutdated) {
        if (!ReadSingle(key))
            held = nullptr;
        isOutdated = false;
        return;
    }
    seenAt = connection->Now();
    Statement& exists = table.KeyExists(Handle());
    const ResetAtEnd reset(exists);
    exists.Bind(1, key);
    if (!exists.Step())
        held = nullptr;
}

Seen TableSet::ValueAt(int column)
{
    RequireOpen();
    if (pending) {
        for (const auto& [written, value] : pending->fields) {
            if (written == column)
                return Seen(value);
        }
        if (pending->adds)
            return Seen(columns[column].initially);
    }
    RequireRow();
    if (!connection->IsStill(seenAt)) {
        LookAgain();
        RequireRow();
    }
    return held->At(heldIndex).At(column);
}

} // namespace dao
