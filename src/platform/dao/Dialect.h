#pragma once

#include "platform/dao/Catalog.h"

#include <QStringView>
#include <functional>

namespace dao {

/// A statement of the screens translated into SQLite's SQL.
struct Plan {
    enum class Kind : quint8 {
        Table,    ///< all rows of a table in the order of their keys: `sql` is empty
        Rows,     ///< rows of one table: the key, then all columns
        Snapshot, ///< single columns, counts and sums
        Change    ///< an update or delete
    };
    Kind kind = Kind::Snapshot;
    Table* table = nullptr;
    std::string sql;
    Statement statement;
    Columns columns; ///< Snapshot: names and types, known once it is prepared
};

/// Finds a table by name; null if there is none.
using TableFinder = std::function<Table*(std::string_view)>;

/// Translates one statement:
///
///     TABLE
///     select * from TABLE [where CONDITION] [order by FIELD [asc | desc], ..]
///     select FIELD | FUNCTION(FIELD | *) [as NAME], .. from TABLE [where CONDITION] [order by ..]
///     update TABLE set FIELD = LITERAL, .. [where CONDITION]
///     delete [*] from TABLE [where CONDITION]
///
/// A condition compares fields with literals (= < > <= >= <> like), joined by "and". With `skipsFailures` an update
/// skips the rows that can't be changed. Raises 3075 for a syntax error, 3078 for an unknown table, 3061 for an unknown
/// field.
Plan Translate(QStringView statement, const TableFinder& find, bool skipsFailures);

} // namespace dao
