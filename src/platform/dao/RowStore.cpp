#include "platform/dao/RowStore.h"

#include <sqlite3.h>

namespace dao {

void RowStore::Append(sqlite3_stmt* statement, int first, int columns)
{
    width = std::size_t(columns);
    const std::size_t start = cells.size();
    cells.resize(start + width);
    for (int i = 0; i < columns; ++i)
        Take(sqlite3_column_value(statement, first + i), cells[start + std::size_t(i)]);
    ++count;
}

void RowStore::Take(sqlite3_value* value, Cell& cell)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        cell.kind = Kind::Whole;
        cell.whole = sqlite3_value_int64(value);
        return;
    case SQLITE_FLOAT:
        cell.kind = Kind::Real;
        cell.real = sqlite3_value_double(value);
        return;
    case SQLITE_NULL:
        cell.kind = Kind::Null;
        return;
    default:
        break;
    }
    const auto* const text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    cell.kind = Kind::Text;
    cell.length = text != nullptr ? quint32(sqlite3_value_bytes(value)) : 0;
    cell.offset = arena.size();
    arena.insert(arena.end(), text, text + cell.length);
}

void RowStore::Clear()
{
    cells.clear();
    arena.clear();
    count = 0;
}

} // namespace dao
