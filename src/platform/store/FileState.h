#pragma once

#include <QStringList>

struct sqlite3;

namespace store {

/// Raises 3024 when there is no such file, 70 when it may not be read.
void RequireFile(const QString& path);

/// Whether a log or journal beside the file contains pages.
bool HasLog(const QString& path);

/// Suffixes ("-wal", "-journal") of logs that belong to the file. A "-wal" beside a file in rollback mode belongs to an
/// earlier file of that name.
QStringList LogsOf(const QString& path);

/// Whether a connection of this program or of another one has the database open.
bool IsInUse(const QString& path);

/// Databases that this program has open, once for each connection.
void NoteOpened(const QString& path);
void NoteClosed(const QString& path);

/// Renames the log of a file that was replaced, so that its pages reach no other file and aren't lost. Leaves it in
/// place when renaming is refused.
void SetLogAside(const QString& path);

/// Call after closing a database: until another program changes the file, opening it skips the page check.
void RememberSound(const QString& path);

/// Whether the file was checked when it was opened before and hasn't changed but by this program since.
bool IsKnownSound(const QString& path);

} // namespace store
