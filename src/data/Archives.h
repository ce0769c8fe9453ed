#pragma once

#include "platform/store/ArchiveCopy.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

/// Making, keeping, checking and restoring the copies of a practice's database in its folder "ARCHIVES".
namespace data {

/// A database file in "ARCHIVES", described by its name and modification time; its content isn't read.
struct ArchivedCopy {
    enum class Kind {
        Latest,     ///< "ZEP_ONE.MDB": made at the last shutdown
        Generation, ///< "ZEP_ONE 2026-11-23.MDB": the last copy of that day
        Other,      ///< another name, or another folder
        Replaced    ///< "ZEP_ONE avant restauration 2026-11-24 18-02-33.MDB": never offered, never deleted
    };

    QString path;
    Kind kind = Kind::Latest;
    QDateTime changed; ///< local time

    QString Name() const;
    /// The day whose work it contains: from its name if that has one, otherwise from its modification time.
    QDate Day() const;
};

/// Describes any file as a copy.
ArchivedCopy CopyAt(const QString& path);

/// The folder of the copies: "ARCHIVES", or the folder of the link's target if the latest copy is a symbolic link.
QString CopiesFolder(const QString& folder);

/// The copies of a practice, newest first; replaced files come last. Empty without "ARCHIVES".
QList<ArchivedCopy> ArchivedCopies(const QString& folder);

/// Raises 3049 when a copy is damaged, 3343 when it isn't this program's, is of a newer version or has a trigger or a
/// view, 3024 when it is missing. All pages and indexes are checked, unless an intact seal shows that the file is
/// unchanged since its last check.
void RequireWhole(const QString& copy);

/// What RequireWhole raises, as a sentence for the user; empty for a whole copy.
QString FaultOf(const QString& copy);

/// The newest copy that is whole and not later than today or, with `before`, earlier than that day. Replaced files
/// don't count.
std::optional<ArchivedCopy> NewestWholeCopy(const QString& folder, const std::optional<QDate>& before = {});

/// Modification time as "23/11/2026 à 18:02".
QString MomentOf(const ArchivedCopy& copy);

/// Replaces the latest copy in "ARCHIVES" by a copy of the closed database, clearing write protection first. The
/// previous copy, if intact and of an earlier day, is kept under that day's name; dated copies outside the newest 7
/// days, 5 weeks and 12 months are deleted. Raises the errors of store::CopyDatabase; no copy changes then.
void CopyToArchives(const QString& folder, const store::CopyProgress& progress = {});

/// Raises 3187 while a program has the practice open.
void RequireClosed(const QString& folder);

/// Removes the leftovers of a killed restoration: a partial copy, and a kept file that is a hard link to the database.
/// Call it with the copies' folder locked.
void RemoveUnfinishedRestoration(const QString& folder);

/// Replaces a practice's database by a copy. The present database is kept, byte for byte and with its log, as
/// "ARCHIVES/ZEP_ONE avant restauration 2026-11-24 18-02-33.MDB", whose path is returned; empty when there was none.
///
/// At every moment the old or the new database is complete under its name, never beside the other's log. Raises 3187
/// while a program has the practice open, 3049 when the copy is damaged, 3343 when it is foreign or of a newer version,
/// 3024 when it is missing, 61 when the disk can't hold it; the database is then as it was.
QString Restore(const QString& copy, const QString& folder);

} // namespace data
