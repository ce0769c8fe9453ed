#include "platform/store/ArchiveCopy.h"

#include "platform/host/OwnerOnly.h"
#include "platform/store/DamageCheck.h"
#include "platform/store/Errors.h"
#include "platform/store/FileState.h"
#include "platform/store/FileWork.h"
#include "platform/store/Opening.h"
#include "platform/store/Seal.h"
#include "platform/store/SystemErrors.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <sqlite3.h>

#include <map>

namespace store {
namespace {

using RowCounts = std::map<std::string, qint64>;

/// As Check, for the side that is written: what stopped the writing is a file error.
void CheckWriting(sqlite3* database, int code, const QString& path)
{
    const int kind = code & 0xff;
    if (kind == SQLITE_CANTOPEN || kind == SQLITE_IOERR || kind == SQLITE_READONLY || kind == SQLITE_PERM)
        RaiseFileError(sqlite3_system_errno(database), path);
    Check(database, code);
}

RowCounts CountRows(sqlite3* database)
{
    RowCounts counts;
    Statement tables(database, "select name from sqlite_schema where type='table' order by name");
    while (tables.Step()) {
        const std::string name = tables.TextAt(0);
        counts[name] = WholeAnswer(database, "select count(*) from " + Quoted(name));
    }
    return counts;
}

void CopyPages(sqlite3* source, sqlite3* copy, const QString& part, const CopyProgress& progress)
{
    constexpr int pagesAtATime = 2048; // 8 MB
    sqlite3_backup* const backup = sqlite3_backup_init(copy, "main", source, "main");
    if (backup == nullptr)
        RaiseSqliteError(copy, sqlite3_errcode(copy));
    int code = SQLITE_OK;
    while (code == SQLITE_OK) {
        code = sqlite3_backup_step(backup, pagesAtATime);
        const int total = sqlite3_backup_pagecount(backup);
        if (progress)
            progress(total - sqlite3_backup_remaining(backup), total);
    }
    const int systemError = sqlite3_system_errno(copy);
    const int finished = sqlite3_backup_finish(backup);
    if ((code & 0xff) == SQLITE_IOERR && systemError != 0)
        RaiseFileError(systemError, part);
    CheckWriting(copy, code == SQLITE_DONE ? finished : code, part);
}

enum class Source : quint8 { Sound, Damaged };

/// Copies the source in one read transaction; returns how many rows each table of a sound one had then.
RowCounts WriteCopy(const QString& source, const QString& part, Source state, const CopyProgress& progress)
{
    // Read-write where permitted: a read-only connection leaves the log behind.
    const SqliteHandle from = OpenHardened(source, Access::Write);
    RunOnce(from.get(), "begin"); // counts and pages are of the same snapshot
    const RowCounts counts = state == Source::Sound ? CountRows(from.get()) : RowCounts();
    if (IsMoved(from.get()))
        throw RuntimeError(Error::FileReplaced, QFileInfo(source).fileName());

    {
        const OpenFile made(part, OpenFile::Access::Create); // which says why when it can't be made
    }
    const SqliteHandle copy = OpenHardened(part, Access::Write);
    RunOnce(copy.get(), "pragma synchronous=off"); // synced once, below
    CopyPages(from.get(), copy.get(), part, progress);
    CheckWriting(copy.get(), sqlite3_exec(copy.get(), "pragma journal_mode=delete", nullptr, nullptr, nullptr), part);
    return counts;
}

void CheckCopy(const QString& part, const QString& name, const RowCounts& expected)
{
    const SqliteHandle copy = OpenForReading(part);
    if (!FirstDamage(copy.get(), Thoroughness::Indexes).isEmpty() || CountRows(copy.get()) != expected)
        throw RuntimeError(Error::DamagedDatabase, name);
}

void RequirePlaces(const QString& source, const QString& target)
{
    if (!QFileInfo(source).isFile())
        throw RuntimeError(Error::FileNotFound);
    const QFileInfo folder(QFileInfo(target).absolutePath());
    if (!folder.isDir())
        throw RuntimeError(Error::PathNotFound);
    if (!IsWritable(folder.filePath()))
        throw RuntimeError(Error::PermissionDenied);
    if (QFileInfo(target).isDir())
        throw RuntimeError(Error::PathAccess);
}

void Copy(const QString& linkedSource, const QString& linkedTarget, Source state, const CopySteps& steps)
{
    const QString source = BehindLinks(linkedSource);
    const QString target = BehindLinks(linkedTarget);
    RequirePlaces(source, target);
    const FolderLock alone(QFileInfo(target).absolutePath());
    const auto ownerOnly = host::ForOwnerOnly();
    const QString part = PartOf(target);
    const auto removeAtEnd = qScopeGuard([&part] { RemoveDatabase(part); });
    const RowCounts counts = WriteCopy(source, part, state, steps.progress);
    if (state == Source::Sound)
        CheckCopy(part, QFileInfo(source).fileName(), counts);
    Sync(part);
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

} // namespace store
