#pragma once

#include "platform/basic/RuntimeError.h"
#include "platform/dao/Sqlite.h"

#include <QStringList>
#include <functional>
#include <vector>

namespace dao {

/// The rows of a query, row by row.
struct RowTable {
    QStringList fields;
    std::vector<Value> cells;

    int RowCount() const { return fields.isEmpty() ? 0 : int(cells.size() / std::size_t(fields.size())); }
    const Value& Cell(int row, int field) const
    {
        return cells[std::size_t(row) * std::size_t(fields.size()) + std::size_t(field)];
    }
    /// The place of a field, without regard to case; -1 when there is none.
    int FieldAt(const QString& name) const;
};

/// A statement was refused; `line` of its text, from 0, is where the mistake shows.
class StatementError : public basic::RuntimeError {
public:
    StatementError(basic::RuntimeError reason, int mistakeLine) : RuntimeError(std::move(reason)), line(mistakeLine) {}
    int Line() const { return line; }

private:
    int line;
};

/// How much one select may give, and who may give it up.
struct QueryLimits {
    int rows = 0;
    qsizetype bytes = qsizetype{128} << 20; ///< of memory, for all rows together
    std::function<bool()> isGivenUp = {};   ///< asked now and then while the select runs; raises nothing
};

/// Reads a database through a connection of its own that can't write, and at one moment: everything that one object
/// reads is what stood there at the first reading, whatever is written meanwhile.
///
/// Statements are in SQLite's language, from people who write report templates: they may select and nothing else.
class ReadOnlyQuery {
public:
    /// Raises 3024 when the file is missing, 3343 when it is no database, 3049 when it is damaged.
    explicit ReadOnlyQuery(const QString& path);

    /// Runs one select with its parameters ?1, ?2 ... . A field of a date column reads as dd/mm/yyyy.
    ///
    /// Raises a StatementError: 3078 for an unknown table, 3061 for an unknown field, 3027 for a statement that isn't a
    /// select, 3075 for one that can't be read or that others follow, 3035 for more than the limits or a row of more
    /// than a megabyte, 3059 for one that is given up or runs longer than half a minute. Its description gives the
    /// reason in words for whoever wrote the statement.
    RowTable Read(const QString& select, const std::vector<Value>& parameters, const QueryLimits& limits) const;

    /// The fields that a select would give; raises what Read raises before it runs.
    QStringList FieldsOf(const QString& select) const;

private:
    SqliteHandle database;
};

} // namespace dao
