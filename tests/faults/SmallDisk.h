#pragma once

#include <QByteArray>
#include <QString>

namespace tests {

/// A small empty disk mounted on a folder during the lifetime of this object, visible to this process only.
///
/// Needs root. Otherwise nothing is mounted, and the test is to be skipped with a reason.
class SmallDisk {
public:
    SmallDisk(const QString& folder, qint64 kilobytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsMounted() const { return mounted; }
    void MakeReadOnly() const;

private:
    QByteArray place;
    bool mounted = false;
};

} // namespace tests
