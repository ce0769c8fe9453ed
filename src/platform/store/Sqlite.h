#pragma once

#include "platform/store/StoredValue.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace store {

struct CloseSqlite {
    void operator()(sqlite3* database) const noexcept;
    void operator()(sqlite3_stmt* statement) const noexcept;
};
/// An owning connection handle.
using SqliteHandle = std::unique_ptr<sqlite3, CloseSqlite>;

/// Raises the run-time error for SQLite's result code, with details from SQLite's message.
[[noreturn]] void RaiseSqliteError(sqlite3* database, int code);

/// Checks a result code of SQLite: raises unless it means success.
void Check(sqlite3* database, int code);

/// A prepared statement. Parameters are numbered from 1, columns from 0.
class Statement {
public:
    Statement() = default;
    /// Raises 3078 for an unknown table, 3061 for an unknown field, 3075 for a syntax error.
    Statement(sqlite3* database, std::string_view sql);
    /// Takes ownership of a prepared statement.
    explicit Statement(sqlite3_stmt* statement) : prepared(statement) {}

    explicit operator bool() const { return prepared != nullptr; }
    sqlite3_stmt* Raw() const { return prepared.get(); }

    void Bind(int parameter, const Value& value);
    void Bind(int parameter, qint64 number);
    /// Binds a value of another statement's current row, as it is stored.
    void Bind(int parameter, const Statement& row, int column);
    /// Binds the parameters from 1 on.
    void Bind(const std::vector<Value>& values);

    /// Moves to the next row; false at the end. On an error the statement is reset first.
    bool Step();
    void Reset() noexcept;
    /// Runs a statement without result rows, and resets it.
    void Run();

    /// A value of the current row; its text is valid until the next Step or Reset.
    StoredValue At(int column) const;
    qint64 WholeAt(int column) const;
    std::string TextAt(int column) const;

private:
    std::unique_ptr<sqlite3_stmt, CloseSqlite> prepared;
};

/// Resets a statement at the end of the scope.
class ResetAtEnd {
public:
    explicit ResetAtEnd(Statement& running) : statement(running) {}
    ~ResetAtEnd() { statement.Reset(); }
    Q_DISABLE_COPY_MOVE(ResetAtEnd)

private:
    Statement& statement;
};

/// Prepares and runs a statement once.
void RunOnce(sqlite3* database, std::string_view sql);
/// Runs several statements; stops at the first that fails.
void RunScript(sqlite3* database, const std::string& statements);
/// The first column of the first row; 0 or empty if there is no row.
qint64 WholeAnswer(sqlite3* database, std::string_view sql);
std::string TextAnswer(sqlite3* database, std::string_view sql);

/// The name as a quoted SQL identifier.
std::string Quoted(std::string_view name);

} // namespace store
