#include "support/DeadlyWrites.h"

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tests {
namespace {

int made = 0;
int deadly = 0;

ssize_t Write(int file, const void* bytes, size_t size, off_t offset)
{
    ++made;
    const bool dies = made == deadly;
    const bool isCut = dies && made % 2 == 1;
    const ssize_t written = ::pwrite(file, bytes, isCut ? size / 2 : size, offset);
    if (dies)
        ::raise(SIGKILL);
    return written;
}

/// A step that is done whole or not at all: an odd one isn't done any more, after an even one the process dies.
template <class Work>
auto Step(Work work)
{
    ++made;
    if (made == deadly && made % 2 == 1)
        ::raise(SIGKILL);
    const auto result = work();
    if (made == deadly)
        ::raise(SIGKILL);
    return result;
}

} // namespace

void DieAtWrite(int number)
{
    deadly = number;
    made = 0;
    sqlite3_initialize();
    sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
    for (const char* const name : {"pwrite", "pwrite64"})
        EXPECT_EQ(vfs->xSetSystemCall(vfs, name, reinterpret_cast<sqlite3_syscall_ptr>(Write)), SQLITE_OK);
}

int WritesMade()
{
    return made;
}

} // namespace tests

// In the place of the system's own, for the program's code and for the libraries.
extern "C" {

int rename(const char* path, const char* target) noexcept
{
    return tests::Step([=] { return int(::syscall(SYS_renameat2, AT_FDCWD, path, AT_FDCWD, target, 0)); });
}

int link(const char* path, const char* target) noexcept
{
    return tests::Step([=] { return int(::syscall(SYS_linkat, AT_FDCWD, path, AT_FDCWD, target, 0)); });
}

int unlink(const char* path) noexcept
{
    return tests::Step([=] { return int(::syscall(SYS_unlinkat, AT_FDCWD, path, 0)); });
}

ssize_t sendfile(int to, int from, off_t* offset, size_t size) noexcept
{
    return tests::Step([=] { return ::syscall(SYS_sendfile, to, from, offset, size); });
}
}
