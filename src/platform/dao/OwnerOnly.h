#pragma once

#include <sys/stat.h>

namespace dao {

/// Files that are made during its life are readable by their owner alone.
class OwnerOnly {
public:
    OwnerOnly() : before(::umask(S_IRWXG | S_IRWXO)) {}
    ~OwnerOnly() { ::umask(before); }
    OwnerOnly(const OwnerOnly&) = delete;
    OwnerOnly& operator=(const OwnerOnly&) = delete;

private:
    mode_t before;
};

} // namespace dao
