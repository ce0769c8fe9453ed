#include "faults/SmallDisk.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sched.h>
#include <string>
#include <sys/mount.h>

namespace tests {
namespace {

/// Whether this process may mount. Enters a mount namespace of its own, so that mounts are private and end with the
/// process.
bool HasItsOwnMounts()
{
    static const bool has =
        ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
    return has;
}

} // namespace

SmallDisk::SmallDisk(const QString& folder, qint64 kilobytes) : place(QFile::encodeName(folder))
{
    const std::string options = "mode=0700,size=" + std::to_string(kilobytes) + "k";
    mounted = HasItsOwnMounts() && ::mount("tmpfs", place.constData(), "tmpfs", 0, options.c_str()) == 0;
}

SmallDisk::~SmallDisk()
{
    EXPECT_TRUE(!mounted || ::umount(place.constData()) == 0);
}

void SmallDisk::MakeReadOnly() const
{
    ASSERT_EQ(::mount(nullptr, place.constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
}

} // namespace tests
