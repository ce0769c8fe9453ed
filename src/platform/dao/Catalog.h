#pragma once

#include "platform/dao/Sqlite.h"

#include <deque>
#include <unordered_map>
#include <vector>

namespace dao {

struct Column {
    std::string name;
    ColumnType type = ColumnType::Any;
};

/// The columns of a table or of a statement's answer.
class Columns {
public:
    void Add(Column column) { columns.push_back(std::move(column)); }
    int Count() const { return int(columns.size()); }
    const Column& operator[](int position) const { return columns[std::size_t(position)]; }
    /// The position of a column, without regard to case; -1 when there is none.
    int PositionOf(std::string_view name) const;

private:
    std::vector<Column> columns;
};

/// What is known of a table, and the statements that all record sets over it share.
class Table {
public:
    Table(sqlite3* database, std::string_view storedName);

    std::string name;
    Columns columns;
    std::string key;        ///< the quoted name of the key as statements write it
    int keyColumn = -1;     ///< its position, -1 when the table has none of its own
    std::u16string keyTest; ///< the shape of "KEY = 1", empty when the table has none of its own
    std::string rowParts;   ///< key and all columns, as a select lists them

    std::string first;     ///< the row with the lowest key, then the highest key
    std::string following; ///< rows with keys from ?1 (not itself) to ?2 in their order, ?3 at most
    std::string byKey;     ///< the row with the key ?1
    std::string last;      ///< the row with the highest key up to ?1
    std::string count;     ///< how many keys there are up to ?1

private:
    void ReadColumns(sqlite3* database);
};

/// The columns of a select's answer.
Columns AnswerColumns(const Statement& statement);

/// The tables of a database, looked up once each.
class Catalog {
public:
    /// Null when there is no such table, without regard to case. The table lives as long as the catalog.
    Table* Find(sqlite3* database, std::string_view name);
    /// After a table was changed: the next Find reads it anew, sets that are open keep what they know.
    void Forget(std::string_view name);

private:
    std::deque<Table> tables;
    std::unordered_map<std::string, Table*> byName; // names as they were asked for, in small letters
};

} // namespace dao
