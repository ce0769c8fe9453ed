#pragma once

#include <QString>

namespace host {

/// What a system error means here.
enum class Obstacle : quint8 { FullDisk, Refused, NameTaken, NoSuchPath, Other };

/// Errors are numbers of the system: errno, or Windows' own.
Obstacle ObstacleOf(int systemError);
int LastSystemError();

/// Raises 61 with the name of the folder in which there is no more room.
[[noreturn]] void RaiseDiskFull(const QString& path);

/// Raises the run-time error of a system error: 61 with the name of the folder, 70, 58, 76 or 75.
[[noreturn]] void RaiseFileError(int systemError, const QString& path);

} // namespace host
