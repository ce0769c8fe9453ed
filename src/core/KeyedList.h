#pragma once

#include "platform/dao/Recordset.h"

#include <limits>

namespace forms {
class Grid;
} // namespace forms

namespace core {

/// A grid whose rows show records, and the key of the record on each row.
///
/// A grid never has less than one row: while the list is empty, it shows one empty row without a key.
class KeyedList {
public:
    /// Rows are numbered in 16 bits, unless a screen sets another limit.
    static constexpr int UsualLimit = std::numeric_limits<qint16>::max();
    static constexpr int NoLimit = std::numeric_limits<int>::max();

    explicit KeyedList(forms::Grid& grid, int limit = UsualLimit);

    forms::Grid& Grid() const { return grid; }
    int Count() const { return static_cast<int>(keys.size()); }
    bool IsEmpty() const { return keys.isEmpty(); }
    /// In row order.
    const dao::KeyList& Keys() const { return keys; }
    /// The key on a row; raises 9 for a row without one.
    dao::Key KeyOf(int row) const;

    /// Empties list and grid.
    void Clear();
    /// Empties the list alone; its rows stay in the grid.
    void DropKeys() { keys.clear(); }
    /// Lists a record on the next row, which is appended to the grid unless it is there already. Returns the row.
    /// Raises 6 past the limit.
    int Add(dao::Key key);
    /// Removes a row with its key and selects the first row, if any. Raises 9 for a row without a key.
    void Remove(int row);
    /// Swaps the keys of two rows, but not their cells. Raises 9 for a row without a key.
    void SwapKeys(int row, int other);

private:
    void RequireKey(int row) const;

    forms::Grid& grid;
    int limit;
    dao::KeyList keys;
};

} // namespace core
