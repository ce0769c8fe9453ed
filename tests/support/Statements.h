#pragma once

#include <QString>

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

} // namespace tests
