#pragma once

#include "support/OtherProgram.h"

#include <functional>
#include <sqlite3.h>

namespace tests {

/// Calls back before each statement of connections that are opened during its lifetime, so that another program can do
/// something between two of them.
class BeforeStatements {
public:
    explicit BeforeStatements(std::function<void(const QString& statement)> callBack)
    {
        before = std::move(callBack);
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(Watch));
    }
    ~BeforeStatements()
    {
        sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(Watch));
        before = nullptr;
    }
    BeforeStatements(const BeforeStatements&) = delete;
    BeforeStatements& operator=(const BeforeStatements&) = delete;

private:
    static int Watch(sqlite3* database, char**, const void*)
    {
        return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, Call, nullptr);
    }

    static int Call(unsigned, void*, void* statement, void*)
    {
        if (const auto called = std::exchange(before, nullptr)) { // not for the statements of the call itself
            called(QString::fromUtf8(sqlite3_sql(static_cast<sqlite3_stmt*>(statement))));
            before = called;
        }
        return 0;
    }

    static inline std::function<void(const QString&)> before;
};

/// Whether a table's rows are locked before they are written, as after an edit that locks, and not only by the write.
class LockProbe {
public:
    LockProbe(const QString& path, const QString& table)
        : other(path), statements([this, table](const QString& statement) {
              if (!statement.startsWith("update", Qt::CaseInsensitive) || !statement.contains(table))
                  return;
              ++writes;
              if (other.Run("begin immediate") != SQLITE_OK)
                  ++locks;
              else
                  other.Run("rollback");
          })
    {
        other.Run("pragma busy_timeout = 0");
    }

    int Writes() const { return writes; }
    int Locks() const { return locks; }

private:
    int writes = 0;
    int locks = 0;
    OtherProgram other;
    BeforeStatements statements;
};

} // namespace tests
