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
    connection->FinishReading(plan.get());
    plan->statement.Bind(literals);
    if (!plan->statement.Step()) {
        plan->statement.Reset();
        return;
    }
    isReading = true;
    connection->BeginReading(*this);
    Take();
    fetchedVersion = connection->Version();
    GoTo(0);
}

void ListedSet::Close() noexcept
{
    if (isReading)
        plan->statement.Reset();
    isReading = false;
    connection->EndReading(*this);
    TableSet::Close();
}

// -- members

void ListedSet::Take()
{
    keys.push_back(plan->statement.WholeAt(0));
    if (keys.size() <= RowsFetched)
        fetched.Append(plan->statement, 1, columns.Count());
}

void ListedSet::FinishReading()
{
    if (!std::exchange(isReading, false))
        return;
    connection->EndReading(*this);
    const ResetAtEnd reset(plan->statement); // until then it holds the snapshot of the opening
    try {
        while (plan->statement.Step())
            Take();
    } catch (...) {
        Close(); // better closed than incomplete
        throw;
    }
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

bool ListedSet::GoToAny(const std::vector<qint64>& sought)
{
    FinishReading();
    for (std::size_t place = 0; place < keys.size(); ++place) {
        if (!std::ranges::binary_search(sought, keys[place]) || !ReadRow(keys[place]))
            continue;
        index = place;
        isRemoved = false;
        walked = 0;
        return true;
    }
    return false;
}

} // namespace dao
