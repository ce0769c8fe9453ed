#include "platform/store/FileWork.h"

#include "platform/host/OwnerOnly.h"
#include "platform/store/Errors.h"
#include "platform/store/Sqlite.h"

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

namespace store {

namespace {

/// The bytes that SQLite locks; a connection holds one of them for as long as it lives.
struct flock SqliteLock()
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0x40000000;
    lock.l_len = 512;
    return lock;
}

} // namespace

std::string SystemPath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

FileIdentity IdentityOf(const QString& path)
{
    constexpr qint64 nanoseconds = 1'000'000'000;
    struct stat state = {};
    if (::stat(SystemPath(path).c_str(), &state) != 0)
        return {};
    const auto moment = [](const timespec& time) { return time.tv_sec * nanoseconds + time.tv_nsec; };
    return {state.st_dev, state.st_ino, state.st_size, moment(state.st_mtim), moment(state.st_ctim)};
}

bool IsWritable(const QString& path)
{
    constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat state = {};
    const std::string name = SystemPath(path);
    return ::stat(name.c_str(), &state) == 0 && (state.st_mode & anyWrite) != 0 && ::access(name.c_str(), W_OK) == 0;
}

bool IsOpenElsewhere(const QString& path)
{
    const int file = ::open(SystemPath(path).c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    struct flock lock = SqliteLock();
    const bool isLocked = ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    ::close(file);
    return isLocked;
}

qint64 RoomOf(const QString& path)
{
    constexpr qint64 bytesOfBlock = 512;
    struct stat state = {};
    return ::stat(SystemPath(path).c_str(), &state) == 0 && state.st_nlink == 1 ? state.st_blocks * bytesOfBlock : 0;
}

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

void OpenFile::SetTimeOf(const OpenFile& other) const
{
    struct stat state = {};
    if (::fstat(other.file, &state) != 0)
        return;
    const struct timespec times[] = {state.st_atim, state.st_mtim};
    ::futimens(file, times); // some file systems keep no such times
}

bool OpenFile::TryLock() const
{
    return ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

bool OpenFile::TryLockDatabase() const
{
    struct flock lock = SqliteLock();
    return ::fcntl(file, F_OFD_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES);
}

DatabaseHold::DatabaseHold(const QString& path)
{
    if (!IsWritable(path))
        return;
    file.emplace(path, O_RDWR);
    if (!file->TryLockDatabase())
        throw RuntimeError(Error::Locked);
}

void Sync(const QString& path)
{
    OpenFile(path, O_RDONLY).Sync();
}

FolderLock::FolderLock(const QString& path, Wait wait) : folder(path, O_RDONLY | O_DIRECTORY)
{
    constexpr int longestWait = 60'000; // ms
    constexpr int betweenTries = 20;
    for (int waited = 0; !folder.TryLock(); waited += betweenTries) {
        if (wait == Wait::No || waited > longestWait)
            throw RuntimeError(Error::PermissionDenied);
        ::usleep(betweenTries * 1000);
    }
}

void RemoveDatabase(const QString& path)
{
    for (const char* const ending : {"", "-journal", "-wal", "-shm"})
        QFile::remove(path + ending);
}

QString PartOf(const QString& target)
{
    QString part = target + ".part";
    for (int i = 2;; ++i) {
        RemoveDatabase(part);
        const QFileInfo file(part);
        if (!file.exists() && !file.isSymLink())
            return part;
        part = target + ".part" + QString::number(i);
    }
}

void Replace(const QString& path, const QString& target)
{
    if (std::rename(SystemPath(path).c_str(), SystemPath(target).c_str()) != 0)
        RaiseFileError(errno, target);
    Sync(QFileInfo(target).absolutePath());
}

void CopyFile(const QString& path, const QString& target)
{
    const auto ownerOnly = host::ForOwnerOnly();
    const OpenFile from(path, O_RDONLY);
    const OpenFile made(target, O_WRONLY | O_CREAT | O_EXCL);
    auto removeHalf = qScopeGuard([&target] { QFile::remove(target); });
    made.AppendAll(from);
    made.SetTimeOf(from);
    made.Sync();
    Sync(QFileInfo(target).absolutePath());
    removeHalf.dismiss();
}

void LinkFile(const QString& path, const QString& target)
{
    if (::link(SystemPath(path).c_str(), SystemPath(target).c_str()) != 0) {
        if (errno == EXDEV || errno == EPERM || errno == EMLINK || errno == ENOSYS || errno == EOPNOTSUPP)
            return CopyFile(path, target);
        RaiseFileError(errno, target);
    }
    Sync(QFileInfo(target).absolutePath());
}

bool IsSameFile(const QString& path, const QString& other)
{
    const FileIdentity one = IdentityOf(path);
    return one != FileIdentity() && one.IsSameFile(IdentityOf(other));
}

} // namespace store
