#pragma once

#include <QByteArray>
#include <QString>

namespace tests {

/// A disk of its own, empty, laid over a folder for as long as this object lives and seen by this process alone.
///
/// It takes the administrator's rights. Without them there is none, which is said in the test's output: what the disk
/// would show must be shown in another way as well.
class SmallDisk {
public:
    SmallDisk(const QString& folder, qint64 kilobytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool IsThere() const { return mounted; }
    void MakeReadOnly() const;

private:
    QByteArray place;
    bool mounted = false;
};

} // namespace tests
