#pragma once

#include <QString>

namespace host {

/// The path of `name` in `folder`. A name that exists there in other upper and lower case is taken as it is on the
/// disk, since data folders move between systems; `name` may have several parts ("ARCHIVES/ZEP_ONE.MDB"), each looked
/// up so.
QString PathIn(const QString& folder, const QString& name);

/// The folder of a file that comes with the program rather than with a practice: the program's own folder, or
/// ../share/zep-lumo of an installed program. The former when neither has it.
QString FolderOfOwnFile(const QString& programFolder, const QString& name);

/// The folder that a drive text names: on systems with drive letters "C:" is the root of C; elsewhere the colon is
/// taken off and the rest is a path, "/:" the root. Empty when there is no such folder.
QString DriveFolder(const QString& drive);

/// Whether a directory search finds the path (wildcards * and ? in its last part match, case is ignored). Attribute 0
/// looks for plain files only; 16 finds folders as well.
bool FileExists(const QString& path, int attributes);

/// File attributes as the rules count them: 0 plain, 1 read-only, 32 archive. Raises 53 when the file is missing.
int FileAttributes(const QString& path);
/// Sets them; 0 makes the file writable by its owner. Raises 53 when missing, 75 when refused.
void SetFileAttributes(const QString& path, int attributes);

/// What was written of the file, or made in the folder, is on the disk when this returns. Raises 53 when it is missing,
/// 57 when the disk reports a failure.
void Sync(const QString& path);

} // namespace host
