// Any text as a statement of the screens and as a search condition, over a real practice of a few rows: it is refused
// with an error that statements have, or it does what a statement may do.
#include "data/Practice.h"
#include "fuzz/Fuzz.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Connection.h"
#include "platform/dao/Database.h"
#include "platform/dao/Engine.h"
#include "platform/dao/Opening.h"
#include "platform/dao/TextCompare.h"

#include <QTemporaryDir>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <set>

using dao::Plan;
using dao::Token;
using fuzz::Require;

using basic::Error;

namespace {

constexpr const char* Rows[] = {
    "insert into Patients (num, nom, Prenom, N_carte, tel) values (1, 'Évrard', 'Zoé', '0012', '0550')",
    "insert into Patients (num, nom, Prenom, N_carte) values (2, 'evrard', 'Ali', '12')",
    "insert into Patients (num, nom, Prenom, tel) values (7, 'D''Artagnan', 'Luc', '')",
    "insert into Actes (num, Date, num_presta, montant, Type, flag_R) values (1, #03/01/2008#, 1, 100.5, 'C', 2)",
    "insert into Actes (num, Date, num_presta, montant, Type) values (2, #03/02/2008#, 1, 50, 'K5')",
    "insert into Actes (num, num_patient) values (5, 2)",
    "insert into Presta (num, denom, Ordre) values (1, 'Radio', 1)",
    "insert into Recettes (num, Date, objet, montant) values (1, #03/02/2008#, 'Coton', 20)",
    "insert into Prov (num, unite, Mt) values (3, 'L''Écho', 1.5)",
};

/// A practice that is made once for all inputs.
class Practice {
public:
    Practice()
    {
        data::CreatePractice(folder.path(), {});
        dao::DBEngine.SystemDB = folder.filePath(data::workgroupFile);
        workspace = dao::DBEngine.CreateWorkspace("Fuzz", data::workspaceUser, data::BuildWorkspacePassword());
        dao::Database database = workspace.OpenDatabase(Path());
        for (const char* const row : Rows)
            database.Execute(row, dao::FailOnError);
        database.Close();
        const dao::StoreHandle store = dao::OpenForReading(Path());
        dao::Statement names(store.get(), "select name from sqlite_schema where type = 'table'");
        while (names.Step())
            tables.insert(names.TextAt(0));
    }

    QString Path() const { return folder.filePath(data::databaseFile); }
    bool HasTable(const char* name) const { return name != nullptr && tables.contains(name); }

private:
    QTemporaryDir folder;
    std::set<std::string> tables;
    dao::Workspace workspace;
};

const Practice& ThePractice()
{
    static const Practice practice;
    return practice;
}

/// A connection opened as the program opens it. A statement that would run on for too long is stopped.
class Session {
public:
    explicit Session(const QString& path) : connection(Opened(path)), database(connection) { Restart(); }

    /// Gives the next statement all its time.
    void Restart()
    {
        constexpr int stepsAtATime = 1000;
        stops = 200;
        sqlite3_progress_handler(
            connection->Handle(), stepsAtATime, [](void* left) { return --*static_cast<int*>(left) > 0 ? 0 : 1; },
            &stops);
    }
    void Unbind() { sqlite3_progress_handler(connection->Handle(), 0, nullptr, nullptr); }
    bool WasStopped() const { return stops <= 0; }

    const std::shared_ptr<dao::Connection> connection;
    const dao::Database database;

private:
    static std::shared_ptr<dao::Connection> Opened(const QString& path)
    {
        dao::StoreHandle handle = dao::OpenForWork(path);
        dao::TeachTextComparison(handle.get());
        return std::make_shared<dao::Connection>(handle.release(), path);
    }

    int stops = 0;
};

/// Runs `work`; false when it was refused with one of these errors. Any other refusal is a fault.
template <class Work>
bool Succeeds(Session& session, std::initializer_list<Error> refusals, const QString& statement, Work work)
{
    session.Restart();
    try {
        work();
        return true;
    } catch (const basic::RuntimeError& error) {
        const bool expected = std::ranges::find(refusals, error.Code()) != refusals.end() ||
                              (error.Code() == Error::DiskOrNetwork && session.WasStopped());
        Require(expected, "a refusal has a number of refused statements",
                QString::number(error.Number()) + " " + error.Description() + "\n" + statement);
        return false;
    }
}

/// A literal of the same sort and with another value.
QString OtherLiteral(const Token& token)
{
    switch (token.sort) {
    case Token::Sort::Number:
        return "987";
    case Token::Sort::Date:
        return "#12/30/1999#";
    case Token::Sort::PlainText:
        return "'?'";
    default:
        return "'zz'";
    }
}

/// The statement with other values in all its literals.
QString WithOtherValues(const QString& statement)
{
    QString other;
    for (const Token& token : dao::Tokens(statement)) {
        if (token.IsLiteral())
            other += OtherLiteral(token);
        else
            other += token.sort == Token::Sort::Name ? "[" + token.text.toString() + "]" : token.text.toString();
        other += ' ';
    }
    return other;
}

void CheckLiteral(const Token& token, const dao::Datum& datum)
{
    const QString written = token.text.toString();
    if (token.sort == Token::Sort::Number) {
        const double number = datum.kind == dao::Kind::Whole ? double(datum.whole) : datum.real;
        Require(std::isfinite(number) && number == std::strtod(qPrintable(written), nullptr),
                "a number is the one written", written);
    } else if (token.sort == Token::Sort::Date) {
        const bool iso = datum.text.size() == 10 && datum.text[4] == '-' && datum.text[7] == '-';
        Require(datum.kind == dao::Kind::Null || iso, "a date is an ISO text or Null", written);
    } else {
        const QString quote(*(token.text.data() - 1));
        const QString value = QString::fromStdString(datum.text);
        Require(QString(value).replace(quote, quote + quote) == written, "a text is the one written", written);
    }
}

/// The statement taken apart, with all its literals right; none when it can't be read.
std::optional<dao::Phrase> TakenApart(Session& session, const QString& statement)
{
    dao::Phrase phrase;
    if (!Succeeds(session, {Error::SyntaxError}, statement, [&] { phrase = dao::TakeApart(statement); }))
        return {};
    std::size_t literal = 0;
    for (const Token& token : dao::Tokens(statement)) {
        if (!token.IsLiteral())
            continue;
        Require(literal < phrase.literals.size(), "each literal has its value", statement);
        CheckLiteral(token, phrase.literals[literal++]);
    }
    Require(literal == phrase.literals.size(), "each value is that of a literal", statement);
    const QString other = WithOtherValues(statement);
    Require(dao::TakeApart(other).shape == phrase.shape, "the shape tells nothing of the values", statement);
    return phrase;
}

/// Whether a plan may do this to the database, asked by the store itself while it reads the plan's statement.
int Permit(void* asked, int action, const char* first, const char* second, const char*, const char*)
{
    static constexpr std::array functions = {"count", "sum", "avg", "min", "max", "abs", "round", "length", "like"};
    const Plan& plan = *static_cast<const Plan*>(asked);
    const auto changes = [&](Plan::Sort sort) { return plan.sort == sort && plan.table->name == first; };
    switch (action) {
    case SQLITE_SELECT:
        break;
    case SQLITE_READ:
        Require(ThePractice().HasTable(first), "a statement reads tables of the practice alone", first);
        break;
    case SQLITE_FUNCTION:
        Require(std::ranges::any_of(functions, [&](const char* name) { return qstricmp(name, second) == 0; }),
                "a statement uses the functions of the dialect alone", second);
        break;
    case SQLITE_INSERT:
        Require(changes(Plan::Sort::Growth), "only an insert adds rows, to its table", first);
        break;
    case SQLITE_UPDATE:
        Require(changes(Plan::Sort::Change), "only an update changes rows, of its table", first);
        break;
    case SQLITE_DELETE:
        Require(changes(Plan::Sort::Removal), "only a delete takes rows, from its table", first);
        break;
    default:
        Require(false, "a statement does nothing else", QString::number(action));
    }
    return SQLITE_OK;
}

/// Has the store read a plan's text: exactly one statement with a place for each literal, or one it can't read.
void CheckText(Session& session, const Plan& plan, const std::string& sql, std::size_t literals)
{
    sqlite3* const store = session.connection->Handle();
    const QString shown = QString::fromStdString(sql);
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    sqlite3_set_authorizer(store, Permit, const_cast<Plan*>(&plan));
    const int code = sqlite3_prepare_v2(store, sql.data(), int(sql.size()), &prepared, &rest);
    sqlite3_set_authorizer(store, nullptr, nullptr);
    if (code != SQLITE_OK) {
        Require((code & 0xff) == SQLITE_ERROR, "a statement fails by its syntax or a name", shown);
        return;
    }
    Require(prepared != nullptr, "a plan is a statement", shown);
    Require(rest == sql.data() + sql.size(), "a plan is one statement", shown);
    Require(sqlite3_bind_parameter_count(prepared) == int(literals), "each literal has its place", shown);
    const bool reads = plan.sort == Plan::Sort::Rows || plan.sort == Plan::Sort::Answer;
    Require((sqlite3_stmt_readonly(prepared) != 0) == reads, "selects read, the others write", shown);
    sqlite3_finalize(prepared);
}

void CheckPlan(Session& session, const QString& statement, const dao::Phrase& phrase, bool skipsFailures)
{
    const auto find = [&](std::string_view name) { return session.connection->FindTable(name); };
    Plan plan;
    const auto translate = [&] { plan = dao::Translate(statement, find, skipsFailures); };
    if (!Succeeds(session, {Error::SyntaxError, Error::UnknownTable, Error::UnknownFunction}, statement, translate))
        return;
    const Plan other = dao::Translate(WithOtherValues(statement), find, skipsFailures);
    Require(plan.sql == other.sql && plan.keysSql == other.keysSql, "values are no part of a plan", statement);
    CheckText(session, plan, plan.sql, phrase.literals.size());
    if (plan.sort == Plan::Sort::Rows)
        CheckText(session, plan, plan.keysSql, phrase.literals.size());
}

/// Goes through all rows and reads all their fields; the number of rows.
int Walked(dao::Recordset rows)
{
    int count = 0;
    for (; !rows.IsEOF(); rows.MoveNext(), ++count) {
        for (int field = 0; field < rows.FieldCount(); ++field)
            (void)rows.Fields(field).Get();
    }
    Require(rows.RecordCount() == count, "all rows were counted");
    return count;
}

void CheckOpening(Session& session, const QString& statement)
{
    Succeeds(session,
             {Error::UnknownColumn, Error::SyntaxError, Error::UnknownTable, Error::UnknownFunction,
              Error::FieldTooSmall, Error::InvalidOperation},
             statement, [&] {
                 const int count = Walked(session.database.OpenRecordset(statement));
                 dao::Recordset again = session.database.OpenRecordset(statement);
                 if (count > 0)
                     again.MoveLast();
                 Require(again.RecordCount() == count, "the last row is the last of the walk", statement);
             });
}

/// Runs the statement in a transaction that is taken back.
void CheckRunning(Session& session, const QString& statement, int options)
{
    session.database.BeginTrans();
    Succeeds(session,
             {Error::DuplicateKey, Error::UnknownColumn, Error::NotAnAction, Error::SyntaxError, Error::UnknownTable,
              Error::UnknownFunction, Error::FieldTooSmall, Error::ConversionFailed},
             statement, [&] {
                 Require(session.database.Execute(statement, options) >= 0, "changed rows are counted", statement);
             });
    session.Unbind();
    session.database.Rollback();
}

/// A search finds the row that a select with the same condition gives first.
void CheckSearch(Session& session, const QString& condition)
{
    for (const char* const table : {"Patients", "Actes"}) {
        std::optional<dao::Value> found;
        const auto search = [&] {
            dao::Recordset rows = session.database.OpenRecordset(table);
            rows.FindFirst(condition);
            if (!rows.NoMatch())
                found = rows["num"].Get();
        };
        if (!Succeeds(session,
                      {Error::UnknownColumn, Error::UnknownExpression, Error::SyntaxError, Error::UnknownTable,
                       Error::UnknownFunction},
                      condition, search))
            continue;
        std::optional<dao::Value> selected;
        const QString select = QString("select * from ") + table + " where " + condition;
        const bool agrees =
            Succeeds(session, {Error::UnknownColumn, Error::SyntaxError, Error::UnknownFunction}, select, [&] {
                const dao::Recordset rows = session.database.OpenRecordset(select);
                if (!rows.IsEOF())
                    selected = rows["num"].Get();
            });
        Require(agrees || session.WasStopped(), "what can be searched for can be selected", select);
        Require(session.WasStopped() || found.has_value() == selected.has_value(), "search and select agree", select);
        Require(session.WasStopped() || !found || found->Raw() == selected->Raw(), "both give one row", select);
    }
}

/// A session that serves many inputs, as one serves a day's work; a new one now and then bounds what it has kept.
Session& TheSession()
{
    constexpr int inputsOfASession = 200;
    const QString path = ThePractice().Path(); // made first, so that it outlives the session
    static std::optional<Session> session;
    static int served = 0;
    if (served++ % inputsOfASession == 0)
        session.emplace(path);
    return *session;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QString statement = QString::fromUtf8(reinterpret_cast<const char*>(bytes), qsizetype(size));
    Session& session = TheSession();
    CheckOpening(session, statement);
    CheckRunning(session, statement, 0);
    CheckRunning(session, statement, dao::FailOnError);
    CheckSearch(session, statement);
    if (const std::optional<dao::Phrase> phrase = TakenApart(session, statement)) {
        CheckPlan(session, statement, *phrase, false);
        CheckPlan(session, statement, *phrase, true);
    }
    return 0;
}
