#pragma once

#include "platform/dao/Sqlite.h"

#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace dao {

struct Column {
    std::string name;
    ColumnType type = ColumnType::Any;
    Datum initially; ///< what a new row holds unless told otherwise
};

/// The columns of a table or of a statement's answer.
class Columns {
public:
    void Add(Column column);
    int Count() const { return int(columns.size()); }
    const Column& operator[](int position) const { return columns[std::size_t(position)]; }
    /// The position of a column, without regard to case; -1 when there is none.
    int PositionOf(std::string_view name) const;

private:
    std::vector<Column> columns;
};

/// A search condition over one table, read once for all of its shape.
struct Criteria {
    std::string byKey; ///< tells for one key (the last place) whether its row meets the condition
    std::string scan;  ///< keys of the rows that meet it, between two keys (the last two places), in key order
};

/// What is known of a table, and the statements that every record set over it shares.
class Table {
public:
    Table(sqlite3* database, std::string_view storedName);

    std::string name;
    Columns columns;
    std::string key;      ///< the quoted name of the key as statements write it
    int keyColumn = -1;   ///< its position, -1 when the table has none of its own
    std::string rowParts; ///< key and all columns, as a select lists them

    /// The row of a key: the key, then all columns.
    Statement& RowByKey(sqlite3* database);
    Statement& KeyExists(sqlite3* database);
    void ReleaseStatements();

    std::unordered_map<std::u16string, Criteria> criteria;

private:
    void ReadColumns(sqlite3* database);
    Statement rowByKey;
    Statement keyExists;
};

/// The columns of a select's answer.
Columns AnswerColumns(const Statement& statement);

ColumnType TypeOfDeclaration(std::string_view declared);

/// The tables of a database, looked up once each.
class Catalog {
public:
    /// Null when there is no such table. Case counts for nothing. Stays where it is as long as the catalog.
    Table* Find(sqlite3* database, std::string_view name);
    /// To be called when a table was changed: the next Find reads it anew, sets that are open keep what they know.
    void Forget(std::string_view name);
    void ReleaseStatements();

private:
    std::deque<Table> tables;
    std::unordered_map<std::string, Table*> byName; // names as they were asked for
};

} // namespace dao
