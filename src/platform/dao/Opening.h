#pragma once

#include "platform/dao/Sqlite.h"

#include <QString>

namespace dao {

struct FileHeader;

/// Opens a connection in which nothing that the file holds may make SQLite do more than keep rows. `flags` are those of
/// sqlite3_open_v2.
SqliteHandle OpenHardened(const QString& path, int flags);

/// Opens a database for reading and writing after all the checks that Workspace::OpenDatabase lists. A file that is
/// refused is left as it was, and nothing is made beside it as far as the checks can do without.
SqliteHandle OpenForWork(const QString& path);

/// A log beside a file in rollback mode was left by another file that had this name, before an archive copy was put
/// back: its pages must not get into this one. It is kept under a name that SQLite doesn't look for. Raises 75 when
/// that is refused.
void SetForeignLogAside(const QString& path, const FileHeader& header);

/// Moves the whole log into the file and removes it. Raises 3049 when the file or the log is damaged.
void MoveLogIntoFile(const QString& path);

/// Opens a database for looking at it only, whatever its state but with this program's mark: 3024, 3343. Makes no file
/// beside it unless a log is there.
SqliteHandle OpenForReading(const QString& path);

enum class Thoroughness : quint8 {
    Pages,  ///< every page and row
    Sums,   ///< also that the engine's SummedIndexes agree with their tables
    Indexes ///< also that each index agrees with its table: several times as long
};

/// The first damage that a check finds; empty for a sound file.
QString FirstDamage(sqlite3* database, Thoroughness thoroughness);

} // namespace dao
