#include "platform/host/SystemErrors.h"
#include "platform/host/SystemFile.h"

#include <QFile>
#include <QSet>
#include <QStorageInfo>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>

namespace host {
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

int FlagsOf(OpenFile::Access access)
{
    switch (access) {
    case OpenFile::Access::Read:
        return O_RDONLY;
    case OpenFile::Access::Write:
        return O_RDWR;
    case OpenFile::Access::Create:
        return O_RDWR | O_CREAT;
    case OpenFile::Access::CreateNew:
        break;
    }
    return O_WRONLY | O_CREAT | O_EXCL;
}

class LockedFolder : public FolderHold {
public:
    explicit LockedFolder(int opened) : folder(opened) {}
    ~LockedFolder() override { ::close(folder); }
    Q_DISABLE_COPY_MOVE(LockedFolder)

private:
    int folder;
};

} // namespace

const char* const SqliteSystem = nullptr;

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

bool IsOnShare(const QString& path)
{
    static const QSet<QByteArray> types = {"nfs",        "nfs4",        "cifs",  "smb3",       "smbfs",
                                           "afs",        "ceph",        "9p",    "fuse.sshfs", "fuse.glusterfs",
                                           "fuse.davfs", "fuse.rclone", "ncpfs", "coda",       "fuse.gvfsd-fuse"};
    return types.contains(QStorageInfo(path).fileSystemType());
}

qint64 RoomOf(const QString& path)
{
    constexpr qint64 bytesOfBlock = 512;
    struct stat state = {};
    return ::stat(SystemPath(path).c_str(), &state) == 0 && state.st_nlink == 1 ? state.st_blocks * bytesOfBlock : 0;
}

QByteArray AttributeOf(const QString& path, const char* name)
{
    std::array<char, 128> bytes{};
    const ssize_t length = ::getxattr(SystemPath(path).c_str(), name, bytes.data(), bytes.size());
    return {bytes.data(), qMax(length, ssize_t{0})};
}

OpenFile::OpenFile(const QString& path, Access access)
    : name(path), file(::open(SystemPath(path).c_str(), FlagsOf(access) | O_CLOEXEC, 0600))
{
    if (file < 0)
        RaiseFileError(errno, name);
}

OpenFile::~OpenFile()
{
    ::close(int(file));
}

void OpenFile::Sync() const
{
    if (::fsync(int(file)) != 0)
        RaiseFileError(errno, name);
}

void OpenFile::AppendAll(const OpenFile& from) const
{
    constexpr std::size_t atATime = std::size_t{16} << 20;
    ssize_t copied = 0;
    while ((copied = ::sendfile(int(file), int(from.file), nullptr, atATime)) > 0) {
    }
    if (copied < 0)
        RaiseFileError(errno, name);
}

void OpenFile::SetTimeOf(const OpenFile& other) const
{
    struct stat state = {};
    if (::fstat(int(other.file), &state) != 0)
        return;
    const struct timespec times[] = {state.st_atim, state.st_mtim};
    ::futimens(int(file), times); // some file systems keep no such times
}

bool OpenFile::TryLockDatabase() const
{
    struct flock lock = SqliteLock();
    return ::fcntl(int(file), F_OFD_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES);
}

void Sync(const QString& path)
{
    OpenFile(path, OpenFile::Access::Read).Sync();
}

std::unique_ptr<const FolderHold> TryToHold(const QString& folder)
{
    const int opened = ::open(SystemPath(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        RaiseFileError(errno, folder);
    auto hold = std::make_unique<const LockedFolder>(opened);
    if (::flock(opened, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return nullptr;
    return hold; // also on file systems without locks
}

void RemoveFile(const QString& path)
{
    QFile::remove(path);
}

void RenameOver(const QString& path, const QString& target)
{
    if (std::rename(SystemPath(path).c_str(), SystemPath(target).c_str()) != 0)
        RaiseFileError(errno, target);
}

bool TryRenameOverHeld(const QString& path, const QString& target)
{
    RenameOver(path, target);
    return true;
}

bool TryRenameFolder(const QString& path, const QString& target)
{
    return std::rename(SystemPath(path).c_str(), SystemPath(target).c_str()) == 0;
}

bool TryLink(const QString& path, const QString& target)
{
    if (::link(SystemPath(path).c_str(), SystemPath(target).c_str()) == 0)
        return true;
    if (errno == EXDEV || errno == EPERM || errno == EMLINK || errno == ENOSYS || errno == EOPNOTSUPP)
        return false;
    RaiseFileError(errno, target);
}

} // namespace host
