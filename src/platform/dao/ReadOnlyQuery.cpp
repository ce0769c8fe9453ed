#include "platform/dao/ReadOnlyQuery.h"

#include "platform/dao/Sqlite.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <chrono>
#include <memory>
#include <sqlite3.h>

namespace dao {
namespace {

using basic::Error;
using Clock = std::chrono::steady_clock;

constexpr auto LongestRun = std::chrono::seconds(30);
constexpr int StepsBetweenLooks = 100'000;
constexpr int BusyTimeout = 5000;   // ms
constexpr int LargestRow = 1 << 20; // bytes, of a row or a single value

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Prepared = std::unique_ptr<sqlite3_stmt, Finalize>;

/// Lets a statement read tables and call functions, and nothing else.
int AllowReading(void*, int action, const char*, const char* function, const char*, const char*)
{
    switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_RECURSIVE:
        return SQLITE_OK;
    case SQLITE_FUNCTION:
        return QByteArrayView(function) == "load_extension" ? SQLITE_DENY : SQLITE_OK;
    default:
        return SQLITE_DENY;
    }
}

/// Holds the authorizer in force for the preparing of one statement.
class ReadingOnly {
public:
    explicit ReadingOnly(sqlite3* connection) : database(connection)
    {
        sqlite3_set_authorizer(database, AllowReading, nullptr);
    }
    ~ReadingOnly() { sqlite3_set_authorizer(database, nullptr, nullptr); }
    ReadingOnly(const ReadingOnly&) = delete;
    ReadingOnly& operator=(const ReadingOnly&) = delete;

private:
    sqlite3* database;
};

/// Ends a statement that runs past its time or is given up.
class TimeLimit {
public:
    TimeLimit(sqlite3* connection, const std::function<bool()>& givenUp)
        : database(connection), end(Clock::now() + LongestRun), isGivenUp(givenUp)
    {
        sqlite3_progress_handler(database, StepsBetweenLooks, IsOver, this);
    }
    ~TimeLimit() { sqlite3_progress_handler(database, 0, nullptr, nullptr); }
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

private:
    static int IsOver(void* self)
    {
        const auto& limit = *static_cast<TimeLimit*>(self);
        return Clock::now() > limit.end || (limit.isGivenUp && limit.isGivenUp()) ? 1 : 0;
    }

    sqlite3* database;
    Clock::time_point end;
    const std::function<bool()>& isGivenUp;
};

const auto TooLargeRow = QStringLiteral("une ligne a plus d'un mégaoctet");

struct Wording {
    const char* message; ///< pattern of the store's message
    Error error;
    const char* reason; ///< with %1 for what the pattern captures
};

constexpr Wording wordings[] = {
    {"^no such table: (.*)", Error::UnknownTable, "table inconnue « %1 »"},
    {"^no such column: (.*)", Error::UnknownColumn, "champ inconnu « %1 »"},
    {"^ambiguous column name: (.*)", Error::AmbiguousColumn,
     "le champ « %1 » est dans plusieurs tables : écrire Table.%1"},
    {"^no such function: (.*)", Error::UnknownFunction, "fonction inconnue « %1 »"},
    {"^near \"(.*)\": syntax error", Error::SyntaxError, "erreur de syntaxe près de « %1 »"},
    {"^incomplete input", Error::SyntaxError, "interrogation incomplète"},
    {"^unrecognized token: \"?(.*?)\"?$", Error::SyntaxError, "signe inattendu « %1 »"},
    {"^not authorized|is prohibited", Error::ReadOnly, "seul « select » est permis"},
    {"^wrong number of arguments to function (.*)\\(\\)", Error::SyntaxError,
     "nombre d'arguments incorrect pour la fonction « %1 »"},
    {"^misuse of .*?(\\w+)\\(\\)", Error::SyntaxError, "la fonction « %1 » ne peut pas être employée ici"},
    {"^misuse of aggregate: (\\w+)", Error::SyntaxError, "la fonction « %1 » ne peut pas être employée ici"},
    {"^no such window: (.*)", Error::SyntaxError, "fenêtre inconnue « %1 »"},
    {"^circular reference: (.*)", Error::SyntaxError, "« %1 » est défini par lui-même"},
    {"ORDER BY term", Error::SyntaxError, "« order by » nomme un champ que « select » ne donne pas"},
    {"^SELECTs to the left and right of", Error::SyntaxError,
     "les « select » réunis n'ont pas le même nombre de champs"},
    {"^sub-select returns|^row value misused", Error::SyntaxError, "une valeur est attendue et non plusieurs"},
    {"^no tables specified", Error::SyntaxError, "« select * » sans table"},
    {"HAVING", Error::SyntaxError, "« having » sans « group by »"},
    {"too large|too many|stack overflow|^at most", Error::SyntaxError, "l'interrogation est trop compliquée"},
};

StatementError Refusal(Error error, const QString& reason, int line = 0)
{
    return {basic::RuntimeError::Described(error, reason), line};
}

/// The line, from 0, of the mistake that the store has just told; `name` is looked for where it tells no place.
int LineOfMistake(sqlite3* database, const QByteArray& sql, const QString& name)
{
    qsizetype offset = sqlite3_error_offset(database);
    if (offset < 0 && !name.isEmpty())
        offset = QString::fromUtf8(sql).indexOf(QRegularExpression("\\b" + QRegularExpression::escape(name) + "\\b",
                                                                   QRegularExpression::CaseInsensitiveOption));
    return int(sql.first(std::max<qsizetype>(offset, 0)).count('\n'));
}

[[noreturn]] void RaiseRefusal(sqlite3* database, int code, const QByteArray& sql)
{
    const int primary = code & 0xff;
    if (primary == SQLITE_INTERRUPT)
        throw Refusal(Error::QueryTimeout, "l'interrogation dure plus d'une demi-minute");
    if (primary == SQLITE_TOOBIG)
        throw Refusal(Error::TooManyRows, TooLargeRow);
    if (primary != SQLITE_ERROR && primary != SQLITE_AUTH)
        RaiseStoreError(database, code);

    const QString message = QString::fromUtf8(sqlite3_errmsg(database));
    for (const Wording& wording : wordings) {
        const auto match = QRegularExpression(QString::fromUtf8(wording.message)).match(message);
        if (match.hasMatch())
            throw Refusal(wording.error, QString::fromUtf8(wording.reason).replace("%1", match.captured(1)),
                          LineOfMistake(database, sql, match.captured(1)));
    }
    throw Refusal(Error::SyntaxError, "SQLite refuse cette interrogation", LineOfMistake(database, sql, {}));
}

/// Blanks, semicolons and comments may follow a statement; another statement may not.
bool HasStatement(sqlite3* database, const char* text)
{
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v2(database, text, -1, &raw, nullptr);
    const Prepared following(raw);
    return code != SQLITE_OK || following != nullptr;
}

Prepared Prepare(sqlite3* database, const QByteArray& sql, std::size_t valueCount)
{
    const ReadingOnly reading(database);
    sqlite3_stmt* raw = nullptr;
    const char* tail = nullptr;
    const int code = sqlite3_prepare_v2(database, sql.constData(), -1, &raw, &tail);
    Prepared statement(raw);
    if (code != SQLITE_OK)
        RaiseRefusal(database, code, sql);
    if (!statement)
        throw Refusal(Error::SyntaxError, "l'interrogation est vide");
    if (HasStatement(database, tail))
        throw Refusal(Error::SyntaxError, "une seule interrogation est permise",
                      int(std::count(sql.constData(), tail, '\n')));
    if (sqlite3_stmt_readonly(raw) == 0 || sqlite3_stmt_isexplain(raw) != 0)
        throw Refusal(Error::ReadOnly, "seul « select » est permis");
    if (sqlite3_bind_parameter_count(raw) > int(valueCount))
        throw Refusal(Error::SyntaxError, "l'interrogation attend une valeur (?) que rien ne donne");
    return statement;
}

void Bind(sqlite3* database, sqlite3_stmt* statement, const std::vector<Value>& parameters)
{
    for (int place = 0; place < sqlite3_bind_parameter_count(statement); ++place) {
        const Value::Held& held = parameters[std::size_t(place)].Raw();
        int code = SQLITE_OK;
        if (const auto* whole = std::get_if<qint64>(&held))
            code = sqlite3_bind_int64(statement, place + 1, *whole);
        else if (const auto* real = std::get_if<double>(&held))
            code = sqlite3_bind_double(statement, place + 1, *real);
        else if (const auto* text = std::get_if<QString>(&held))
            code = sqlite3_bind_text(statement, place + 1, text->toUtf8().constData(), -1, SQLITE_TRANSIENT);
        Check(database, code);
    }
}

Seen SeenAt(sqlite3_stmt* statement, int column)
{
    Seen seen;
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
        break;
    case SQLITE_INTEGER:
        seen.kind = Kind::Whole;
        seen.whole = sqlite3_column_int64(statement, column);
        break;
    case SQLITE_FLOAT:
        seen.kind = Kind::Real;
        seen.real = sqlite3_column_double(statement, column);
        break;
    default:
        seen.kind = Kind::Text;
        seen.text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        seen.length = sqlite3_column_bytes(statement, column);
    }
    return seen;
}

std::vector<ColumnType> TypesOf(sqlite3_stmt* statement)
{
    std::vector<ColumnType> types;
    for (int column = 0; column < sqlite3_column_count(statement); ++column) {
        const char* declared = sqlite3_column_decltype(statement, column);
        const bool isDate = declared != nullptr && sqlite3_stricmp(declared, "DATE") == 0;
        types.push_back(isDate ? ColumnType::Date : ColumnType::Any);
    }
    return types;
}

QStringList NamesOf(sqlite3_stmt* statement)
{
    QStringList names;
    for (int column = 0; column < sqlite3_column_count(statement); ++column)
        names << QString::fromUtf8(sqlite3_column_name(statement, column));
    return names;
}

/// Appends the statement's current row; returns the memory it takes, in bytes.
qsizetype AppendRow(sqlite3_stmt* statement, const std::vector<ColumnType>& types, RowTable& table)
{
    qsizetype text = 0;
    for (std::size_t column = 0; column < types.size(); ++column) {
        const Seen seen = SeenAt(statement, int(column));
        text += seen.kind == Kind::Text ? seen.length : 0;
        if (text > LargestRow)
            throw Refusal(Error::TooManyRows, TooLargeRow);
        table.cells.push_back(ValueOf(seen, types[column]));
    }
    return qsizetype(types.size() * sizeof(Value)) + text * qsizetype(sizeof(QChar));
}

} // namespace

int RowTable::FieldAt(const QString& name) const
{
    for (int field = 0; field < fields.size(); ++field)
        if (fields[field].compare(name, Qt::CaseInsensitive) == 0)
            return field;
    return -1;
}

ReadOnlyQuery::ReadOnlyQuery(const QString& path)
{
    if (!QFileInfo(path).isFile())
        throw basic::RuntimeError(basic::Error::DatabaseNotFound, path);
    const int code =
        sqlite3_open_v2(path.toUtf8().constData(), &database, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    try {
        Check(database, code);
        sqlite3_busy_timeout(database, BusyTimeout);
        sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_limit(database, SQLITE_LIMIT_LENGTH, LargestRow);
        RunOnce(database, "PRAGMA trusted_schema=OFF");
        RunOnce(database, "PRAGMA cell_size_check=ON");
        RunOnce(database, "BEGIN");
        RunOnce(database,
                "SELECT count(*) FROM sqlite_schema"); // the moment that is read starts with the first reading
    } catch (...) {
        sqlite3_close_v2(database);
        throw;
    }
}

ReadOnlyQuery::~ReadOnlyQuery()
{
    sqlite3_close_v2(database);
}

RowTable ReadOnlyQuery::Read(const QString& select, const std::vector<Value>& parameters,
                             const QueryLimits& limits) const
{
    const QByteArray sql = select.toUtf8();
    const Prepared statement = Prepare(database, sql, parameters.size());
    Bind(database, statement.get(), parameters);

    const TimeLimit limit(database, limits.isGivenUp);
    const std::vector<ColumnType> types = TypesOf(statement.get());
    RowTable table;
    table.fields = NamesOf(statement.get());
    qsizetype bytes = 0;
    for (int rows = 0;; ++rows) {
        const int code = sqlite3_step(statement.get());
        if (code == SQLITE_DONE)
            return table;
        if (code != SQLITE_ROW)
            RaiseRefusal(database, code, sql);
        if (rows == limits.rows)
            throw Refusal(Error::TooManyRows, QStringLiteral("plus de %1 lignes").arg(limits.rows));
        bytes += AppendRow(statement.get(), types, table);
        if (bytes > limits.bytes)
            throw Refusal(Error::TooManyRows, QStringLiteral("plus de %1 Mo de données").arg(limits.bytes >> 20));
    }
}

QStringList ReadOnlyQuery::FieldsOf(const QString& select) const
{
    return NamesOf(Prepare(database, select.toUtf8(), 0).get());
}

} // namespace dao
