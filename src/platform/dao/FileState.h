#pragma once

#include <QString>
#include <QStringList>
#include <string>

struct sqlite3;

namespace dao {

/// The path as system calls take it.
std::string SystemPath(const QString& path);

/// The file itself that a path leads to; a link that leads nowhere is a missing file.
QString BehindLinks(const QString& path);

/// Raises 3024 when there is no such file, 70 when it may not be read.
void RequireFile(const QString& path);

/// Whether the file or folder may be written, by its mode as well as by our rights (an administrator's rights go past a
/// mode that was meant to protect it).
bool IsWritable(const QString& path);

/// Whether a log or journal lies beside the file, with pages that the file alone doesn't show.
bool HasLog(const QString& path);

/// The endings ("-wal", "-journal") of the logs beside the file that hold pages of it. A "-wal" beside a file in
/// rollback mode is of another file that had this name.
QStringList LogsOf(const QString& path);

/// Whether a connection of this program or of another one has the database open.
bool IsInUse(const QString& path);

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

/// Renames a file to a name with ".set-aside" that no file has yet. False when that is refused.
bool RenameAside(const QString& path);

/// Renames the log of a file that isn't ours any more, so that its pages get into no other file and nothing that was
/// saved is thrown away. Leaves it where it is when that is refused.
void SetLogAside(const QString& path);

/// To be called when this program has closed a database: as long as nobody else changes the file, opening it again
/// doesn't check all its pages again.
void RememberSound(const QString& path);

/// Whether the file was checked when it was opened before and hasn't changed but by this program since.
bool IsKnownSound(const QString& path);

} // namespace dao
