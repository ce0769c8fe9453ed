#pragma once

#include "platform/dao/ArchiveCopy.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

/// The copies of a practice's database in its folder "ARCHIVES": how they are made, kept, checked and put back.
namespace data {

/// A database file in "ARCHIVES", described by its name and modification time; its content isn't read.
struct ArchivedCopy {
    enum class Kind {
        Latest,     ///< "ZEP_ONE.MDB": of the last shutdown
        Generation, ///< "ZEP_ONE 2026-11-23.MDB": the last copy of that day
        Other,      ///< another name, or another folder
        Replaced    ///< "ZEP_ONE avant restauration 2026-11-24 18-02-33.MDB": never offered, never cleared away
    };

    QString path;
    Kind kind = Kind::Latest;
    QDateTime changed; ///< local time

    QString Name() const;
    /// The day whose work it holds: that of its name where it has one, else of its last change.
    QDate Day() const;
};

/// The copy in a file, wherever it is.
ArchivedCopy CopyAt(const QString& path);

/// The folder of the copies: "ARCHIVES", or the folder of the link's target if the latest copy is a symbolic link.
QString CopiesFolder(const QString& folder);

/// The copies of a practice, newest first; replaced files come last. Empty without "ARCHIVES".
QList<ArchivedCopy> ArchivedCopies(const QString& folder);

/// Raises 3049 when a copy is damaged, 3343 when it isn't this program's, is of a newer version or has a trigger or a
/// view, 3024 when it is missing. All pages and indexes are checked (3 s for a million acts), unless an intact seal
/// shows that the file is unchanged since its last check (0.1 s).
void RequireWhole(const QString& copy);

/// What RequireWhole raises, as a sentence for the user; empty for a whole copy.
QString FaultOf(const QString& copy);

/// The newest copy that is whole. Replaced files and copies dated later than today don't count; with `before`, neither
/// do those of that day and later ones.
std::optional<ArchivedCopy> NewestWholeCopy(const QString& folder, const std::optional<QDate>& before = {});

/// "23/11/2026 à 18:02": when a copy was last changed.
QString MomentOf(const ArchivedCopy& copy);

/// Replaces the latest copy in "ARCHIVES" by a copy of the closed database, clearing write protection first. The
/// previous copy, if intact and of an earlier day, is kept under that day's name; dated copies outside the newest 7
/// days, 5 weeks and 12 months are deleted. Raises the errors of dao::CopyDatabase; no copy changes then.
void CopyToArchives(const QString& folder, const dao::CopyProgress& progress = {});

/// Raises 3187 while a program has the practice open.
void RequireClosed(const QString& folder);

/// Removes the leftovers of a killed restoration: a partial copy, and a kept file that is a hard link to the database.
/// The folder of the copies must be locked.
void RemoveUnfinishedRestoration(const QString& folder);

/// Puts a copy in the place of a practice's database. What is there stays, byte for byte and with its log, as
/// "ARCHIVES/ZEP_ONE avant restauration 2026-11-24 18-02-33.MDB", whose path is returned; empty when there was none.
///
/// At every moment the old or the new database is whole under its name and without a log of the other one. Raises 3187
/// while a program has the practice open, 3049 when the copy is damaged, 3343 when it is foreign or of a newer version,
/// 3024 when it is missing, 61 when the disk can't hold it; the database is then as it was.
QString Restore(const QString& copy, const QString& folder);

} // namespace data
