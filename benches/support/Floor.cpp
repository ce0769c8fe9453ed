#include "support/Floor.h"

#include <QFile>
#include <cstdio>
#include <cstdlib>
#include <sqlite3.h>

namespace bench {

void Require(bool holds, const QString& what)
{
    if (holds)
        return;
    std::fprintf(stderr, "bench: %s\n", qPrintable(what));
    std::exit(2);
}

PlainDatabase::PlainDatabase(const QString& path)
{
    Require(sqlite3_open(path.toUtf8().constData(), &handle) == SQLITE_OK, "no database " + path);
    Run("PRAGMA journal_mode = WAL");
    Run("PRAGMA synchronous = FULL");
}

PlainDatabase::~PlainDatabase()
{
    sqlite3_close_v2(handle);
}

void PlainDatabase::Run(const QString& statements)
{
    const int result = sqlite3_exec(handle, statements.toUtf8().constData(), nullptr, nullptr, nullptr);
    Require(result == SQLITE_OK, statements + ": " + sqlite3_errmsg(handle));
}

void PlainDatabase::CopyChecked(const QString& target)
{
    QFile::remove(target);
    sqlite3* copy = nullptr;
    Require(sqlite3_open(target.toUtf8().constData(), &copy) == SQLITE_OK, "no copy " + target);
    sqlite3_backup* backup = sqlite3_backup_init(copy, "main", handle, "main");
    Require(backup != nullptr && sqlite3_backup_step(backup, -1) == SQLITE_DONE, "the copy failed");
    sqlite3_backup_finish(backup);
    Require(sqlite3_exec(copy, "PRAGMA integrity_check", nullptr, nullptr, nullptr) == SQLITE_OK, "the check failed");
    sqlite3_close(copy);
}

PlainStatement::PlainStatement(const PlainDatabase& database, const QString& text)
{
    const int result = sqlite3_prepare_v2(database.handle, text.toUtf8().constData(), -1, &statement, nullptr);
    Require(result == SQLITE_OK, text + ": " + sqlite3_errmsg(database.handle));
}

PlainStatement::~PlainStatement()
{
    sqlite3_finalize(statement);
}

PlainStatement& PlainStatement::Bind(int parameter, qint64 number)
{
    sqlite3_bind_int64(statement, parameter, number);
    return *this;
}

PlainStatement& PlainStatement::Bind(int parameter, double number)
{
    sqlite3_bind_double(statement, parameter, number);
    return *this;
}

PlainStatement& PlainStatement::Bind(int parameter, const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    sqlite3_bind_text(statement, parameter, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
    return *this;
}

bool PlainStatement::Step()
{
    const int result = sqlite3_step(statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        Require(false, sqlite3_errmsg(sqlite3_db_handle(statement)));
    return result == SQLITE_ROW;
}

void PlainStatement::Reset()
{
    sqlite3_reset(statement);
}

void PlainStatement::Run()
{
    Step();
    Reset();
}

bool PlainStatement::IsNull(int column) const
{
    return sqlite3_column_type(statement, column) == SQLITE_NULL;
}

qint64 PlainStatement::Number(int column) const
{
    return sqlite3_column_int64(statement, column);
}

double PlainStatement::Real(int column) const
{
    return sqlite3_column_double(statement, column);
}

QString PlainStatement::Text(int column) const
{
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                             sqlite3_column_bytes(statement, column));
}

} // namespace bench
