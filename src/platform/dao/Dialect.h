#pragma once

#include "platform/dao/Catalog.h"

#include <QStringView>
#include <functional>

namespace dao {

/// What a statement of the screens comes to in SQLite's language.
struct Plan {
    enum class Kind : quint8 {
        Table,  ///< all rows of a table in the order of their keys: `sql` is empty
        Rows,   ///< rows of one table: the key, then all columns
        Answer, ///< single columns, counts and sums
        Change  ///< an update or delete
    };
    Kind kind = Kind::Answer;
    Table* table = nullptr;
    std::string sql;
    Statement statement;
    Columns answer; ///< Answer: names and types, known once it is prepared
};

/// Finds a table by name; null when there is none.
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
/// passes over the rows that can't be changed. Raises 3075 for what can't be read, 3078 for an unknown table, 3061 for
/// an unknown field.
Plan Translate(QStringView statement, const TableFinder& find, bool skipsFailures);

/// Translates a search condition over a table. Raises 3070 for an unknown field.
std::string TranslateCondition(QStringView condition, Table& table);

} // namespace dao
