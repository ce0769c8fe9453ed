#pragma once

#include "platform/dao/StoredValue.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace dao {

struct CloseSqlite {
    void operator()(sqlite3* database) const noexcept;
    void operator()(sqlite3_stmt* statement) const noexcept;
};
/// A connection that closes itself.
using SqliteHandle = std::unique_ptr<sqlite3, CloseSqlite>;

/// Whether the system error means that there is no more room, on the disk or for this user.
bool IsDiskFull(int systemError);

/// Raises 61 with the name of the folder in which there is no more room.
[[noreturn]] void RaiseDiskFull(const QString& path);

/// Raises the run-time error of SQLite's result code; its message gives the detail.
[[noreturn]] void RaiseSqliteError(sqlite3* database, int code);

/// Every result code of SQLite passes here: does nothing for success, raises otherwise.
void Check(sqlite3* database, int code);

/// A prepared statement. Parameters are numbered from 1, columns from 0.
class Statement {
public:
    Statement() = default;
    /// Raises 3078 for an unknown table, 3061 for an unknown field, 3075 for what can't be read.
    Statement(sqlite3* database, std::string_view sql);
    /// Takes over a statement that was prepared.
    explicit Statement(sqlite3_stmt* statement) : prepared(statement) {}

    explicit operator bool() const { return prepared != nullptr; }
    sqlite3_stmt* Raw() const { return prepared.get(); }

    void Bind(int parameter, const Value& value);
    void Bind(int parameter, qint64 number);
    /// Binds the first parameters.
    void Bind(const std::vector<Value>& values);

    /// Goes to the next row; false at the end. An error resets the statement before it is raised.
    bool Step();
    void Reset() noexcept;
    /// Runs a statement that gives no rows, and resets it.
    void Run();

    /// A value of the current row; its text is valid until the next Step or Reset.
    StoredValue At(int column) const;
    qint64 WholeAt(int column) const;
    std::string TextAt(int column) const;

private:
    std::unique_ptr<sqlite3_stmt, CloseSqlite> prepared;
};

/// Resets a statement on every way out of a scope.
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
/// Runs statements one after the other, up to the first that fails.
void RunScript(sqlite3* database, const std::string& statements);
/// The first column of the first row; 0 when there is no row.
qint64 WholeAnswer(sqlite3* database, std::string_view sql);
std::string TextAnswer(sqlite3* database, std::string_view sql);

/// The name between double quotes, as SQLite reads it whatever its characters.
std::string Quoted(std::string_view name);

} // namespace dao
