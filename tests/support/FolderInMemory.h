#pragma once

#include <QByteArray>

#include <unistd.h>

namespace tests {

/// Makes new folders in memory where the system has such a place: what a killed process has written stays there as
/// well, and hundreds of commits don't wait for a disk. To be declared before the practice that shall lie there.
class FolderInMemory {
public:
    FolderInMemory()
    {
        if (access("/dev/shm", W_OK) == 0)
            qputenv("TMPDIR", "/dev/shm");
    }
    ~FolderInMemory() { before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before); }
    FolderInMemory(const FolderInMemory&) = delete;
    FolderInMemory& operator=(const FolderInMemory&) = delete;

private:
    const QByteArray before = qgetenv("TMPDIR");
};

} // namespace tests
