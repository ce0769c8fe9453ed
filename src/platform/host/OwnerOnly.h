#pragma once

#include <QScopeGuard>
#include <sys/stat.h>

namespace host {

/// Files created during the lifetime of the returned guard are readable by their owner only.
[[nodiscard]] inline auto ForOwnerOnly()
{
    return qScopeGuard([before = ::umask(S_IRWXG | S_IRWXO)] { ::umask(before); });
}

} // namespace host
