#include "platform/store/Sqlite.h"

#include "platform/host/SystemErrors.h"
#include "platform/store/Errors.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <utility>

namespace store {
namespace {

[[noreturn]] void RaiseUnreadable(const QString& message)
{
    constexpr std::pair<const char*, Error> names[] = {{"no such table:", Error::UnknownTable},
                                                       {"no such column:", Error::UnknownColumn},
                                                       {"no such function:", Error::UnknownFunction}};
    for (const auto& [lead, error] : names) {
        if (message.startsWith(lead))
            throw RuntimeError(error, message.section(':', 1).trimmed());
    }
    throw RuntimeError(Error::SyntaxError, message);
}

/// Result codes whose error needs no further detail.
constexpr std::pair<int, Error> ErrorsOfCodes[] = {
    {SQLITE_BUSY, Error::Locked},
    {SQLITE_LOCKED, Error::Locked},
    {SQLITE_PROTOCOL, Error::Locked},
    {SQLITE_READONLY, Error::ReadOnly},
    {SQLITE_PERM, Error::ReadOnly},
    {SQLITE_CORRUPT, Error::DamagedDatabase},
    {SQLITE_NOTADB, Error::UnrecognizedFormat},
    {SQLITE_FULL, Error::DiskFull},
    {SQLITE_CANTOPEN, Error::FileNotOpened},
    {SQLITE_NOMEM, Error::OutOfMemory},
    {SQLITE_TOOBIG, Error::FieldTooSmall},
    {SQLITE_MISMATCH, Error::ConversionFailed},
    {SQLITE_CONSTRAINT, Error::DuplicateKey},
};

Error ErrorOfCode(sqlite3* database, int code)
{
    // SQLite reports a full disk (when -shm can't grow) or an exceeded quota like this.
    if (code == SQLITE_IOERR && database != nullptr &&
        host::ObstacleOf(sqlite3_system_errno(database)) == host::Obstacle::FullDisk)
        return Error::DiskFull;
    const auto* const known = std::ranges::find(ErrorsOfCodes, code, &std::pair<int, Error>::first);
    return known != std::end(ErrorsOfCodes) ? known->second : Error::DiskOrNetwork;
}

} // namespace

void CloseSqlite::operator()(sqlite3* database) const noexcept
{
    sqlite3_close_v2(database);
}

void CloseSqlite::operator()(sqlite3_stmt* statement) const noexcept
{
    sqlite3_finalize(statement);
}

void RaiseSqliteError(sqlite3* database, int code)
{
    if ((code & 0xff) == SQLITE_ERROR)
        RaiseUnreadable(QString::fromUtf8(sqlite3_errmsg(database)));
    const Error error = ErrorOfCode(database, code & 0xff);
    const char* const file = database != nullptr ? sqlite3_db_filename(database, "main") : nullptr;
    if (error == Error::DiskFull && file != nullptr && *file != '\0')
        host::RaiseDiskFull(QString::fromUtf8(file));
    throw RuntimeError(error);
}

void Check(sqlite3* database, int code)
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        RaiseSqliteError(database, code);
}

Statement::Statement(sqlite3* database, std::string_view sql)
{
    sqlite3_stmt* statement = nullptr;
    Check(database, sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                       &statement, nullptr));
    prepared.reset(statement);
}

void Statement::Bind(int parameter, const Value& value)
{
    int code = SQLITE_OK;
    if (const auto* const whole = std::get_if<qint64>(&value.Raw())) {
        code = sqlite3_bind_int64(Raw(), parameter, *whole);
    } else if (const auto* const real = std::get_if<double>(&value.Raw())) {
        code = sqlite3_bind_double(Raw(), parameter, *real);
    } else if (const auto* const text = std::get_if<QString>(&value.Raw())) {
        std::array<char, 32> plain{};
        const bool isPlain = std::size_t(text->size()) <= plain.size() &&
                             std::ranges::all_of(*text, [](QChar each) { return each <= u'\x7f'; });
        if (isPlain) { // as dates and card numbers are
            std::ranges::transform(*text, plain.begin(), [](QChar each) { return char(each.unicode()); });
            code = sqlite3_bind_text(Raw(), parameter, plain.data(), int(text->size()), SQLITE_TRANSIENT);
            return Check(sqlite3_db_handle(Raw()), code);
        }
        const QByteArray utf8 = text->toUtf8();
        code = sqlite3_bind_text(Raw(), parameter, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
    } else {
        code = sqlite3_bind_null(Raw(), parameter);
    }
    Check(sqlite3_db_handle(Raw()), code);
}

void Statement::Bind(int parameter, qint64 number)
{
    Check(sqlite3_db_handle(Raw()), sqlite3_bind_int64(Raw(), parameter, number));
}

void Statement::Bind(int parameter, const Statement& row, int column)
{
    Check(sqlite3_db_handle(Raw()), sqlite3_bind_value(Raw(), parameter, sqlite3_column_value(row.Raw(), column)));
}

void Statement::Bind(const std::vector<Value>& values)
{
    int parameter = 0;
    for (const Value& value : values)
        Bind(++parameter, value);
}

bool Statement::Step()
{
    const int code = sqlite3_step(Raw());
    if (code == SQLITE_ROW)
        return true;
    if (code == SQLITE_DONE)
        return false;
    sqlite3* const database = sqlite3_db_handle(Raw());
    sqlite3_reset(Raw()); // returns the code again and keeps the message
    RaiseSqliteError(database, code);
}

void Statement::Reset() noexcept
{
    sqlite3_reset(Raw());
}

void Statement::Run()
{
    const ResetAtEnd reset(*this);
    while (Step()) {
    }
}

StoredValue Statement::At(int column) const
{
    sqlite3_value* const value = sqlite3_column_value(Raw(), column);
    StoredValue stored;
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        break;
    case SQLITE_INTEGER:
        stored.kind = StoredValue::Kind::Whole;
        stored.whole = sqlite3_value_int64(value);
        break;
    case SQLITE_FLOAT:
        stored.kind = StoredValue::Kind::Real;
        stored.real = sqlite3_value_double(value);
        break;
    default:
        stored.kind = StoredValue::Kind::Text;
        stored.text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        stored.length = stored.text != nullptr ? sqlite3_value_bytes(value) : 0;
    }
    return stored;
}

qint64 Statement::WholeAt(int column) const
{
    return sqlite3_column_int64(Raw(), column);
}

std::string Statement::TextAt(int column) const
{
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(Raw(), column));
    return text != nullptr ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(Raw(), column)))
                           : std::string();
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

} // namespace store
