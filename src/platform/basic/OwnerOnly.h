#pragma once

#include <QScopeGuard>
#include <sys/stat.h>

namespace basic {

/// Files that are made while what it returns lives are readable by their owner alone.
[[nodiscard]] inline auto ForOwnerOnly()
{
    return qScopeGuard([before = ::umask(S_IRWXG | S_IRWXO)] { ::umask(before); });
}

} // namespace basic
