#pragma once

#include "platform/dao/Sqlite.h"

#include <QString>

namespace dao {

/// What marks a database as this program's, and the newest version of its tables that this program knows.
inline constexpr int ApplicationId = 0x5A455031;
inline constexpr int SchemaVersion = 2;

/// Opens a connection in which nothing that the file holds may make SQLite do more than keep rows. `flags` are those of
/// sqlite3_open_v2.
SqliteHandle OpenHardened(const QString& path, int flags);

/// Opens a database for reading and writing after all the checks that Workspace::OpenDatabase lists. A file that is
/// refused is left as it was, and nothing is made beside it as far as the checks can do without.
SqliteHandle OpenForWork(const QString& path);

/// The file behind an open database, as it was at its opening.
class OpenedFile {
public:
    OpenedFile(sqlite3* opened, const QString& path);

    /// Whether the path still leads to the same file, and the file was not overwritten by an older copy of itself.
    bool IsInPlace(sqlite3* opened) const;

private:
    QString path;
    quint64 device = 0;
    quint64 inode = 0;
    quint32 stamp = 0;
};

/// Renames the log of a file that isn't ours any more, so that its pages get into no other file and nothing that was
/// saved is thrown away. Leaves it where it is when that is refused.
void SetLogAside(const QString& path);

/// To be called when this program has closed a database: as long as nobody else changes the file, opening it again
/// doesn't check all its pages again.
void RememberSound(const QString& path);

/// Opens a database for looking at it only, whatever its state but with this program's mark: 3024, 3343. Makes no file
/// beside it unless a log is there.
SqliteHandle OpenForReading(const QString& path);

enum class Thoroughness : quint8 {
    Pages,  ///< every page and row
    Indexes ///< also that each index agrees with its table: several times as long
};

/// The first damage that a check finds; empty for a sound file.
QString FirstDamage(sqlite3* database, Thoroughness thoroughness);

/// Raises 3024 when there is no such file, 70 when it may not be read.
void RequireFile(const QString& path);

/// Whether the file or folder may be written, by its mode as well as by our rights (an administrator's rights go past a
/// mode that was meant to protect it).
bool IsWritable(const QString& path);

/// The path as system calls take it.
std::string SystemPath(const QString& path);

} // namespace dao
