#pragma once

#include "support/Files.h"

#include <QtEndian>
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

/// Makes a change that is in the log alone, as after a power cut.
inline void ChangeInLog(const QString& path, const char* sql)
{
    QByteArray file;
    QByteArray log;
    {
        OtherProgram other(path);
        ASSERT_EQ(other.Run("pragma journal_mode = wal"), SQLITE_OK);
        ASSERT_EQ(other.Run(sql), SQLITE_OK);
        file = BytesOf(path);
        log = BytesOf(path + "-wal");
    }
    WriteFile(path, file);
    WriteFile(path + "-wal", log);
}

/// Overwrites pages below the root of a table or index.
inline void DestroyLeaves(const QString& path, const QString& tree, const QList<int>& leaves)
{
    constexpr qsizetype pageSize = 4096;
    constexpr int cells = 12; // their places in the page, where the numbers of the pages below are
    const QString root = "select rootpage from sqlite_schema where name = '" + tree + "'";
    const qsizetype page = pageSize * (OtherProgram(path).Answer(qPrintable(root)).toInt() - 1);
    QByteArray bytes = BytesOf(path);
    for (const int leaf : leaves) {
        const qsizetype cell = page + qFromBigEndian<quint16>(bytes.constData() + page + cells + 2 * leaf);
        const qsizetype below = qFromBigEndian<quint32>(bytes.constData() + cell);
        bytes.replace(pageSize * (below - 1), pageSize, QByteArray(pageSize, '\xA5'));
    }
    WriteFile(path, bytes);
}

} // namespace tests
