#include "support/DeadlySteps.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tests {
namespace {

bool isCounting = false;
int deadlyMoment = -1;
int part = 0;
std::vector<Moment> passed;
std::set<QByteArray> unsynced; // files that were written, folders whose names were changed
QStringList faults;

bool IsDeadlyNext()
{
    return static_cast<int>(passed.size()) == deadlyMoment;
}

void Pass(Moment::Kind kind)
{
    const int error = errno;
    if (IsDeadlyNext())
        ::raise(SIGKILL);
    passed.push_back({kind, part});
    errno = error;
}

/// A step that is done whole or not at all.
template <class Work>
int Step(Work work, Moment::Kind kind = Moment::AfterOther)
{
    const auto result = work();
    if (isCounting && result >= 0)
        Pass(kind);
    return static_cast<int>(result);
}

QByteArray PathOf(int file)
{
    char path[4096];
    const ssize_t size = ::readlink(("/proc/self/fd/" + QByteArray::number(file)).constData(), path, sizeof path);
    return {path, qMax(size, ssize_t{0})};
}

QByteArray FolderOf(const QByteArray& path)
{
    return path.left(path.lastIndexOf('/'));
}

bool IsFile(int file)
{
    struct stat state = {};
    return ::fstat(file, &state) == 0 && S_ISREG(state.st_mode) && state.st_nlink > 0;
}

/// `write` takes the number of bytes. Temporary files without a name don't count: no kill leaves anything of them.
template <class Write>
ssize_t WriteStep(int file, size_t size, Write write)
{
    if (!isCounting || !IsFile(file))
        return write(size);
    if (IsDeadlyNext()) {
        write(size / 2);
        ::raise(SIGKILL);
    }
    Pass(Moment::MidWrite);
    const ssize_t written = write(size);
    if (const QByteArray path = PathOf(file); !path.endsWith("-shm")) // which is made anew after a power cut
        unsynced.insert(path);
    Pass(Moment::AfterWrite);
    return written;
}

int SyncStep(int file, long number)
{
    if (isCounting)
        unsynced.erase(PathOf(file));
    return static_cast<int>(::syscall(number, file));
}

/// Before a file or folder gets another name, what is in it must be on the disk.
void RequireSynced(const QByteArray& path)
{
    for (const QByteArray& file : unsynced)
        if (file == path || file.startsWith(path + '/'))
            faults << "renamed before it was synced: " + QString::fromUtf8(file);
}

int RenameStep(const char* path, const char* target, unsigned flags)
{
    if (isCounting) {
        RequireSynced(path);
        unsynced.insert(FolderOf(target));
    }
    return Step([=] { return ::syscall(SYS_renameat2, AT_FDCWD, path, AT_FDCWD, target, flags); }, Moment::AfterName);
}

int LinkStep(const char* path, const char* target)
{
    if (isCounting)
        unsynced.insert(FolderOf(target));
    return Step([=] { return ::syscall(SYS_linkat, AT_FDCWD, path, AT_FDCWD, target, 0); }, Moment::AfterName);
}

int RemoveStep(const char* path, int flags)
{
    if (isCounting)
        unsynced.erase(path);
    return Step([=] { return ::syscall(SYS_unlinkat, AT_FDCWD, path, flags); }, Moment::AfterName);
}

int OpenStep(const char* path, int flags, mode_t mode)
{
    const auto open = [=] { return ::syscall(SYS_openat, AT_FDCWD, path, flags, mode); };
    const bool creates = isCounting && (flags & O_CREAT) != 0 && ::access(path, F_OK) != 0;
    return creates ? Step(open) : static_cast<int>(open());
}

mode_t ModeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

void DieAtMoment(int deadly)
{
    deadlyMoment = deadly;
    isCounting = true;
    Pass(Moment::AfterOther);
}

const std::vector<Moment>& Moments()
{
    return passed;
}

void EndPart()
{
    for (const QByteArray& path : unsynced)
        faults << "reported before it was synced: " + QString::fromUtf8(path);
    ++part;
}

const QStringList& SyncFaults()
{
    return faults;
}

} // namespace tests

// In the place of the system's own, for the program's code and for the libraries.
extern "C" {

ssize_t write(int file, const void* bytes, size_t size)
{
    return tests::WriteStep(file, size, [=](size_t part) { return ::syscall(SYS_write, file, bytes, part); });
}

ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset)
{
    return tests::WriteStep(file, size,
                            [=](size_t part) { return ::syscall(SYS_pwrite64, file, bytes, part, offset); });
}

ssize_t sendfile(int to, int from, off_t* offset, size_t size) noexcept
{
    struct stat source = {};
    const size_t whole = ::fstat(from, &source) == 0 ? std::min(size, static_cast<size_t>(source.st_size)) : size;
    return tests::WriteStep(to, whole, [=](size_t part) { return ::syscall(SYS_sendfile, to, from, offset, part); });
}

int fsync(int file)
{
    return tests::SyncStep(file, SYS_fsync);
}

int fdatasync(int file)
{
    return tests::SyncStep(file, SYS_fdatasync);
}

int ftruncate64(int file, off64_t size) noexcept
{
    return tests::Step([=] { return ::syscall(SYS_ftruncate, file, size); });
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = tests::ModeOf(flags, arguments);
    va_end(arguments);
    return tests::OpenStep(path, flags, mode);
}

int open(const char* path, int flags, ...) __attribute__((alias("open64")));

int rename(const char* path, const char* target) noexcept
{
    return tests::RenameStep(path, target, 0);
}

int renameat2(int, const char* path, int, const char* target, unsigned flags) noexcept
{
    return tests::RenameStep(path, target, flags); // nobody here passes a folder
}

int link(const char* path, const char* target) noexcept
{
    return tests::LinkStep(path, target);
}

int unlink(const char* path) noexcept
{
    return tests::RemoveStep(path, 0);
}

int rmdir(const char* path) noexcept
{
    return tests::RemoveStep(path, AT_REMOVEDIR);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    return tests::Step([=] { return ::syscall(SYS_mkdirat, AT_FDCWD, path, mode); });
}

int setxattr(const char* path, const char* name, const void* value, size_t size, int flags) noexcept
{
    return tests::Step([=] { return ::syscall(SYS_setxattr, path, name, value, size, flags); });
}
}
