#pragma once

#include "support/Unix.h"

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#endif

namespace tests {

#ifdef _WIN32
class FullDisk {
public:
    explicit FullDisk(unsigned long long) {} // never called
};
#else
/// Limits the size of files during its lifetime, as a full disk does.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit small = {bytes, before.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before = {};
    sighandler_t handler;
};
#endif

} // namespace tests
