#include "platform/dao/ArchiveCopy.h"

#include "platform/basic/RuntimeError.h"
#include "platform/dao/Connection.h"
#include "platform/dao/Opening.h"
#include "platform/dao/OwnerOnly.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <map>

namespace dao {
namespace {

using RowCounts = std::map<std::string, qint64>;

/// Raises the file error that stands for the system's answer.
[[noreturn]] void RaiseFileError(int systemError)
{
    if (SaysDiskFull(systemError))
        throw basic::RuntimeError(basic::Error::DiskFull);
    switch (systemError) {
    case EACCES:
    case EPERM:
    case EROFS:
        throw basic::RuntimeError(basic::Error::PermissionDenied);
    case ENOENT:
    case ENOTDIR:
        throw basic::RuntimeError(basic::Error::PathNotFound);
    default:
        throw basic::RuntimeError(basic::Error::PathAccess);
    }
}

/// As Check, for the side that is written: what stopped the writing is told as a file error.
void CheckWriting(sqlite3* database, int code)
{
    const int kind = code & 0xff;
    if (kind == SQLITE_CANTOPEN || kind == SQLITE_IOERR || kind == SQLITE_READONLY || kind == SQLITE_PERM)
        RaiseFileError(sqlite3_system_errno(database));
    Check(database, code);
}

/// The half-made copy: gone on every way out but the renaming.
class PartFile {
public:
    explicit PartFile(QString part) : path(std::move(part)) { Remove(); }
    ~PartFile() { Remove(); }
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    const QString& Path() const { return path; }

private:
    void Remove()
    {
        for (const char* const beside : {"", "-journal", "-wal", "-shm"})
            QFile::remove(path + beside);
    }
    QString path;
};

/// A file or folder opened to have it written through to the disk.
void Sync(const QString& path, int flags)
{
    const int file = ::open(SystemPath(path).c_str(), flags | O_CLOEXEC);
    if (file < 0)
        RaiseFileError(errno);
    const int answer = ::fsync(file);
    const int problem = errno;
    ::close(file);
    if (answer != 0)
        RaiseFileError(problem);
}

StoreHandle OpenSource(const QString& path)
{
    sqlite3* opened = nullptr;
    // For reading and writing, as far as it may be written: only then the log is tidied away again at the end.
    const int code =
        sqlite3_open_v2(SystemPath(path).c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    StoreHandle handle(opened);
    Check(opened, code);
    sqlite3_extended_result_codes(opened, 1);
    sqlite3_busy_timeout(opened, busyMilliseconds);
    return handle;
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

void CopyPages(sqlite3* source, sqlite3* copy)
{
    constexpr int allPages = -1;
    constexpr int pauseMilliseconds = 20;
    sqlite3_backup* const backup = sqlite3_backup_init(copy, "main", source, "main");
    if (backup == nullptr)
        RaiseStoreError(copy, sqlite3_errcode(copy));
    QElapsedTimer waited;
    waited.start();
    int code = sqlite3_backup_step(backup, allPages);
    while ((code == SQLITE_BUSY || code == SQLITE_LOCKED) && waited.elapsed() < busyMilliseconds) {
        sqlite3_sleep(pauseMilliseconds);
        code = sqlite3_backup_step(backup, allPages);
    }
    const int systemError = sqlite3_system_errno(copy);
    const int finished = sqlite3_backup_finish(backup);
    if (code == SQLITE_DONE && finished == SQLITE_OK)
        return;
    if ((code & 0xff) == SQLITE_IOERR && systemError != 0)
        RaiseFileError(systemError);
    CheckWriting(copy, code == SQLITE_DONE ? finished : code);
}

/// Copies the source as it is at one moment; returns how many rows each table had then.
RowCounts WriteCopy(const QString& source, const QString& part)
{
    const StoreHandle from = OpenSource(source);
    RunOnce(from.get(), "begin"); // counts and pages are of the same moment
    const RowCounts counts = CountRows(from.get());

    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(SystemPath(part).c_str(), &opened,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    const StoreHandle copy(opened);
    CheckWriting(opened, code);
    sqlite3_extended_result_codes(opened, 1);
    CheckWriting(opened,
                 sqlite3_exec(opened, "pragma synchronous=off", nullptr, nullptr, nullptr)); // synced once, below
    CopyPages(from.get(), opened);
    CheckWriting(opened, sqlite3_exec(opened, "pragma journal_mode=delete", nullptr, nullptr, nullptr));
    return counts;
}

void CheckCopy(const QString& part, const QString& name, const RowCounts& expected)
{
    const StoreHandle copy = OpenForReading(part);
    if (!FirstDamage(copy.get()).isEmpty() || CountRows(copy.get()) != expected)
        throw basic::RuntimeError(basic::Error::DamagedDatabase, name);
}

void RequirePlaces(const QString& source, const QString& target)
{
    if (!QFileInfo(source).isFile())
        throw basic::RuntimeError(basic::Error::FileNotFound);
    const QFileInfo folder(QFileInfo(target).absolutePath());
    if (!folder.isDir())
        throw basic::RuntimeError(basic::Error::PathNotFound);
    if (!IsWritable(folder.filePath()))
        throw basic::RuntimeError(basic::Error::PermissionDenied);
    if (QFileInfo(target).isDir())
        throw basic::RuntimeError(basic::Error::PathAccess);
}

} // namespace

void CopyDatabase(const QString& source, const QString& target)
{
    RequirePlaces(source, target);
    const OwnerOnly ownerOnly;
    const QString folder = QFileInfo(target).absolutePath();
    const PartFile part(target + ".part");
    const RowCounts counts = WriteCopy(source, part.Path());
    CheckCopy(part.Path(), QFileInfo(source).fileName(), counts);
    Sync(part.Path(), O_RDWR);
    if (std::rename(SystemPath(part.Path()).c_str(), SystemPath(target).c_str()) != 0)
        RaiseFileError(errno);
    Sync(folder, O_RDONLY | O_DIRECTORY);
}

} // namespace dao
