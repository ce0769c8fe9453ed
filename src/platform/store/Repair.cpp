#include "platform/store/Repair.h"

#include "platform/host/FileWork.h"
#include "platform/store/DamageCheck.h"
#include "platform/store/Errors.h"
#include "platform/store/FileHeader.h"
#include "platform/store/FileState.h"
#include "platform/store/Opening.h"

#include <QFileInfo>
#include <sqlite3.h>

namespace store {
namespace {

void RequireRepairable(const QString& path)
{
    const SqliteHandle immutable = OpenHardened(path, Access::Immutable);
    const FileHeader header = HeaderOf(immutable.get(), QFileInfo(path).fileName());
    if (IsInUse(path))
        throw RuntimeError(Error::Locked);
    if (!host::IsWritable(path) || !host::IsWritable(QFileInfo(path).absolutePath()))
        throw RuntimeError(Error::ReadOnly);
    SetForeignLogAside(path, header);
    if (!HasLog(path))
        RequireWholePages(header, path);
}

} // namespace

RepairTransaction::RepairTransaction(const QString& linkedPath)
{
    RequireFile(linkedPath);
    const QString path = host::BehindLinks(linkedPath);
    RequireRepairable(path);
    const bool hasLog = HasLog(path);
    database = OpenHardened(path, Access::Write);
    KeepLogAtClose(database.get(), hasLog); // it may help to examine a damaged file
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

void RepairTransaction::RaiseNextKey(const QString& table, qint64 above) const
{
    store::RaiseNextKey(database.get(), table, above);
}

void RepairTransaction::KeepAboveReferences(const KeyedTable& keyed) const
{
    store::KeepAboveReferences(database.get(), keyed);
}

void RepairTransaction::Commit()
{
    if (const QString damage = FirstDamage(database.get(), Thoroughness::Indexes); !damage.isEmpty())
        throw RuntimeError(Error::DamagedDatabase, damage);
    RunOnce(database.get(), "commit");
    KeepLogAtClose(database.get(), false);
}

} // namespace store
