#include "archives/ArchiveCopy.h"

#include "archives/Seal.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/host/OwnerOnly.h"
#include "platform/store/Backup.h"
#include "platform/store/DamageCheck.h"
#include "platform/store/Opening.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <map>

namespace archives {
namespace {

using RowCounts = std::map<std::string, qint64>;

RowCounts CountRows(sqlite3* database)
{
    RowCounts counts;
    store::Statement tables(database, "select name from sqlite_schema where type='table' order by name");
    while (tables.Step()) {
        const std::string name = tables.TextAt(0);
        counts[name] = store::WholeAnswer(database, "select count(*) from " + store::Quoted(name));
    }
    return counts;
}

enum class Source : quint8 { Sound, Damaged };

/// Copies the source in one read transaction; returns how many rows each table of a sound one had then.
RowCounts WriteCopy(const QString& source, const QString& part, Source state, const store::CopyProgress& progress)
{
    // Read-write where permitted: a read-only connection leaves the log behind.
    const store::SqliteHandle from = store::OpenHardened(source, store::Access::Write);
    store::RunOnce(from.get(), "begin"); // counts and pages are of the same snapshot
    const RowCounts counts = state == Source::Sound ? CountRows(from.get()) : RowCounts();
    if (store::IsMoved(from.get()))
        throw basic::RuntimeError(basic::Error::FileReplaced, QFileInfo(source).fileName());
    store::BackUp(from.get(), part, progress);
    return counts;
}

void CheckCopy(const QString& part, const QString& name, const RowCounts& expected)
{
    const store::SqliteHandle copy = store::OpenForReading(part);
    if (!store::FirstDamage(copy.get(), store::Thoroughness::Indexes).isEmpty() || CountRows(copy.get()) != expected)
        throw basic::RuntimeError(basic::Error::DamagedDatabase, name);
}

void RequirePlaces(const QString& source, const QString& target)
{
    if (!QFileInfo(source).isFile())
        throw basic::RuntimeError(basic::Error::FileNotFound);
    const QFileInfo folder(QFileInfo(target).absolutePath());
    if (!folder.isDir())
        throw basic::RuntimeError(basic::Error::PathNotFound);
    if (!host::IsWritable(folder.filePath()))
        throw basic::RuntimeError(basic::Error::PermissionDenied);
    if (QFileInfo(target).isDir())
        throw basic::RuntimeError(basic::Error::PathAccess);
}

void Copy(const QString& linkedSource, const QString& linkedTarget, Source state, const CopySteps& steps)
{
    const QString source = host::BehindLinks(linkedSource);
    const QString target = host::BehindLinks(linkedTarget);
    RequirePlaces(source, target);
    const host::FolderLock alone(QFileInfo(target).absolutePath());
    const auto ownerOnly = host::ForOwnerOnly();
    const QString part = host::PartOf(target);
    const auto removeAtEnd = qScopeGuard([&part] { host::RemoveDatabase(part); });
    const RowCounts counts = WriteCopy(source, part, state, steps.progress);
    if (state == Source::Sound)
        CheckCopy(part, QFileInfo(source).fileName(), counts);
    host::Sync(part);
    const QByteArray digest = state == Source::Sound ? DigestOf(part) : QByteArray();
    if (steps.beforeReplacing && QFileInfo::exists(target))
        steps.beforeReplacing(target);
    ReplaceSealed(part, target, digest);
}

} // namespace

void CopyDatabase(const QString& source, const QString& target, const CopySteps& steps)
{
    Copy(source, target, Source::Sound, steps);
}

void CopyDamagedDatabase(const QString& source, const QString& target)
{
    Copy(source, target, Source::Damaged, {});
}

} // namespace archives
