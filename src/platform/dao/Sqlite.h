#pragma once

#include "platform/dao/Datum.h"

#include <memory>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace dao {

struct CloseStore {
    void operator()(sqlite3* database) const noexcept;
};
/// A store's handle that closes itself.
using StoreHandle = std::unique_ptr<sqlite3, CloseStore>;

/// Whether the system's answer `systemError` says that there is no more room, on the disk or for this user.
bool SaysDiskFull(int systemError);

/// Raises the run-time error that stands for the store's answer `code`; its message gives the detail.
[[noreturn]] void RaiseStoreError(sqlite3* database, int code);

/// The one gate that every answer of the store passes: does nothing for success, raises otherwise.
void Check(sqlite3* database, int code);

/// A prepared statement. Numbering of places starts at 1, of columns at 0.
class Statement {
public:
    Statement() = default;
    /// Raises 3078 for an unknown table, 3061 for an unknown field, 3075 for what can't be read.
    Statement(sqlite3* database, std::string_view sql);
    ~Statement();
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;

    explicit operator bool() const { return prepared != nullptr; }
    sqlite3_stmt* Raw() const { return prepared; }

    /// The datum's text is not copied: it must stand still until Reset.
    void Bind(int place, const Datum& datum);
    void Bind(int place, qint64 number);

    /// Goes to the next row; false at the end. An error resets the statement before it is raised.
    bool Step();
    void Reset() noexcept;
    /// Runs a statement that gives no rows, and resets it.
    void Run();

    qint64 WholeAt(int column) const;
    std::string TextAt(int column) const;

private:
    sqlite3_stmt* prepared = nullptr;
};

/// Resets a statement on every way out of a scope.
class ResetAtEnd {
public:
    explicit ResetAtEnd(Statement& running) : statement(running) {}
    ~ResetAtEnd() { statement.Reset(); }
    ResetAtEnd(const ResetAtEnd&) = delete;
    ResetAtEnd& operator=(const ResetAtEnd&) = delete;

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

/// The name between double quotes, as the store reads it whatever its characters.
std::string Quoted(std::string_view name);

} // namespace dao
