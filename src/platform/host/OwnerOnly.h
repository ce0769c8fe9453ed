#pragma once

#include <QString>

#include <memory>

namespace host {

/// Files created while this lives are readable by their owner only. On Windows a file has the rights of its folder
/// instead: see MakePrivate.
class OwnerOnly {
public:
    OwnerOnly();
    ~OwnerOnly();
    OwnerOnly(const OwnerOnly&) = delete;
    OwnerOnly& operator=(const OwnerOnly&) = delete;

private:
    unsigned before = 0;
};
[[nodiscard]] inline OwnerOnly ForOwnerOnly()
{
    return {};
}

/// Leaves a file or folder, with what will be created in it, to its owner (on Windows also to administrators). False
/// when that is refused, for example on a file system without rights.
bool MakePrivate(const QString& path);

} // namespace host
