#include "platform/dao/FileState.h"

#include "platform/dao/Connection.h"
#include "platform/dao/FileHeader.h"

#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace dao {
namespace {

/// File identity: inode, size, mtime.
using FileIdentity = std::tuple<ino_t, off_t, time_t, long>;

FileIdentity IdentityOf(const QString& path)
{
    struct stat state = {};
    ::stat(SystemPath(path).c_str(), &state);
    return {state.st_ino, state.st_size, state.st_mtim.tv_sec, state.st_mtim.tv_nsec};
}

/// The files that this program has worked with and closed, as they were then.
std::map<QString, FileIdentity>& ClosedSound()
{
    static auto& files = *new std::map<QString, FileIdentity>; // never destroyed: a global handle may close later
    return files;
}

bool HasOpen(const QString& path)
{
    return std::ranges::any_of(OpenConnections(),
                               [&](const Connection* connection) { return connection->File() == path; });
}

} // namespace

std::string SystemPath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

QString BehindLinks(const QString& path)
{
    const QFileInfo file(path);
    return file.exists() ? file.canonicalFilePath() : file.isSymLink() ? file.symLinkTarget() : path;
}

void RequireFile(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        throw RuntimeError(Error::DatabaseNotFound, path);
    if (!file.isReadable())
        throw RuntimeError(Error::PermissionDenied);
}

bool IsWritable(const QString& path)
{
    constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat state = {};
    const std::string name = SystemPath(path);
    return ::stat(name.c_str(), &state) == 0 && (state.st_mode & anyWrite) != 0 && ::access(name.c_str(), W_OK) == 0;
}

bool HasLog(const QString& path)
{
    return QFileInfo(path + "-wal").size() != 0 || QFileInfo(path + "-journal").size() != 0;
}

QStringList LogsOf(const QString& path)
{
    QStringList logs;
    FileHeader header;
    if (QFileInfo(path + "-journal").size() != 0)
        logs << "-journal";
    if (QFileInfo(path + "-wal").size() != 0 && ReadHeader(OpenImmutable(path).get(), header) &&
        !header.IsInRollbackMode())
        logs << "-wal";
    return logs;
}

bool IsInUse(const QString& path)
{
    // Looked for first: closing a file of our own below would release the locks of our own connection.
    if (HasOpen(path))
        return true;
    const int file = ::open(SystemPath(path).c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    // The bytes that SQLite locks; a connection holds one of them for as long as it lives.
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0x40000000;
    lock.l_len = 512;
    const bool isLocked = ::fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    ::close(file);
    return isLocked;
}

OpenedFile::OpenedFile(sqlite3* opened, const QString& openedPath) : path(openedPath)
{
    struct stat state = {};
    ::stat(SystemPath(path).c_str(), &state);
    device = state.st_dev;
    inode = state.st_ino;
    FileHeader header;
    if (ReadHeader(opened, header))
        stamp = header.Stamp();
}

bool OpenedFile::IsInPlace(sqlite3* opened) const
{
    struct stat state = {};
    FileHeader header;
    return ::stat(SystemPath(path).c_str(), &state) == 0 && state.st_dev == device && state.st_ino == inode &&
           ReadHeader(opened, header) && header.Stamp() >= stamp;
}

bool RenameAside(const QString& path)
{
    QString aside = path + ".set-aside";
    for (int i = 2; QFileInfo::exists(aside); ++i)
        aside = path + ".set-aside-" + QString::number(i);
    return QFile::rename(path, aside);
}

void SetLogAside(const QString& path)
{
    if (RenameAside(path + "-wal"))
        QFile::remove(path + "-shm");
}

void RememberSound(const QString& path)
{
    ClosedSound()[path] = IdentityOf(path);
}

bool IsKnownSound(const QString& path)
{
    const auto closed = ClosedSound().find(path);
    return HasOpen(path) || (closed != ClosedSound().end() && closed->second == IdentityOf(path) && !HasLog(path));
}

} // namespace dao
