#include "platform/dao/Connection.h"

#include "platform/store/Upgrade.h"

#include <QFileInfo>
#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace dao {
namespace {

constexpr std::size_t StatementsKept = 1000;
constexpr int PagesBeforeCheckpoint = 1000;    // of the log, checkpointed after a commit
constexpr int PagesBeforeIdleCheckpoint = 256; // of the log, checkpointed when idle

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
    database.reset();
    file.reset();
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

// -- writing

void Connection::RequireSameFile()
{
    std::exception_ptr failure;
    try {
        FinishAllReading(); // within an old snapshot, what others committed doesn't show
    } catch (const RuntimeError&) {
        failure = std::current_exception();
    }
    holder = Statement();
    CheckForReplacement();
    if (isReplaced)
        throw RuntimeError(Error::FileReplaced, QFileInfo(path).fileName());
    if (failure)
        std::rethrow_exception(failure);
}

void Connection::CheckForReplacement()
{
    if (isReplaced || file->IsInPlace())
        return;
    isReplaced = true;
    sqlite3_db_config(database.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    store::SetLogAside(path);
}

int Connection::Change(Plan& plan, const std::vector<Value>& literals)
{
    plan.statement.Bind(literals);
    RunChange(plan.statement);
    return changedRows;
}

int Connection::Change(const std::string& sql, const std::vector<Value>& parameters)
{
    Statement& change = Prepared(sql);
    change.Bind(parameters);
    RunChange(change);
    return changedRows;
}

int Connection::Run(const std::string& sql)
{
    FinishReading();
    store::RunOnce(Handle(), sql);
    return sqlite3_changes(database.get());
}

RepeatedStatement Connection::Prepare(const std::string& sql)
{
    return RepeatedStatement(Statement(Handle(), sql));
}

void Connection::Run(RepeatedStatement& repeated)
{
    FinishReading();
    repeated.statement.Run();
}

void Connection::RollBackIfOpen()
{
    if (sqlite3_get_autocommit(Handle()) == 0) // SQLite may have rolled back already, on a full disk for instance
        Prepared("rollback").Run();
}

QString Connection::TemporaryFolder()
{
    char* name = nullptr;
    if (sqlite3_file_control(Handle(), "main", SQLITE_FCNTL_TEMPFILENAME, &name) != SQLITE_OK)
        return {};
    const QString folder = QFileInfo(QString::fromUtf8(name)).absolutePath();
    sqlite3_free(name);
    return folder;
}

void Connection::RunChange(Statement& change)
{
    const bool isOpen = sqlite3_get_autocommit(Handle()) == 0;
    if (isOpen)
        FinishAllReading();
    else
        Begin();
    try {
        change.Run();
    } catch (...) {
        if (!isOpen)
            Rollback();
        throw;
    }
    changedRows = sqlite3_changes(database.get());
    lastAddedKey = sqlite3_last_insert_rowid(database.get());
    if (inTransaction)
        return;
    // A pending edit's lock must not delay a change that is reported as done.
    editing = nullptr;
    Commit();
}

void Connection::Begin()
{
    RequireSameFile();
    Prepared("begin immediate").Run();
    changesAtBegin = sqlite3_total_changes64(database.get());
}

void Connection::Commit()
{
    try {
        const bool hasChanges = sqlite3_total_changes64(database.get()) != changesAtBegin;
        if (hasChanges)
            file->AddMark();
        Prepared("commit").Run();
        if (hasChanges)
            file->Committed();
    } catch (...) {
        Rollback();
        throw;
    }
}

void Connection::Rollback()
{
    ++rollbacks;
    RollBackIfOpen();
}

void Connection::BeginTransaction()
{
    if (inTransaction)
        throw RuntimeError(Error::NestedTransaction);
    if (std::exchange(editing, nullptr) == nullptr)
        Begin();
    else
        FinishAllReading();
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

void Connection::KeepKeysAboveReferences()
{
    FinishReading();
    for (const store::KeyedTable& keyed : rules.keyedTables)
        store::KeepAboveReferences(Handle(), keyed);
}

void Connection::LockForEdit(const RecordsetState& set)
{
    if (inTransaction)
        return;
    if (editing == nullptr)
        Begin();
    editing = &set;
}

void Connection::UnlockEdit(const RecordsetState& set) noexcept
{
    if (editing != &set)
        return;
    editing = nullptr;
    // RunChange has committed all writes: the transaction holds only the lock.
    try {
        FinishAllReading();
        RollBackIfOpen();
    } catch (const RuntimeError&) {
        // SQLite rolls it back when the file is closed.
    }
}

void Connection::NoteLogSize(int pages)
{
    logPages = pages;
    if (pages >= PagesBeforeCheckpoint)
        Checkpoint();
}

void Connection::Checkpoint()
{
    sqlite3_wal_checkpoint_v2(database.get(), "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
    file->Checkpointed();
}

bool Connection::HoldsAlone(const QString& canonicalPath) const
{
    return path == canonicalPath && file->IsHeldAlone();
}

void Connection::MoveLogIntoFile()
{
    RequireSameFile();
    store::Check(Handle(), sqlite3_wal_checkpoint_v2(Handle(), "main", SQLITE_CHECKPOINT_TRUNCATE, nullptr, nullptr));
    file->Checkpointed();
}

void Connection::Idle()
{
    FinishAllReading();
    holder = Statement();
    CheckForReplacement();
    if (!isReplaced && logPages >= PagesBeforeIdleCheckpoint && sqlite3_get_autocommit(database.get()) != 0) {
        logPages = 0;
        Checkpoint();
    }
    CheckForChanges();
}

} // namespace dao
