#include "platform/dao/Connection.h"

#include "platform/store/FileState.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace dao {
namespace {

constexpr std::size_t StatementsKept = 1000;

} // namespace

std::vector<Connection*>& OpenConnections()
{
    static auto& open = *new std::vector<Connection*>; // never destroyed: a global handle may close later
    return open;
}

Connection::Connection(store::SqliteHandle opened, QString openedPath, store::OpeningRules openedBy)
    : database(std::move(opened)), path(std::move(openedPath)), rules(std::move(openedBy)),
      file(std::in_place, database.get(), path)
{
    OpenConnections().push_back(this);
    sqlite3_wal_hook(
        database.get(),
        [](void* self, sqlite3*, const char*, int pages) {
            static_cast<Connection*>(self)->NoteLogSize(pages);
            return SQLITE_OK;
        },
        this);
}

Connection::~Connection()
{
    Close();
}

sqlite3* Connection::Handle() const
{
    if (database == nullptr)
        throw RuntimeError(Error::ObjectClosed);
    return database.get();
}

void Connection::Close() noexcept
{
    if (database == nullptr)
        return;
    std::erase(OpenConnections(), this);
    for (HalfReadSet* const set : std::exchange(halfRead, {}))
        set->Close();
    for (const auto& [shape, plan] : plans)
        plan->statement = {};
    plans.clear();
    prepared.clear();
    holder = Statement();
    CheckForReplacement();
    // The last connection to close checkpoints the log and removes it; failing because another is open is fine.
    sqlite3_busy_timeout(database.get(), 0);
    file.reset();
    database.reset();
    if (!isReplaced)
        store::RememberSound(path);
}

const std::shared_ptr<Plan>& Connection::PlanOf(QStringView statement, const std::u16string& shape, bool skipsFailures)
{
    auto known = plans.find(shape);
    if (known == plans.end()) {
        if (plans.size() >= StatementsKept)
            DropPlans();
        FinishReading();
        const auto find = [this](std::string_view name) { return FindTable(name); };
        auto plan = std::make_shared<Plan>(Translate(statement, find, skipsFailures));
        if (!plan->sql.empty())
            plan->statement = Statement(Handle(), plan->sql);
        if (plan->kind == Plan::Kind::Snapshot)
            plan->columns = ResultColumnsOf(plan->statement);
        known = plans.emplace(shape, std::move(plan)).first;
    }
    return known->second;
}

/// Open sets keep their plans but no longer need the statements.
void Connection::DropPlans()
{
    FinishAllReading();
    for (const auto& [shape, plan] : plans)
        plan->statement = {};
    plans.clear();
}

Statement& Connection::Prepared(const std::string& sql)
{
    if (prepared.size() >= StatementsKept)
        prepared.clear();
    Statement& statement = prepared[sql];
    if (!statement)
        statement = Statement(Handle(), sql);
    return statement;
}

Table* Connection::FindTable(std::string_view name)
{
    FinishReading();
    return catalog.Find(Handle(), name);
}

void Connection::ForgetTable(std::string_view name)
{
    DropPlans();
    catalog.Forget(name);
}

// -- reading

Rows Connection::Select(const std::string& sql, std::initializer_list<Value> parameters)
{
    FinishReading();
    Statement& select = Prepared(sql);
    int parameter = 0;
    for (const Value& value : parameters)
        select.Bind(++parameter, value);
    return Rows(select);
}

Rows Connection::Select(Plan& plan, const std::vector<Value>& literals)
{
    FinishReading(&plan);
    plan.statement.Bind(literals);
    return Rows(plan.statement);
}

/// Within a read transaction, begins its snapshot if there is none.
void Connection::FinishReading(const Plan* read)
{
    const bool isRead = std::ranges::any_of(halfRead, [read](const HalfReadSet* set) { return set->Reads(read); });
    if (readTransactions == 0 || isRead)
        FinishAllReading();
    if (readTransactions == 0 || holder || sqlite3_get_autocommit(Handle()) == 0)
        return;
    holder = Statement(database.get(), "select 1 from sqlite_schema");
    holder.Step();
}

void Connection::FinishAllReading()
{
    Handle();
    for (HalfReadSet* const set : std::exchange(halfRead, {}))
        set->FinishReading();
}

void Connection::BeginReadTransaction()
{
    FinishReading();
    ++readTransactions;
}

void Connection::EndReadTransaction() noexcept
{
    if (--readTransactions == 0)
        holder = Statement();
}

DataVersion Connection::Version()
{
    sqlite3_file_control(database.get(), "main", SQLITE_FCNTL_DATA_VERSION, &commitsSeen);
    return {sqlite3_total_changes64(database.get()) + rollbacks, commitsSeen};
}

bool Connection::IsCurrent(const DataVersion& version) const
{
    return version.commits == commitsSeen && version.ownChanges == sqlite3_total_changes64(database.get()) + rollbacks;
}

void Connection::CheckForChanges()
{
    if (sqlite3_txn_state(Handle(), "main") != SQLITE_TXN_NONE)
        return; // while this connection reads, it sees no changes of others
    Statement& look = Prepared("pragma data_version");
    const ResetAtEnd reset(look);
    look.Step();
    Version();
}

void Connection::LookForChanges()
{
    FinishReading();
    CheckForChanges();
}

} // namespace dao
