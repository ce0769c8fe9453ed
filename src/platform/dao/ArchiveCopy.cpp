#include "platform/dao/ArchiveCopy.h"

#include "platform/basic/OwnerOnly.h"
#include "platform/dao/Errors.h"
#include "platform/dao/FileState.h"
#include "platform/dao/FileWork.h"
#include "platform/dao/Opening.h"
#include "platform/dao/Seal.h"

#include <QFileInfo>
#include <QScopeGuard>
#include <fcntl.h>
#include <sqlite3.h>

#include <map>

namespace dao {
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

/// Copies the source in one read transaction; returns how many rows each table had then.
RowCounts WriteCopy(const QString& source, const QString& part, const CopyProgress& progress)
{
    // For reading and writing, as far as it may be written: only then the log is removed again at the end.
    const SqliteHandle from = OpenHardened(source, SQLITE_OPEN_READWRITE);
    RunOnce(from.get(), "begin"); // counts and pages are of the same snapshot
    const RowCounts counts = CountRows(from.get());

    {
        const OpenFile made(part, O_RDWR | O_CREAT); // which says why when it can't be made
    }
    const SqliteHandle copy = OpenHardened(part, SQLITE_OPEN_READWRITE);
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

} // namespace

void CopyDatabase(const QString& linkedSource, const QString& linkedTarget, const CopySteps& steps)
{
    const QString source = BehindLinks(linkedSource);
    const QString target = BehindLinks(linkedTarget);
    RequirePlaces(source, target);
    const FolderLock alone(QFileInfo(target).absolutePath());
    const auto ownerOnly = basic::ForOwnerOnly();
    const QString part = target + ".part";
    RemoveDatabase(part); // of a program that died
    const auto removeAtEnd = qScopeGuard([&part] { RemoveDatabase(part); });
    const RowCounts counts = WriteCopy(source, part, steps.progress);
    CheckCopy(part, QFileInfo(source).fileName(), counts);
    Seal(part);
    OpenFile(part, O_RDWR).Sync();
    if (steps.beforeReplacing && QFileInfo::exists(target))
        steps.beforeReplacing(target);
    Replace(part, target);
}

} // namespace dao
