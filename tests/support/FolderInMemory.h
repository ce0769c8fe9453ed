#pragma once

#include <QFileInfo>

namespace tests {

/// Creates temporary folders in memory if the system supports it: writes of a killed process survive there too, and
/// hundreds of commits don't wait for a disk. Declare it before the practice.
class FolderInMemory {
public:
    FolderInMemory()
    {
        if (QFileInfo("/dev/shm").isWritable())
            qputenv("TMPDIR", "/dev/shm");
    }
    ~FolderInMemory() { before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before); }
    FolderInMemory(const FolderInMemory&) = delete;
    FolderInMemory& operator=(const FolderInMemory&) = delete;

private:
    const QByteArray before = qgetenv("TMPDIR");
};

} // namespace tests
