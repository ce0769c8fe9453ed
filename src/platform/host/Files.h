#pragma once

#include <QString>
#include <QStringList>

namespace host {

/// The path of `name` in `folder`, with the spelling on the disk if it differs only in case, since data folders move
/// between systems. `name` may have several parts ("ARCHIVES/ZEP_ONE.MDB").
QString PathIn(const QString& folder, const QString& name);

/// The folder of a file installed with the program rather than with a practice: the program's folder or
/// ../share/zep-lumo; the former if neither has it.
QString FolderOfOwnFile(const QString& programFolder, const QString& name);

/// The folder of a drive text: "C:" is the root of C on systems with drive letters; elsewhere the colon is removed and
/// the rest is a path ("/:" is the root). Empty if there is no such folder.
QString DriveFolder(const QString& drive);

/// The drives of the machine ("C:"); none on systems without drive letters.
QStringList Drives();

/// Whether the path exists (wildcards * and ? in its last part, case-insensitive). Attributes 0: files only; 16:
/// folders as well.
bool FileExists(const QString& path, int attributes);

/// File attributes: 0 plain, 1 read-only, 32 archive. Raises 53 when the file is missing.
int FileAttributes(const QString& path);
/// Sets them; 0 makes the file writable by its owner. Raises 53 when missing, 75 when refused.
void SetFileAttributes(const QString& path, int attributes);

} // namespace host
