#include "platform/host/SystemErrors.h"
#include "platform/host/System_windows.h"

namespace host {

Obstacle ObstacleOf(int systemError)
{
    switch (systemError) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case ErrorDiskQuotaExceeded:
    case ERROR_FILE_TOO_LARGE:
        return Obstacle::FullDisk;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return Obstacle::Refused;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
        return Obstacle::NameTaken;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return Obstacle::NoSuchPath;
    default:
        return Obstacle::Other;
    }
}

int LastSystemError()
{
    return int(::GetLastError());
}

} // namespace host
