#include "platform/dao/Repair.h"

#include "platform/dao/Errors.h"
#include "platform/dao/FileHeader.h"
#include "platform/dao/FileState.h"
#include "platform/dao/Opening.h"

#include <QFileInfo>
#include <sqlite3.h>

namespace dao {
namespace {

/// Whether the end of the connection leaves a log where it is: one that is of no use to a damaged file can still be
/// looked at.
void KeepLog(sqlite3* database, bool keeps)
{
    sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, keeps ? 1 : 0, nullptr);
}

void RequireRepairable(const QString& path)
{
    const SqliteHandle immutable = OpenImmutable(path);
    const FileHeader header = HeaderOf(immutable.get(), QFileInfo(path).fileName());
    if (IsInUse(path))
        throw RuntimeError(Error::Locked);
    if (!IsWritable(path) || !IsWritable(QFileInfo(path).absolutePath()))
        throw RuntimeError(Error::ReadOnly);
    SetForeignLogAside(path, header);
    if (!HasLog(path))
        RequireWholePages(header, path);
}

} // namespace

RepairTransaction::RepairTransaction(const QString& linkedPath)
{
    RequireFile(linkedPath);
    const QString path = BehindLinks(linkedPath);
    RequireRepairable(path);
    const bool hasLog = HasLog(path);
    database = OpenHardened(path, SQLITE_OPEN_READWRITE);
    KeepLog(database.get(), hasLog);
    RunOnce(database.get(), "pragma synchronous=full");
    RunOnce(database.get(), "begin immediate");
    if (WholeAnswer(database.get(), "pragma user_version") > SchemaVersion)
        RaiseNewer(QFileInfo(path).fileName());
}

RepairTransaction::~RepairTransaction()
{
    if (sqlite3_get_autocommit(database.get()) == 0)
        sqlite3_exec(database.get(), "rollback", nullptr, nullptr, nullptr);
}

Statement RepairTransaction::Prepare(std::string_view sql) const
{
    return {database.get(), sql};
}

void RepairTransaction::Commit()
{
    if (const QString damage = FirstDamage(database.get(), Thoroughness::Indexes); !damage.isEmpty())
        throw RuntimeError(Error::DamagedDatabase, damage);
    RunOnce(database.get(), "commit");
    KeepLog(database.get(), false);
}

} // namespace dao
