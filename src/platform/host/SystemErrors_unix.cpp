#include "platform/host/SystemErrors.h"

#include <cerrno>

namespace host {

Obstacle ObstacleOf(int systemError)
{
    switch (systemError) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return Obstacle::FullDisk;
    case EACCES:
    case EPERM:
    case EROFS:
        return Obstacle::Refused;
    case EEXIST:
        return Obstacle::NameTaken;
    case ENOENT:
    case ENOTDIR:
        return Obstacle::NoSuchPath;
    default:
        return Obstacle::Other;
    }
}

int LastSystemError()
{
    return errno;
}

} // namespace host
