#include "platform/store/Backup.h"

#include "platform/host/SystemErrors.h"
#include "platform/host/SystemFile.h"
#include "platform/store/Hardened.h"

#include <sqlite3.h>

namespace store {
namespace {

/// As Check, for the side that is written: what stopped the writing is a file error.
void CheckWriting(sqlite3* database, int code, const QString& path)
{
    const int kind = code & 0xff;
    if (kind == SQLITE_CANTOPEN || kind == SQLITE_IOERR || kind == SQLITE_READONLY || kind == SQLITE_PERM)
        host::RaiseFileError(sqlite3_system_errno(database), path);
    Check(database, code);
}

void CopyPages(sqlite3* source, sqlite3* copy, const QString& path, const CopyProgress& progress)
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
        host::RaiseFileError(systemError, path);
    CheckWriting(copy, code == SQLITE_DONE ? finished : code, path);
}

} // namespace

void BackUp(sqlite3* source, const QString& path, const CopyProgress& progress)
{
    {
        const host::OpenFile made(path, host::OpenFile::Access::Create); // which says why when it can't be made
    }
    const SqliteHandle copy = OpenHardened(path, Access::Write);
    RunOnce(copy.get(), "pragma synchronous=off");
    CopyPages(source, copy.get(), path, progress);
    CheckWriting(copy.get(), sqlite3_exec(copy.get(), "pragma journal_mode=delete", nullptr, nullptr, nullptr), path);
}

} // namespace store
