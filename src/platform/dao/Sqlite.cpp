#include "platform/dao/Sqlite.h"

#include "platform/basic/RuntimeError.h"

#include <sqlite3.h>

#include <cerrno>
#include <utility>

namespace dao {
namespace {

/// What stands behind `lead` in the store's message; empty when the message starts otherwise.
QString DetailAfter(const QString& message, const char* lead)
{
    return message.startsWith(lead) ? message.mid(QString(lead).size()).trimmed() : QString();
}

[[noreturn]] void RaiseUnreadable(const QString& message)
{
    if (const QString table = DetailAfter(message, "no such table:"); !table.isEmpty())
        throw basic::RuntimeError(basic::Error::UnknownTable, table);
    if (const QString field = DetailAfter(message, "no such column:"); !field.isEmpty())
        throw basic::RuntimeError(basic::Error::UnknownColumn, field);
    if (message.contains("has no column named"))
        throw basic::RuntimeError(basic::Error::UnknownColumn, message.section(' ', -1));
    if (const QString name = DetailAfter(message, "no such function:"); !name.isEmpty())
        throw basic::RuntimeError(basic::Error::UnknownFunction, name);
    throw basic::RuntimeError(basic::Error::SyntaxError, message);
}

basic::Error ErrorOfConstraint(int extendedCode)
{
    if (extendedCode == SQLITE_CONSTRAINT_NOTNULL)
        return basic::Error::NullNotAllowed;
    if (extendedCode == SQLITE_CONSTRAINT_CHECK)
        return basic::Error::ValidationFailed;
    return basic::Error::DuplicateKey;
}

} // namespace

bool SaysDiskFull(int systemError)
{
    return systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
}

void CloseStore::operator()(sqlite3* database) const noexcept
{
    sqlite3_close_v2(database);
}

void RaiseStoreError(sqlite3* database, int code)
{
    const QString message = QString::fromUtf8(database != nullptr ? sqlite3_errmsg(database) : sqlite3_errstr(code));
    const int extended = database != nullptr ? sqlite3_extended_errcode(database) : code;
    switch (code & 0xff) {
    case SQLITE_ERROR:
        RaiseUnreadable(message);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        throw basic::RuntimeError(basic::Error::Locked);
    case SQLITE_READONLY:
    case SQLITE_PERM:
        throw basic::RuntimeError(basic::Error::ReadOnly);
    case SQLITE_CORRUPT:
        throw basic::RuntimeError(basic::Error::DamagedDatabase);
    case SQLITE_NOTADB:
        throw basic::RuntimeError(basic::Error::UnrecognizedFormat);
    case SQLITE_FULL:
        throw basic::RuntimeError(basic::Error::DiskFull);
    case SQLITE_CANTOPEN:
        throw basic::RuntimeError(basic::Error::FileNotOpened);
    case SQLITE_NOMEM:
        throw basic::RuntimeError(basic::Error::OutOfMemory);
    case SQLITE_IOERR: // by this the store tells that there is no room for the log's index, or that a quota is used up
        throw basic::RuntimeError(database != nullptr && SaysDiskFull(sqlite3_system_errno(database))
                                      ? basic::Error::DiskFull
                                      : basic::Error::DiskOrNetwork);
    case SQLITE_TOOBIG:
        throw basic::RuntimeError(basic::Error::FieldTooSmall);
    case SQLITE_MISMATCH:
        throw basic::RuntimeError(basic::Error::ConversionFailed);
    case SQLITE_CONSTRAINT:
        throw basic::RuntimeError(ErrorOfConstraint(extended));
    default:
        throw basic::RuntimeError(basic::Error::DiskOrNetwork);
    }
}

void Check(sqlite3* database, int code)
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        RaiseStoreError(database, code);
}

Statement::Statement(sqlite3* database, std::string_view sql)
{
    Check(database,
          sqlite3_prepare_v3(database, sql.data(), int(sql.size()), SQLITE_PREPARE_PERSISTENT, &prepared, nullptr));
}

Statement::~Statement()
{
    sqlite3_finalize(prepared);
}

Statement::Statement(Statement&& other) noexcept : prepared(std::exchange(other.prepared, nullptr)) {}

Statement& Statement::operator=(Statement&& other) noexcept
{
    std::swap(prepared, other.prepared);
    return *this;
}

void Statement::Bind(int place, const Datum& datum)
{
    int code = SQLITE_OK;
    switch (datum.kind) {
    case Kind::Null:
        code = sqlite3_bind_null(prepared, place);
        break;
    case Kind::Whole:
        code = sqlite3_bind_int64(prepared, place, datum.whole);
        break;
    case Kind::Real:
        code = sqlite3_bind_double(prepared, place, datum.real);
        break;
    case Kind::Text:
        code = sqlite3_bind_text(prepared, place, datum.text.data(), int(datum.text.size()), SQLITE_STATIC);
        break;
    }
    if (code != SQLITE_OK)
        RaiseStoreError(sqlite3_db_handle(prepared), code);
}

void Statement::Bind(int place, qint64 number)
{
    Check(sqlite3_db_handle(prepared), sqlite3_bind_int64(prepared, place, number));
}

bool Statement::Step()
{
    const int code = sqlite3_step(prepared);
    if (code == SQLITE_ROW)
        return true;
    if (code == SQLITE_DONE)
        return false;
    sqlite3* const database = sqlite3_db_handle(prepared);
    sqlite3_reset(prepared); // gives the code again, so that the message stays
    RaiseStoreError(database, code);
}

void Statement::Reset() noexcept
{
    sqlite3_reset(prepared);
}

void Statement::Run()
{
    const ResetAtEnd reset(*this);
    while (Step()) {
    }
}

qint64 Statement::WholeAt(int column) const
{
    return sqlite3_column_int64(prepared, column);
}

std::string Statement::TextAt(int column) const
{
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, column));
    return text != nullptr ? std::string(text, std::size_t(sqlite3_column_bytes(prepared, column))) : std::string();
}

void RunOnce(sqlite3* database, std::string_view sql)
{
    Statement(database, sql).Run();
}

void RunScript(sqlite3* database, const std::string& statements)
{
    Check(database, sqlite3_exec(database, statements.c_str(), nullptr, nullptr, nullptr));
}

qint64 WholeAnswer(sqlite3* database, std::string_view sql)
{
    Statement statement(database, sql);
    return statement.Step() ? statement.WholeAt(0) : 0;
}

std::string TextAnswer(sqlite3* database, std::string_view sql)
{
    Statement statement(database, sql);
    return statement.Step() ? statement.TextAt(0) : std::string();
}

std::string Quoted(std::string_view name)
{
    std::string quoted = "\"";
    for (const char character : name) {
        quoted += character;
        if (character == '"')
            quoted += '"';
    }
    return quoted += '"';
}

} // namespace dao
