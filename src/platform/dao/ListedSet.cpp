#include "platform/dao/ListedSet.h"

#include <algorithm>

namespace dao {
namespace {

constexpr std::size_t RowsFetched = 32768; // rows cached with their keys
// Checking for changes by others costs as much as reading a row.
constexpr std::size_t RowsLookedAtSingly = 3;
constexpr std::size_t RowsBetweenLooks = 256;

} // namespace

ListedSet::ListedSet(std::shared_ptr<Connection> opened, std::shared_ptr<Plan> select,
                     const std::vector<Value>& literals)
    : TableSet(std::move(opened), *select->table), plan(std::move(select))
{
    reading.emplace(connection->Select(*plan, literals));
    if (!reading->Step()) {
        reading.reset();
        return;
    }
    connection->AddHalfRead(*this);
    Take(*reading);
    fetchedVersion = connection->Version();
    GoTo(0);
}

void ListedSet::Close() noexcept
{
    reading.reset();
    connection->RemoveHalfRead(*this);
    TableSet::Close();
}

// -- members

void ListedSet::Take(const Rows& read)
{
    keys.push_back(read.Row().WholeAt(0));
    if (keys.size() <= RowsFetched)
        fetched.Append(read.Row(), 1, columns.Count());
}

void ListedSet::FinishReading()
{
    if (!reading)
        return;
    connection->RemoveHalfRead(*this);
    try {
        while (reading->Step())
            Take(*reading);
    } catch (...) {
        Close(); // better closed than incomplete
        throw;
    }
    reading.reset();
}

void ListedSet::NoteDeleted()
{
    keys.erase(keys.begin() + static_cast<qsizetype>(index));
    fetched.Clear();
    fetchedVersion = {};
    isRemoved = true;
}

int ListedSet::RecordCount()
{
    return keys.empty() ? 0 : reachedAll ? static_cast<int>(keys.size()) : 1;
}

// -- moving

/// Goes to a row and reads its current values.
void ListedSet::GoTo(std::size_t place)
{
    index = place;
    isRemoved = false;
    if (place < fetched.Count() && connection->IsCurrent(fetchedVersion))
        SetCurrent(keys[place], fetched, place, fetchedVersion);
    else if (!ReadRow(keys[place]))
        SetDeleted(keys[place]);
}

void ListedSet::GoToFirst()
{
    FinishReading();
    walked = 0;
    connection->CheckForChanges();
    GoTo(0);
}

void ListedSet::GoToNext()
{
    FinishReading();
    const std::size_t next = isRemoved ? index : index + 1;
    if (next >= keys.size()) {
        SetEnd();
        reachedAll = true;
        return;
    }
    ++walked;
    if (walked <= RowsLookedAtSingly || walked % RowsBetweenLooks == 0)
        connection->CheckForChanges();
    GoTo(next);
}

void ListedSet::GoToLast()
{
    FinishReading();
    reachedAll = true;
    walked = 0;
    connection->CheckForChanges();
    GoTo(keys.size() - 1);
}

bool ListedSet::GoToKey(qint64 sought)
{
    FinishReading();
    const auto place = std::ranges::find(keys, sought);
    if (place == keys.end() || !ReadRow(sought))
        return false;
    index = static_cast<std::size_t>(place - keys.begin());
    isRemoved = false;
    walked = 0;
    return true;
}

} // namespace dao
