#pragma once

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// For tests of what Windows lacks: the system's headers, and a line that skips the rest of a test there.
#ifdef _WIN32
#define NEEDS_UNIX(what) GTEST_SKIP() << "Windows has no " << (what)
#define O_NOCTTY 0

// Never called.
inline int mkfifo(const char*, int)
{
    return -1;
}
inline int symlink(const char*, const char*)
{
    return -1;
}
inline int setxattr(const char*, const char*, const void*, std::size_t, int)
{
    return -1;
}
inline int posix_openpt(int)
{
    return -1;
}
inline int grantpt(int)
{
    return -1;
}
inline int unlockpt(int)
{
    return -1;
}
inline const char* ptsname(int)
{
    return "";
}
#else
#include <cstdlib>
#include <sys/xattr.h>
#define NEEDS_UNIX(what) static_cast<void>(what)
#endif
