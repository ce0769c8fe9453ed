#pragma once

#include "platform/dao/Sqlite.h"

#include <QString>

namespace dao {

/// What marks a database as this program's, and the newest form of it that this program knows.
inline constexpr int applicationMark = 0x5A455031;
inline constexpr int SchemaVersion = 2;

/// Opens a database for reading and writing after all the checks that Workspace::OpenDatabase tells of. A file that is
/// refused is left as it was, and nothing is made beside it as far as the checks can do without.
StoreHandle OpenForWork(const QString& path);

/// To be called when this program has closed a database: as long as nobody else changes the file, opening it again
/// doesn't look over all its pages again.
void RememberSound(const QString& path);

/// Opens a database for looking at it only, whatever its state but with this program's mark: 3024, 3343. Makes no file
/// beside it unless a log is there.
StoreHandle OpenForReading(const QString& path);

/// The first damage that a quick look over all pages finds; empty for a sound file.
QString FirstDamage(sqlite3* database);

/// Whether the file or folder may be written, by its mode as well as by our rights (an administrator's rights go past a
/// mode that was meant to protect it).
bool IsWritable(const QString& path);

/// The path as the system's calls take it.
std::string SystemPath(const QString& path);

} // namespace dao
