#pragma once

#include <QString>

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace tests {

/// A connection of another program to the same file.
class OtherProgram {
public:
    explicit OtherProgram(const QString& path) // a path, or a file: URI
    {
        EXPECT_EQ(
            sqlite3_open_v2(path.toUtf8().constData(), &database, SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI, nullptr),
            SQLITE_OK);
        sqlite3_busy_timeout(database, 2000);
    }
    ~OtherProgram() { sqlite3_close(database); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    int Run(const char* sql) { return sqlite3_exec(database, sql, nullptr, nullptr, nullptr); }

    QString Answer(const char* sql)
    {
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(database, sql, -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
        QString answer = "(no row)";
        if (sqlite3_step(statement) == SQLITE_ROW) {
            const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
            answer = text != nullptr ? QString::fromUtf8(text) : QString("(null)");
        }
        sqlite3_finalize(statement);
        return answer;
    }

private:
    sqlite3* database = nullptr;
};

} // namespace tests
