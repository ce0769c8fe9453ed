#include "platform/host/SystemErrors.h"

#include "platform/basic/RuntimeError.h"

#include <QFileInfo>

namespace host {

void RaiseDiskFull(const QString& path)
{
    const QFileInfo file(path);
    throw basic::RuntimeError(basic::Error::DiskFull, file.isDir() ? file.filePath() : file.absolutePath());
}

void RaiseFileError(int systemError, const QString& path)
{
    switch (ObstacleOf(systemError)) {
    case Obstacle::FullDisk:
        RaiseDiskFull(path);
    case Obstacle::Refused:
        throw basic::RuntimeError(basic::Error::PermissionDenied);
    case Obstacle::NameTaken:
        throw basic::RuntimeError(basic::Error::FileExists);
    case Obstacle::NoSuchPath:
        throw basic::RuntimeError(basic::Error::PathNotFound);
    case Obstacle::Other:
        break;
    }
    throw basic::RuntimeError(basic::Error::PathAccess);
}

} // namespace host
