#include "platform/dao/WholeSet.h"

#include <algorithm>
#include <limits>

namespace dao {
namespace {

constexpr int MostAhead = 512;                                // rows read at a time
constexpr std::size_t InTable = static_cast<std::size_t>(-1); // index of a row that wasn't added
constexpr qint64 LowestKey = std::numeric_limits<qint64>::min();

} // namespace

WholeSet::WholeSet(std::shared_ptr<Connection> opened, Table& over)
    : TableSet(std::move(opened), over), inAdded(InTable)
{
    Rows first = connection->Select(table.first);
    hadRows = first.Step();
    if (!hadRows)
        return;
    upTo = first.Row().WholeAt(columns.Count() + 1);
    TakeRow(first);
}

// -- members

void WholeSet::NoteAdded(qint64 newKey)
{
    if (!hadRows || newKey > upTo) // lower keys are within the traversal anyway
        added.push_back(newKey);
}

int WholeSet::RecordCount()
{
    if (hadRows && !reachedAll)
        return 1;
    qint64 count = 0;
    if (hadRows) {
        Rows all = connection->Select(table.count, {upTo});
        all.Step();
        count = all.Row().WholeAt(0);
    }
    for (const qint64 each : added)
        count += connection->Select(table.byKey, {each}).Step() ? 1 : 0;
    return static_cast<int>(count);
}

// -- moving

void WholeSet::Jump(std::size_t addedIndex)
{
    inAdded = addedIndex;
    aheadKeys.clear();
    aheadSize = 1;
}

void WholeSet::GoToFirst()
{
    Jump(InTable);
    if (!(hadRows && GoToFollowing(LowestKey)) && !GoToAdded(0)) {
        SetEnd();
        Refuse(Error::NoCurrentRecord); // all rows were deleted
    }
}

void WholeSet::GoToNext()
{
    const bool isFound = (inAdded == InTable && hadRows && GoToFollowing(CurrentKey())) || GoToAdded(inAdded + 1);
    if (isFound)
        return;
    SetEnd();
    reachedAll = true;
}

void WholeSet::GoToLast()
{
    reachedAll = true;
    Jump(InTable);
    for (std::size_t i = added.size(); i-- > 0;) {
        if (ReadRow(added[i])) {
            inAdded = i;
            return;
        }
    }
    Rows last = connection->Select(table.last, {upTo});
    if (hadRows && last.Step())
        return TakeRow(last);
    SetEnd();
    Refuse(Error::NoCurrentRecord); // all rows were deleted
}

bool WholeSet::GoToAdded(std::size_t from)
{
    for (std::size_t i = from; i < added.size(); ++i) {
        if (ReadRow(added[i])) {
            inAdded = i;
            return true;
        }
    }
    return false;
}

/// Reads growing batches while nobody writes, single rows otherwise.
bool WholeSet::GoToFollowing(qint64 after)
{
    const bool isAhead = aheadNext < aheadKeys.size() && connection->IsCurrent(aheadVersion);
    if (!isAhead)
        ReadAhead(after);
    if (aheadNext == aheadKeys.size())
        return false;
    SetCurrent(aheadKeys[aheadNext], ahead, aheadNext, aheadVersion);
    ++aheadNext;
    return true;
}

void WholeSet::ReadAhead(qint64 after)
{
    aheadSize = !aheadKeys.empty() && connection->IsCurrent(aheadVersion) ? std::min(aheadSize * 2, MostAhead) : 1;
    Rows some = connection->Select(table.following, {after, upTo, aheadSize});
    SetDeleted(after); // the current row may be in the batch that is discarded
    ahead.Clear();
    aheadKeys.clear();
    aheadNext = 0;
    while (some.Step()) {
        aheadKeys.push_back(some.Row().WholeAt(0));
        ahead.Append(some.Row(), 1, columns.Count());
    }
    aheadVersion = connection->Version();
}

bool WholeSet::GoToKey(qint64 sought)
{
    const bool isInTable = hadRows && sought <= upTo;
    const auto place = std::ranges::find(added, sought);
    if ((!isInTable && place == added.end()) || !ReadRow(sought))
        return false;
    Jump(isInTable ? InTable : static_cast<std::size_t>(place - added.begin()));
    return true;
}

} // namespace dao
