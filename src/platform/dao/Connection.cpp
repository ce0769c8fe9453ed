#include "platform/dao/Connection.h"

#include "platform/basic/RuntimeError.h"
#include "platform/dao/Opening.h"
#include "platform/dao/TableSet.h"
#include "platform/dao/TextCompare.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>

namespace dao {
namespace {

constexpr std::size_t plansKept = 1000;
constexpr int pagesBeforeCheckpoint = 1000;    // of the log, by themselves
constexpr int pagesBeforeIdleCheckpoint = 256; // at an idle moment

std::vector<Connection*>& Registry()
{
    static std::vector<Connection*> open;
    return open;
}

} // namespace

const std::vector<Connection*>& OpenConnections()
{
    return Registry();
}

Connection::Connection(sqlite3* opened, QString file) : database(opened), path(std::move(file))
{
    Registry().push_back(this);
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
        throw basic::RuntimeError(basic::Error::ObjectClosed);
    return database;
}

void Connection::Close() noexcept
{
    if (database == nullptr)
        return;
    std::erase(Registry(), this);
    for (const auto& [shape, plan] : plans)
        plan->ReleaseStatements();
    for (const auto& plan : retired)
        plan->ReleaseStatements();
    kept.clear();
    catalog.ReleaseStatements();
    // The last one out of a file moves its log into it and removes the log; that another one is still in is no failure.
    sqlite3_busy_timeout(database, 0);
    sqlite3_close_v2(database);
    database = nullptr;
    RememberSound(path);
}

Plan& Connection::PlanOf(QStringView statement, const std::u16string& shape, bool skipsFailures)
{
    auto known = plans.find(shape);
    if (known == plans.end()) {
        Settle();
        const auto find = [this](std::string_view name) { return FindTable(name); };
        auto plan = std::make_unique<Plan>(Translate(statement, find, skipsFailures));
        known = plans.emplace(shape, std::move(plan)).first;
        if (plans.size() > plansKept) {
            for (const auto& [text, old] : plans)
                old->ReleaseStatements();
        }
    }
    Plan& plan = *known->second;
    if (!plan.statement) {
        Settle();
        plan.statement = Statement(Handle(), plan.sql);
        plan.answer = plan.sort == Plan::Sort::Answer ? AnswerColumns(plan.statement) : Columns();
    }
    return plan;
}

Statement& Connection::Kept(const std::string& sql)
{
    Statement& statement = kept[sql];
    if (!statement)
        statement = Statement(Handle(), sql);
    return statement;
}

void Connection::BoundKept()
{
    if (kept.size() > plansKept)
        kept.clear();
}

Table* Connection::FindTable(std::string_view name)
{
    return catalog.Find(Handle(), name);
}

void Connection::ForgetTable(std::string_view name)
{
    Settle();
    catalog.Forget(name);
    for (auto& [shape, plan] : plans) {
        plan->ReleaseStatements();
        retired.push_back(std::move(plan));
    }
    plans.clear();
}

void Connection::BeginReading(TableSet& set)
{
    reading = &set;
}

void Connection::WatchGrowth(TableSet& set)
{
    watching.push_back(&set);
}

void Connection::Leave(TableSet& set) noexcept
{
    if (reading == &set)
        reading = nullptr;
    std::erase(watching, &set);
}

void Connection::Settle()
{
    Handle();
    if (reading != nullptr)
        std::exchange(reading, nullptr)->Settle();
}

void Connection::SettleWhole(const Table& table)
{
    Settle();
    const std::vector<TableSet*> watchers = watching; // each one leaves as it settles
    for (TableSet* const set : watchers)
        set->SettleWhole(table);
}

int Connection::Change(Plan& plan, const std::vector<Datum>& literals)
{
    if (plan.sort == Plan::Sort::Growth || plan.sort == Plan::Sort::Removal)
        SettleWhole(*plan.table);
    else
        Settle();
    for (std::size_t i = 0; i < literals.size(); ++i)
        plan.statement.Bind(int(i) + 1, literals[i]);
    RunChange(plan.statement);
    return sqlite3_changes(database);
}

void Connection::RunChange(Statement& change, bool endsEdit)
{
    change.Run();
    if (inTransaction || sqlite3_get_autocommit(database) != 0)
        return;
    // The lock of a pending edit must not hold back what is reported as done: the change is committed, and the edits
    // that are still pending take their lock anew.
    Commit();
    if (editLocks > (endsEdit ? 1 : 0))
        BeginAgain();
}

void Connection::BeginAgain() noexcept
{
    try {
        Begin();
    } catch (const basic::RuntimeError&) {
        // Another one was quicker: the edits go on without the lock, and each takes it for its own moment of writing.
    }
}

void Connection::Begin()
{
    Kept("begin immediate").Run();
}

void Connection::Commit()
{
    try {
        Kept("commit").Run();
    } catch (...) {
        if (sqlite3_get_autocommit(database) == 0)
            Kept("rollback").Run();
        ++rollbacks;
        throw;
    }
}

void Connection::BeginTransaction()
{
    Settle();
    if (inTransaction)
        throw basic::RuntimeError(basic::Error::NestedTransaction);
    if (editLocks == 0)
        Begin();
    inTransaction = true;
}

void Connection::RequireTransaction() const
{
    Handle();
    if (!inTransaction)
        throw basic::RuntimeError(basic::Error::NoTransaction);
}

void Connection::CommitTransaction()
{
    RequireTransaction();
    Settle();
    inTransaction = false;
    Commit(); // raises as well when the store has rolled it back by itself, on a full disk for instance
    if (editLocks > 0)
        BeginAgain();
}

void Connection::RollbackTransaction()
{
    RequireTransaction();
    Settle();
    inTransaction = false;
    ++rollbacks;
    if (sqlite3_get_autocommit(database) == 0)
        Kept("rollback").Run();
    if (editLocks > 0)
        BeginAgain();
}

void Connection::LockForEdit()
{
    Settle();
    if (editLocks == 0 && !inTransaction)
        Begin();
    ++editLocks;
}

void Connection::UnlockEdit() noexcept
{
    if (database == nullptr)
        return;
    --editLocks;
    if (editLocks > 0 || inTransaction || sqlite3_get_autocommit(database) != 0)
        return;
    // Whatever was written has been committed by RunChange: there is nothing left in this transaction but its lock.
    try {
        Settle();
        Kept("rollback").Run();
    } catch (const basic::RuntimeError&) {
        // The store ends a transaction it can't roll back when the file is closed.
    }
}

const void* Connection::LogHead()
{
    if (logHead != nullptr)
        return logHead;
    // The first bytes of the log's index are shared by all who have the file open and change with every commit. To look
    // there costs nothing, the pragma that asks for the same costs as much as reading a row.
    constexpr int regionSize = 32768;
    sqlite3_file* file = nullptr;
    if (sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        file->pMethods == nullptr || file->pMethods->iVersion < 2)
        return nullptr;
    void volatile* region = nullptr;
    if (file->pMethods->xShmMap(file, 0, regionSize, 0, &region) != SQLITE_OK)
        return nullptr;
    logHead = const_cast<const void*>(region);
    return logHead;
}

Moment Connection::Now()
{
    Moment moment;
    moment.ownChanges = sqlite3_total_changes64(database) + rollbacks;
    if (const void* const head = LogHead()) {
        std::memcpy(moment.logHead.data(), head, sizeof moment.logHead);
        moment.known = true;
    }
    return moment;
}

bool Connection::IsStill(const Moment& moment) const
{
    return moment.known && moment.ownChanges == sqlite3_total_changes64(database) + rollbacks &&
           std::memcmp(moment.logHead.data(), logHead, sizeof moment.logHead) == 0;
}

void Connection::Checkpoint(int pages)
{
    logPages = pages;
    if (pages < pagesBeforeCheckpoint)
        return;
    sqlite3_wal_checkpoint_v2(database, "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

void Connection::Idle()
{
    Settle();
    if (logPages < pagesBeforeIdleCheckpoint || inTransaction || editLocks > 0)
        return;
    logPages = 0;
    sqlite3_wal_checkpoint_v2(database, "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

} // namespace dao
