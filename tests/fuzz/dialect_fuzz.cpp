// Arbitrary text as a statement on a real practice with a few rows: it is refused with a
// documented error, or does what a statement may do.
#include "data/Practice.h"
#include "fuzz/Fuzz.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Connection.h"
#include "platform/dao/Database.h"
#include "platform/dao/Tokenizer.h"
#include "platform/store/Creation.h"
#include "platform/store/Opening.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <cmath>
#include <optional>
#include <set>

using dao::Plan;
using dao::Token;
using fuzz::Require;

using basic::Error;

namespace {

constexpr const char* Rows = R"(
    insert into Patients (num, nom, Prenom, N_carte, tel) values
        (1, 'Évrard', 'Zoé', '0012', '0550'), (2, 'evrard', 'Ali', '12', null), (7, 'D''Artagnan', 'Luc', null, '');
    insert into Actes (num, Date, num_presta, montant, Type, flag_R, num_patient) values
        (1, '2008-03-01', 1, 100.5, 'C', 2, null), (2, '2008-03-02', 1, 50, 'K5', null, null),
        (5, null, null, 0, null, 0, 2);
    insert into Presta (num, denom, Ordre) values (1, 'Radio', 1);
    insert into Recettes (num, Date, objet, montant) values (1, '2008-03-02', 'Coton', 20);
    insert into Prov (num, unite, Mt) values (3, 'L''Écho', 1.5);
)";

/// A practice shared by all inputs, and its tables.
struct Practice {
    Practice()
    {
        store::CreateDatabase(path, data::Schema() + QString::fromUtf8(Rows));
        const store::SqliteHandle database = store::OpenForReading(path);
        store::Statement names(database.get(), "select name from sqlite_schema where name not like 'sqlite_%'");
        while (names.Step())
            tables.insert(names.TextAt(0));
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath(data::DatabaseFile);
    std::set<std::string> tables;
};

const Practice& ThePractice()
{
    static const Practice practice;
    return practice;
}

/// A connection opened as by the program. Statements that run too long are interrupted.
struct Session {
    explicit Session(store::SqliteHandle opened = store::OpenForWork(ThePractice().path, {}))
        : handle(opened.get()),
          connection(std::make_shared<dao::Connection>(std::move(opened), ThePractice().path, store::OpeningRules())),
          database(connection)
    {
    }

    /// Restarts the time limit.
    void Restart()
    {
        constexpr int stepsAtATime = 1000;
        stops = 200;
        sqlite3_progress_handler(
            handle, stepsAtATime, [](void* left) { return --*static_cast<int*>(left) > 0 ? 0 : 1; }, &stops);
    }

    sqlite3* const handle;
    const std::shared_ptr<dao::Connection> connection;
    const dao::Database database;
    int stops = 0;
};

/// Runs `work`; false when it was refused with an error of statements or one of these. Any other error is a fault.
template <class Work>
bool Succeeds(Session& session, QList<Error> refusals, const QString& statement, Work work)
{
    refusals << Error::SyntaxError << Error::UnknownTable << Error::UnknownColumn << Error::UnknownFunction
             << Error::FieldTooSmall;
    session.Restart();
    try {
        work();
        return true;
    } catch (const basic::RuntimeError& error) {
        const bool wasStopped = error.Code() == Error::DiskOrNetwork && session.stops <= 0;
        Require(wasStopped || refusals.contains(error.Code()), "a refusal has a number of refused statements",
                QString::number(error.Number()) + " " + error.Description() + "\n" + statement);
        return false;
    }
}

/// The statement with other values of the same kinds in all its literals.
QString WithOtherValues(const QString& statement)
{
    static const QMap<Token::Kind, QString> values{
        {Token::Kind::Number, "987"}, {Token::Kind::Date, "#12/30/1999#"}, {Token::Kind::PlainText, "'?'"}};
    QString other;
    for (const Token& token : dao::Tokens(statement))
        other += (token.IsLiteral() ? values.value(token.kind, "'zz'") : token.text.toString()) + ' ';
    return other;
}

void CheckLiteral(const Token& token, const dao::Value& value)
{
    const QString written = token.text.toString();
    if (token.kind == Token::Kind::Number) {
        const double number = value.Double();
        Require(std::isfinite(number) && number == std::strtod(qPrintable(written), nullptr),
                "a number is the one written", written);
    } else if (token.kind == Token::Kind::Date) {
        static const QRegularExpression iso("^\\d{4}-\\d\\d-\\d\\d$");
        Require(value.IsNull() || iso.match(value.Text()).hasMatch(), "a date is an ISO text or Null", written);
    } else {
        const QString quote(*(token.text.data() - 1));
        Require(value.Text().replace(quote, quote + quote) == written, "a text is the one written", written);
    }
}

/// The statement's shape, after checking its literals; none for a syntax error.
std::optional<dao::StatementShape> ShapeOf(Session& session, const QString& statement)
{
    dao::StatementShape split;
    if (!Succeeds(session, {}, statement, [&] { split = dao::ShapeOf(statement); }))
        return {};
    std::size_t literal = 0;
    for (const Token& token : dao::Tokens(statement)) {
        if (!token.IsLiteral())
            continue;
        Require(literal < split.literals.size(), "each literal has its value", statement);
        CheckLiteral(token, split.literals[literal++]);
    }
    Require(literal == split.literals.size(), "each value is that of a literal", statement);
    const QString other = WithOtherValues(statement);
    Require(dao::ShapeOf(other).shape == split.shape, "the shape is the same for all values", statement);
    return split;
}

/// Authorizer: a plan reads tables of the practice and changes rows of its own.
int Permit(void* asked, int action, const char* first, const char*, const char*, const char*)
{
    const Plan& plan = *static_cast<const Plan*>(asked);
    const bool changes = plan.kind == Plan::Kind::Change && plan.table->name == first;
    const bool isPermitted = action == SQLITE_SELECT || action == SQLITE_FUNCTION ||
                             (action == SQLITE_READ && ThePractice().tables.contains(first)) ||
                             ((action == SQLITE_UPDATE || action == SQLITE_DELETE) && changes);
    Require(isPermitted, "a statement does nothing else", QString("%1 %2").arg(action).arg(first));
    return SQLITE_OK;
}

/// Prepares a plan: it must be exactly one statement with a parameter for each literal, unless SQLite refuses it.
void CheckText(Session& session, const Plan& plan, std::size_t literals)
{
    sqlite3* const database = session.handle;
    const QString shown = QString::fromStdString(plan.sql);
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    sqlite3_set_authorizer(database, Permit, const_cast<Plan*>(&plan));
    const int code = sqlite3_prepare_v2(database, plan.sql.data(), static_cast<int>(plan.sql.size()), &prepared, &rest);
    sqlite3_set_authorizer(database, nullptr, nullptr);
    if (code != SQLITE_OK) {
        Require((code & 0xff) == SQLITE_ERROR, "a statement fails by its syntax or a name", shown);
        return;
    }
    Require(prepared != nullptr && rest == plan.sql.data() + plan.sql.size(), "a plan is one statement", shown);
    Require(sqlite3_bind_parameter_count(prepared) == static_cast<int>(literals), "each literal has its parameter",
            shown);
    Require((sqlite3_stmt_readonly(prepared) != 0) == (plan.kind != Plan::Kind::Change), "selects read", shown);
    sqlite3_finalize(prepared);
}

void CheckPlan(Session& session, const QString& statement, const dao::StatementShape& split, bool skipsFailures)
{
    const auto find = [&](std::string_view name) { return session.connection->FindTable(name); };
    Plan plan;
    const auto translate = [&] { plan = dao::Translate(statement, find, skipsFailures); };
    if (!Succeeds(session, {}, statement, translate))
        return;
    const Plan other = dao::Translate(WithOtherValues(statement), find, skipsFailures);
    Require(plan.sql == other.sql, "values are no part of a plan", statement);
    if (!plan.sql.empty())
        CheckText(session, plan, split.literals.size());
}

/// Reads all fields of all rows; returns the number of rows.
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
    Succeeds(session, {Error::InvalidOperation}, statement, [&] {
        const int count = Walked(session.database.OpenRecordset(statement));
        dao::Recordset again = session.database.OpenRecordset(statement);
        if (count > 0)
            again.MoveLast();
        Require(again.RecordCount() == count, "the last row is the last of the walk", statement);
    });
}

/// Runs the statement in a transaction and rolls it back.
void CheckRunning(Session& session, const QString& statement, int options)
{
    session.database.BeginTrans();
    Succeeds(session, {Error::DuplicateKey, Error::NotAnAction, Error::ConversionFailed}, statement, [&] {
        Require(session.database.Execute(statement, options) >= 0, "changed rows are counted", statement);
    });
    sqlite3_progress_handler(session.handle, 0, nullptr, nullptr);
    session.database.Rollback();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QString statement = QString::fromUtf8(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    constexpr int inputsOfASession = 200; // as in a day's work; a new one bounds its memory
    ThePractice();                        // before the session, which it outlives
    static std::optional<Session> current;
    static int served = 0;
    if (served++ % inputsOfASession == 0)
        current.emplace();
    Session& session = *current;
    CheckOpening(session, statement);
    CheckRunning(session, statement, 0);
    CheckRunning(session, statement, dao::FailOnError);
    if (const std::optional<dao::StatementShape> split = ShapeOf(session, statement)) {
        CheckPlan(session, statement, *split, false);
        CheckPlan(session, statement, *split, true);
    }
    return 0;
}
