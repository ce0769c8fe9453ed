#include "core/KeyedList.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Grid.h"

namespace core {

KeyedList::KeyedList(forms::Grid& shownIn, int mostRows) : grid(shownIn), limit(mostRows) {}

void KeyedList::RequireKey(int row) const
{
    if (row < 0 || row >= Count())
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
}

dao::Key KeyedList::KeyOf(int row) const
{
    RequireKey(row);
    return keys[row];
}

void KeyedList::Clear()
{
    grid.ClearToOneRow();
    DropKeys();
}

int KeyedList::Add(dao::Key key)
{
    const int row = Count();
    if (row >= limit)
        throw basic::RuntimeError(basic::Error::Overflow);
    if (row >= grid.Rows())
        grid.AppendRow();
    keys << key;
    return row;
}

void KeyedList::Remove(int row)
{
    RequireKey(row);
    keys.removeAt(row);
    if (keys.isEmpty())
        return grid.ClearToOneRow();
    grid.RemoveRow(row);
    grid.SelectRow(0);
}

void KeyedList::SwapKeys(int row, int other)
{
    RequireKey(row);
    RequireKey(other);
    keys.swapItemsAt(row, other);
}

} // namespace core
