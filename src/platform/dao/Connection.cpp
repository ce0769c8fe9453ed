#include "platform/dao/Connection.h"

#include "platform/dao/ListedSet.h"

#include <QFileInfo>
#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace dao {
namespace {

constexpr std::size_t StatementsKept = 1000;
constexpr int PagesBeforeCheckpoint = 1000;    // of the log, by themselves
constexpr int PagesBeforeIdleCheckpoint = 256; // at an idle moment

} // namespace

std::vector<Connection*>& OpenConnections()
{
    static auto& open = *new std::vector<Connection*>; // never destroyed: a global handle may close later
    return open;
}

Connection::Connection(sqlite3* opened, QString openedPath)
    : database(opened), path(std::move(openedPath)), file(opened, path)
{
    OpenConnections().push_back(this);
    sqlite3_wal_hook(
        database,
        [](void* self, sqlite3*, const char*, int pages) {
            static_cast<Connection*>(self)->Checkpoint(pages);
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
    return database;
}

void Connection::Close() noexcept
{
    if (database == nullptr)
        return;
    std::erase(OpenConnections(), this);
    for (ListedSet* const set : std::exchange(reading, {}))
        set->Close();
    for (const auto& [shape, plan] : plans)
        plan->statement = {};
    plans.clear();
    prepared.clear();
    holder = Statement();
    LookForReplacement();
    // The last one out of a file moves its log into it and removes the log; that another one is still in is no failure.
    sqlite3_busy_timeout(database, 0);
    sqlite3_close_v2(database);
    database = nullptr;
    if (!isReplaced)
        RememberSound(path);
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
        if (plan->kind == Plan::Kind::Answer)
            plan->answer = AnswerColumns(plan->statement);
        known = plans.emplace(shape, std::move(plan)).first;
    }
    return known->second;
}

/// Sets that are open keep their plans; they have no further use for the statements.
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
    return catalog.Find(Handle(), name);
}

void Connection::ForgetTable(std::string_view name)
{
    DropPlans();
    catalog.Forget(name);
}

// -- reading

void Connection::FinishReading(const Plan* used)
{
    const bool isUsed = std::ranges::any_of(reading, [used](const ListedSet* set) { return set->Uses(used); });
    if (readTransactions == 0 || isUsed)
        FinishAllReading();
    if (readTransactions == 0 || holder || sqlite3_get_autocommit(Handle()) == 0)
        return;
    holder = Statement(database, "select 1 from sqlite_schema");
    holder.Step();
}

void Connection::FinishAllReading()
{
    Handle();
    for (ListedSet* const set : std::exchange(reading, {}))
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
    sqlite3_file_control(database, "main", SQLITE_FCNTL_DATA_VERSION, &commitsSeen);
    return {sqlite3_total_changes64(database) + rollbacks, commitsSeen};
}

bool Connection::IsCurrent(const DataVersion& version) const
{
    return version.commits == commitsSeen && version.ownChanges == sqlite3_total_changes64(database) + rollbacks;
}

void Connection::LookForChanges()
{
    if (sqlite3_txn_state(Handle(), "main") != SQLITE_TXN_NONE)
        return; // as long as this connection reads, it sees no change of others
    Statement& look = Prepared("pragma data_version");
    const ResetAtEnd reset(look);
    look.Step();
    Version();
}

// -- writing

void Connection::RequireSameFile()
{
    Handle();
    LookForReplacement();
    if (isReplaced)
        throw RuntimeError(Error::FileReplaced, QFileInfo(path).fileName());
}

void Connection::LookForReplacement()
{
    if (isReplaced || file.IsInPlace(database))
        return;
    isReplaced = true;
    sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    SetLogAside(path);
}

int Connection::Change(Plan& plan, const std::vector<Value>& literals)
{
    plan.statement.Bind(literals);
    RunChange(plan.statement);
    return sqlite3_changes(database);
}

void Connection::RunChange(Statement& change)
{
    if (sqlite3_get_autocommit(Handle()) != 0) // whoever began a transaction has asked then
        RequireSameFile();
    FinishAllReading();
    holder = Statement(); // a change starts from what the file holds now
    change.Run();
    if (inTransaction || sqlite3_get_autocommit(database) != 0)
        return;
    // The lock of a pending edit must not hold back what is reported as done.
    editing = nullptr;
    Commit();
}

void Connection::Begin()
{
    RequireSameFile();
    FinishAllReading();
    holder = Statement();
    Prepared("begin immediate").Run();
}

void Connection::Commit()
{
    try {
        Prepared("commit").Run();
    } catch (...) {
        Rollback();
        throw;
    }
}

void Connection::Rollback()
{
    ++rollbacks;
    if (sqlite3_get_autocommit(database) == 0) // SQLite may have rolled it back by itself, on a full disk for instance
        Prepared("rollback").Run();
}

void Connection::BeginTransaction()
{
    FinishAllReading();
    if (inTransaction)
        throw RuntimeError(Error::NestedTransaction);
    if (std::exchange(editing, nullptr) == nullptr)
        Begin();
    inTransaction = true;
}

void Connection::EndTransaction(bool commits)
{
    FinishAllReading();
    if (!std::exchange(inTransaction, false))
        throw RuntimeError(Error::NoTransaction);
    if (commits)
        Commit();
    else
        Rollback();
}

void Connection::LockForEdit(const TableSet& set)
{
    if (inTransaction)
        return;
    if (editing == nullptr)
        Begin();
    editing = &set;
}

void Connection::UnlockEdit(const TableSet& set) noexcept
{
    if (editing != &set)
        return;
    editing = nullptr;
    // Whatever was written has been committed by RunChange: there is nothing in this transaction but its lock.
    try {
        FinishAllReading();
        if (sqlite3_get_autocommit(database) == 0)
            Prepared("rollback").Run();
    } catch (const RuntimeError&) {
        // SQLite ends a transaction that it can't roll back when the file is closed.
    }
}

void Connection::Checkpoint(int pages)
{
    logPages = pages;
    if (pages >= PagesBeforeCheckpoint)
        sqlite3_wal_checkpoint_v2(database, "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

void Connection::Idle()
{
    FinishAllReading();
    holder = Statement();
    LookForReplacement();
    if (!isReplaced && logPages >= PagesBeforeIdleCheckpoint && sqlite3_get_autocommit(database) != 0) {
        logPages = 0;
        sqlite3_wal_checkpoint_v2(database, "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    }
    LookForChanges();
}

} // namespace dao
