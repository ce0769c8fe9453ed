#include "support/DeadlyWrites.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sqlite3.h>
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
