#pragma once

#include "platform/dao/Store.h"

#include <deque>
#include <unordered_map>
#include <vector>

namespace dao {

struct Column {
    std::string name;
    ColumnType type = ColumnType::Any;
};

/// The columns of a table or a query result.
class Columns {
public:
    void Add(Column column) { columns.push_back(std::move(column)); }
    int Count() const { return static_cast<int>(columns.size()); }
    const Column& operator[](int position) const { return columns[static_cast<std::size_t>(position)]; }
    /// The position of a column, without regard to case; -1 when there is none.
    int PositionOf(std::string_view name) const;

private:
    std::vector<Column> columns;
};

/// A table's schema, and the statements shared by all record sets over it.
class Table {
public:
    Table(sqlite3* database, std::string_view storedName);

    std::string name;
    Columns columns;
    std::string key;      ///< the quoted name of the key as statements write it
    int keyColumn = -1;   ///< its position; -1 if the table has none of its own
    std::string rowParts; ///< key and all columns, as a select lists them

    std::string first;     ///< the row with the lowest key, and the highest key
    std::string following; ///< up to ?3 rows with keys above ?1 up to ?2, in key order
    std::string byKey;     ///< the row with the key ?1
    std::string last;      ///< the row with the highest key up to ?1
    std::string count;     ///< number of keys up to ?1

private:
    void ReadColumns(sqlite3* database);
};

/// The columns of a select's result.
Columns ResultColumnsOf(const Statement& statement);

/// The tables of a database, looked up once each.
class Catalog {
public:
    /// Case-insensitive; null when there is no such table. The table lives as long as the catalog.
    Table* Find(sqlite3* database, std::string_view name);
    /// After a schema change: the next Find reads the table again; open sets keep the old schema.
    void Forget(std::string_view name);

private:
    std::deque<Table> tables;
    std::unordered_map<std::string, Table*> byName; // requested names in lower case
};

} // namespace dao
