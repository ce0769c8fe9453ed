#include "platform/dao/Connection.h"

#include "platform/store/FileState.h"
#include "platform/store/Upgrade.h"

#include <QFileInfo>
#include <sqlite3.h>

#include <exception>
#include <utility>

namespace dao {
namespace {

constexpr int PagesBeforeCheckpoint = 1000;    // of the log, checkpointed after a commit
constexpr int PagesBeforeIdleCheckpoint = 256; // of the log, checkpointed when idle

} // namespace

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
