#include "platform/dao/FileWork.h"

#include "platform/basic/OwnerOnly.h"
#include "platform/dao/Errors.h"
#include "platform/dao/FileState.h"
#include "platform/dao/Sqlite.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace dao {

void RaiseFileError(int systemError, const QString& path)
{
    if (IsDiskFull(systemError))
        RaiseDiskFull(path);
    if (systemError == EACCES || systemError == EPERM || systemError == EROFS)
        throw RuntimeError(Error::PermissionDenied);
    if (systemError == EEXIST)
        throw RuntimeError(Error::FileExists);
    throw RuntimeError(systemError == ENOENT || systemError == ENOTDIR ? Error::PathNotFound : Error::PathAccess);
}

OpenFile::OpenFile(const QString& path, int flags)
    : name(path), file(::open(SystemPath(path).c_str(), flags | O_CLOEXEC, 0600))
{
    if (file < 0)
        RaiseFileError(errno, name);
}

OpenFile::~OpenFile()
{
    ::close(file);
}

void OpenFile::Sync() const
{
    if (::fsync(file) != 0)
        RaiseFileError(errno, name);
}

void OpenFile::AppendAll(const OpenFile& from) const
{
    constexpr std::size_t atATime = std::size_t{16} << 20;
    ssize_t copied = 0;
    while ((copied = ::sendfile(file, from.file, nullptr, atATime)) > 0) {
    }
    if (copied < 0)
        RaiseFileError(errno, name);
}

bool OpenFile::TryLock() const
{
    return ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

FolderLock::FolderLock(const QString& path) : folder(path, O_RDONLY | O_DIRECTORY)
{
    constexpr int longestWait = 60'000; // ms
    constexpr int betweenTries = 20;
    for (int waited = 0; !folder.TryLock(); waited += betweenTries) {
        if (waited > longestWait)
            throw RuntimeError(Error::PermissionDenied);
        ::usleep(betweenTries * 1000);
    }
}

void RemoveDatabase(const QString& path)
{
    for (const char* const ending : {"", "-journal", "-wal", "-shm"})
        QFile::remove(path + ending);
}

void Replace(const QString& path, const QString& target)
{
    if (std::rename(SystemPath(path).c_str(), SystemPath(target).c_str()) != 0)
        RaiseFileError(errno, target);
    OpenFile(QFileInfo(target).absolutePath(), O_RDONLY | O_DIRECTORY).Sync();
}

void CopyFile(const QString& path, const QString& target)
{
    const auto ownerOnly = basic::ForOwnerOnly();
    const OpenFile from(path, O_RDONLY);
    const OpenFile made(target, O_WRONLY | O_CREAT | O_EXCL);
    auto removeHalf = qScopeGuard([&target] { QFile::remove(target); });
    made.AppendAll(from);
    made.Sync();
    OpenFile(QFileInfo(target).absolutePath(), O_RDONLY | O_DIRECTORY).Sync();
    removeHalf.dismiss();
}

void LinkFile(const QString& path, const QString& target)
{
    if (::link(SystemPath(path).c_str(), SystemPath(target).c_str()) != 0) {
        if (errno == EXDEV || errno == EPERM || errno == EMLINK || errno == ENOSYS || errno == EOPNOTSUPP)
            return CopyFile(path, target);
        RaiseFileError(errno, target);
    }
    OpenFile(QFileInfo(target).absolutePath(), O_RDONLY | O_DIRECTORY).Sync();
}

bool IsSameFile(const QString& path, const QString& other)
{
    struct stat one = {};
    struct stat two = {};
    return ::stat(SystemPath(path).c_str(), &one) == 0 && ::stat(SystemPath(other).c_str(), &two) == 0 &&
           one.st_dev == two.st_dev && one.st_ino == two.st_ino;
}

} // namespace dao
