#include "platform/store/SystemErrors.h"

#include "platform/store/Errors.h"

#include <QFileInfo>

namespace store {

void RaiseDiskFull(const QString& path)
{
    const QFileInfo file(path);
    throw RuntimeError(Error::DiskFull, file.isDir() ? file.filePath() : file.absolutePath());
}

void RaiseFileError(int systemError, const QString& path)
{
    switch (ObstacleOf(systemError)) {
    case Obstacle::FullDisk:
        RaiseDiskFull(path);
    case Obstacle::Refused:
        throw RuntimeError(Error::PermissionDenied);
    case Obstacle::NameTaken:
        throw RuntimeError(Error::FileExists);
    case Obstacle::NoSuchPath:
        throw RuntimeError(Error::PathNotFound);
    case Obstacle::Other:
        break;
    }
    throw RuntimeError(Error::PathAccess);
}

} // namespace store
