#pragma once

#include "platform/dao/Catalog.h"

#include <QStringView>
#include <functional>

namespace dao {

/// What a statement of the screens comes to in the store's own language.
struct Plan {
    enum class Sort : quint8 {
        Rows,   ///< rows of one table: a list of keys with live rows
        Answer, ///< anything else that is read
        Change, ///< update
        Growth, ///< insert
        Removal ///< delete
    };
    Sort sort = Sort::Answer;
    Table* table = nullptr;     ///< the table of the rows, or the one that is changed
    std::string sql;            ///< Rows: the key, then all columns
    std::string keysSql;        ///< Rows: the same without the columns
    bool isConditional = false; ///< Rows: a part of the table
    bool whole = false;         ///< Rows: all of the table, in key order

    Columns answer; ///< Answer: names and types, known once it is prepared
    Statement statement;
    Statement keysStatement;

    void ReleaseStatements();
};

/// Finds a table by name; null when there is none.
using TableFinder = std::function<Table*(std::string_view)>;

/// Translates a statement, or a table's name alone. With `skipsFailures` a change passes over the rows that can't be
/// changed. Raises 3075 for what can't be read or isn't a select, insert, update or delete, 3078 for an unknown table,
/// 3085 for an unknown function.
Plan Translate(QStringView statement, const TableFinder& find, bool skipsFailures);

/// Translates a search condition over a table.
Criteria TranslateCriteria(QStringView condition, Table& table);

} // namespace dao
