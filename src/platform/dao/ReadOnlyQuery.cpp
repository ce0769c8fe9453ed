#include "platform/dao/ReadOnlyQuery.h"

#include "platform/dao/Catalog.h"
#include "platform/dao/Connection.h"
#include "platform/store/FileState.h"
#include "platform/store/Hardened.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <algorithm>
#include <chrono>
#include <sqlite3.h>

namespace dao {
namespace {

using basic::Error;
using Clock = std::chrono::steady_clock;

constexpr auto LongestRun = std::chrono::seconds(30);
constexpr int StepsBetweenLooks = 100'000;
constexpr int LargestRow = 1 << 20; // bytes, of one row or value

/// Authorizer: a statement may only read tables and call functions.
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

/// Progress handler: interrupts a statement that runs too long or is given up.
class TimeLimit {
public:
    TimeLimit(sqlite3* connection, const std::function<bool()>& givenUp)
        : database(connection), end(Clock::now() + LongestRun), isGivenUp(givenUp)
    {
        sqlite3_progress_handler(database, StepsBetweenLooks, IsOver, this);
    }
    ~TimeLimit() { sqlite3_progress_handler(database, 0, nullptr, nullptr); }
    Q_DISABLE_COPY_MOVE(TimeLimit)

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
    const char* message; ///< pattern of SQLite's message
    Error error;
    const char* reason; ///< with %1 for what the pattern captures
};

constexpr Wording Wordings[] = {
    {"^no such table: (.*)", Error::UnknownTable, "table inconnue « %1 »"},
    {"^no such column: (.*)", Error::UnknownColumn, "champ inconnu « %1 »"},
    {"^ambiguous column name: (.*)", Error::AmbiguousColumn,
     "le champ « %1 » est dans plusieurs tables : écrire Table.%1"},
    {"^no such function: (.*)", Error::UnknownFunction, "fonction inconnue « %1 »"},
    {R"~(^near "(.*)": syntax error)~", Error::SyntaxError, "erreur de syntaxe près de « %1 »"},
    {"^incomplete input", Error::SyntaxError, "interrogation incomplète"},
    {R"~(^unrecognized token: "?(.*?)"?$)~", Error::SyntaxError, "signe inattendu « %1 »"},
    {"^not authorized|is prohibited", Error::ReadOnly, "seul « select » est permis"},
    {R"(^wrong number of arguments to function (.*)\(\))", Error::SyntaxError,
     "nombre d'arguments incorrect pour la fonction « %1 »"},
    {R"(^misuse of .*?(\w+)\(\))", Error::SyntaxError, "la fonction « %1 » ne peut pas être employée ici"},
    {R"(^misuse of aggregate: (\w+))", Error::SyntaxError, "la fonction « %1 » ne peut pas être employée ici"},
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

/// The line, from 0, of the error that SQLite has just reported; searches for `name` if there is no offset.
int LineOfMistake(sqlite3* database, const QByteArray& sql, const QString& name)
{
    qsizetype offset = sqlite3_error_offset(database);
    if (offset < 0 && !name.isEmpty())
        offset = QString::fromUtf8(sql).indexOf(QRegularExpression("\\b" + QRegularExpression::escape(name) + "\\b",
                                                                   QRegularExpression::CaseInsensitiveOption));
    return static_cast<int>(sql.first(std::max<qsizetype>(offset, 0)).count('\n'));
}

[[noreturn]] void RaiseRefusal(sqlite3* database, int code, const QByteArray& sql)
{
    const int primary = code & 0xff;
    if (primary == SQLITE_INTERRUPT)
        throw Refusal(Error::QueryTimeout, "l'interrogation dure plus d'une demi-minute");
    if (primary == SQLITE_TOOBIG)
        throw Refusal(Error::TooManyRows, TooLargeRow);
    if (primary != SQLITE_ERROR && primary != SQLITE_AUTH)
        store::RaiseSqliteError(database, code);

    const QString message = QString::fromUtf8(sqlite3_errmsg(database));
    for (const Wording& wording : Wordings) {
        const auto match = QRegularExpression(QString::fromUtf8(wording.message)).match(message);
        if (match.hasMatch())
            throw Refusal(wording.error, QString::fromUtf8(wording.reason).replace("%1", match.captured(1)),
                          LineOfMistake(database, sql, match.captured(1)));
    }
    throw Refusal(Error::SyntaxError, "SQLite refuse cette interrogation", LineOfMistake(database, sql, {}));
}

/// Only blanks, semicolons and comments may follow a statement.
bool HasStatement(sqlite3* database, const char* text)
{
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v2(database, text, -1, &raw, nullptr);
    const Statement following(raw);
    return code != SQLITE_OK || following;
}

Statement Prepare(sqlite3* database, const QByteArray& sql, std::size_t valueCount)
{
    sqlite3_stmt* raw = nullptr;
    const char* tail = nullptr;
    const int code = sqlite3_prepare_v2(database, sql.constData(), -1, &raw, &tail);
    Statement statement(raw);
    if (code != SQLITE_OK)
        RaiseRefusal(database, code, sql);
    if (!statement)
        throw Refusal(Error::SyntaxError, "l'interrogation est vide");
    if (HasStatement(database, tail))
        throw Refusal(Error::SyntaxError, "une seule interrogation est permise",
                      static_cast<int>(std::count(sql.constData(), tail, '\n')));
    if (sqlite3_stmt_readonly(raw) == 0 || sqlite3_stmt_isexplain(raw) != 0)
        throw Refusal(Error::ReadOnly, "seul « select » est permis : un état lit la base et n'y écrit jamais");
    if (sqlite3_bind_parameter_count(raw) > static_cast<int>(valueCount))
        throw Refusal(Error::SyntaxError, "l'interrogation attend une valeur (?) que rien ne donne");
    return statement;
}

QStringList NamesOf(const Columns& columns)
{
    QStringList names;
    for (int column = 0; column < columns.Count(); ++column)
        names << QString::fromStdString(columns[column].name);
    return names;
}

/// Appends the current row; returns its size in memory, in bytes.
qsizetype AppendRow(const Statement& statement, const Columns& columns, RowTable& table)
{
    qsizetype text = 0;
    for (int column = 0; column < columns.Count(); ++column) {
        const StoredValue value = statement.At(column);
        text += value.kind == StoredValue::Kind::Text ? value.length : 0;
        if (text > LargestRow)
            throw Refusal(Error::TooManyRows, TooLargeRow);
        table.cells.push_back(store::ValueOf(value, columns[column].type));
    }
    return columns.Count() * static_cast<qsizetype>(sizeof(Value)) + text * static_cast<qsizetype>(sizeof(QChar));
}

/// Opens a database for reading, also one that this program holds alone.
store::SqliteHandle OpenBeside(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    for (Connection* const connection : OpenConnections()) {
        if (connection->HoldsAlone(canonical)) {
            connection->MoveLogIntoFile();
            return store::OpenHardened(path, store::Access::Immutable);
        }
    }
    return store::OpenHardened(path, store::Access::Read);
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
    store::RequireFile(path);
    database = OpenBeside(path);
    sqlite3_limit(database.get(), SQLITE_LIMIT_LENGTH, LargestRow);
    store::RunOnce(database.get(), "begin");
    store::RunOnce(database.get(),
                   "select count(*) from sqlite_schema"); // the snapshot starts with the first read
    sqlite3_set_authorizer(database.get(), AllowReading, nullptr);
}

RowTable ReadOnlyQuery::Read(const QString& select, const std::vector<Value>& parameters,
                             const QueryLimits& limits) const
{
    const QByteArray sql = select.toUtf8();
    Statement statement = Prepare(database.get(), sql, parameters.size());
    for (int parameter = 0; parameter < sqlite3_bind_parameter_count(statement.Raw()); ++parameter)
        statement.Bind(parameter + 1, parameters[static_cast<std::size_t>(parameter)]);

    const TimeLimit limit(database.get(), limits.isGivenUp);
    const Columns columns = ResultColumnsOf(statement);
    RowTable table;
    table.fields = NamesOf(columns);
    qsizetype bytes = 0;
    for (int rows = 0;; ++rows) {
        const int code = sqlite3_step(statement.Raw());
        if (code == SQLITE_DONE)
            return table;
        if (code != SQLITE_ROW)
            RaiseRefusal(database.get(), code, sql);
        if (rows == limits.rows)
            throw Refusal(Error::TooManyRows, QStringLiteral("plus de %1 lignes").arg(limits.rows));
        bytes += AppendRow(statement, columns, table);
        if (bytes > limits.bytes)
            throw Refusal(Error::TooManyRows, QStringLiteral("plus de %1 Mo de données").arg(limits.bytes >> 20));
    }
}

QStringList ReadOnlyQuery::FieldsOf(const QString& select) const
{
    return NamesOf(ResultColumnsOf(Prepare(database.get(), select.toUtf8(), 0)));
}

} // namespace dao
