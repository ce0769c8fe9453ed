#pragma once

#include "platform/dao/Datum.h"

#include <vector>

struct sqlite3_stmt;
struct sqlite3_value;

namespace dao {

/// One row among many: its cells, and the arena their text lies in.
struct Row {
    const Cell* cells = nullptr;
    const char* arena = nullptr;

    explicit operator bool() const { return cells != nullptr; }
    Seen At(int column) const { return {cells[column], arena}; }
};

/// Rows that were read, held compactly: 16 bytes a cell and one arena for all texts.
class RowStore {
public:
    /// Takes `columns` columns of the statement's current row, from column `first` on.
    void Append(sqlite3_stmt* statement, int first, int columns);
    void Clear();
    std::size_t Count() const { return count; }
    /// Valid until the next Append or Clear.
    Row At(std::size_t index) const { return {cells.data() + index * width, arena.data()}; }

private:
    void Take(sqlite3_value* value, Cell& cell);

    std::vector<Cell> cells;
    std::vector<char> arena;
    std::size_t width = 0;
    std::size_t count = 0;
};

} // namespace dao
