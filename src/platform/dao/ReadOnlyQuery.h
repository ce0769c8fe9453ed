#pragma once

#include "platform/dao/Store.h"

#include <QStringList>
#include <functional>
#include <vector>

namespace dao {

/// The rows of a query.
struct RowTable {
    QStringList fields;
    std::vector<Value> cells;

    int RowCount() const
    {
        return fields.isEmpty() ? 0 : static_cast<int>(cells.size() / static_cast<std::size_t>(fields.size()));
    }
    const Value& Cell(int row, int field) const
    {
        return cells[static_cast<std::size_t>(row) * static_cast<std::size_t>(fields.size()) +
                     static_cast<std::size_t>(field)];
    }
    /// The position of a field, case-insensitive; -1 if there is none.
    int FieldAt(const QString& name) const;
};

/// A refused statement; `line`, from 0, is the line of the error in its text.
class StatementError : public basic::RuntimeError {
public:
    StatementError(basic::RuntimeError reason, int mistakeLine) : RuntimeError(std::move(reason)), line(mistakeLine) {}
    int Line() const { return line; }

private:
    int line;
};

/// Limits of one select, and a way to cancel it.
struct QueryLimits {
    int rows = 0;
    qsizetype bytes = qsizetype{128} << 20; ///< memory for all rows
    std::function<bool()> isGivenUp = {};   ///< called from time to time while the select runs; must not throw
};

/// Reads a database through its own read-only connection, in one snapshot taken at the first read.
///
/// Statements are in SQLite's SQL, written by users in report templates: only select is allowed.
class ReadOnlyQuery {
public:
    /// Raises 3024 when the file is missing, 3343 when it isn't a database, 3049 when it is damaged.
    explicit ReadOnlyQuery(const QString& path);

    /// Runs one select with parameters ?1, ?2 ... . Date columns are read as dd/mm/yyyy.
    ///
    /// Raises a StatementError: 3078 for an unknown table, 3061 for an unknown field, 3027 for a statement that isn't a
    /// select, 3075 for a syntax error or a second statement, 3035 for exceeded limits or a row of more than a
    /// megabyte, 3059 when given up or running longer than half a minute. Its description gives the author of the
    /// statement the reason.
    RowTable Read(const QString& select, const std::vector<Value>& parameters, const QueryLimits& limits) const;

    /// The fields of a select; raises the errors that Read raises before running it.
    QStringList FieldsOf(const QString& select) const;

private:
    store::SqliteHandle database;
};

} // namespace dao
