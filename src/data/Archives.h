#pragma once

#include "platform/dao/ArchiveCopy.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

/// The copies of a practice's database in its folder "ARCHIVES": how they are made, kept, checked and put back.
namespace data {

/// A file of "ARCHIVES" that holds a database, by its name and its last change. Nothing of it was read.
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

/// The folder that holds the copies: "ARCHIVES", or where the copy of the shutdown is linked to.
QString CopiesFolder(const QString& folder);

/// The copies of a practice, newest first; replaced files come last. Empty without "ARCHIVES".
QList<ArchivedCopy> ArchivedCopies(const QString& folder);

/// Raises 3049 when a copy is damaged, 3343 when it isn't this program's, is of a newer version or holds a trigger or a
/// view, 3024 when it is missing. All pages and indexes are checked unless the copy's seal tells that it is as it was
/// then: 3 s for a million acts, or a tenth of a second.
void RequireWhole(const QString& copy);

/// What RequireWhole raises, as a sentence for the user; empty for a whole copy.
QString FaultOf(const QString& copy);

/// The newest copy that is whole. Replaced files and copies dated later than today don't count; with `before`, neither
/// do those of that day and later ones.
std::optional<ArchivedCopy> NewestWholeCopy(const QString& folder, const std::optional<QDate>& before = {});

/// "23/11/2026 à 18:02": when a copy was last changed.
QString MomentOf(const ArchivedCopy& copy);

/// Copies the closed database of a practice over its copy in "ARCHIVES", whose attributes are cleared first when it is
/// write-protected. When the copy there is whole and of an earlier day it stays under that day's name, and the dated
/// ones go that aren't the newest of one of the last 7 days, 5 weeks or 12 months which have one. Raises the errors of
/// dao::CopyDatabase, and then no copy has changed.
void CopyToArchives(const QString& folder, const dao::CopyProgress& progress = {});

/// Raises 3187 while a program has the practice open.
void RequireClosed(const QString& folder);

/// Removes what a killed restoration has left: half a copy, and a kept file that is still the database itself. Only
/// while the folder of the copies is locked.
void RemoveUnfinishedRestoration(const QString& folder);

/// Puts a copy in the place of a practice's database. What is there stays, byte for byte and with its log, as
/// "ARCHIVES/ZEP_ONE avant restauration 2026-11-24 18-02-33.MDB", whose path is returned; empty when there was none.
///
/// At every moment the old or the new database is whole under its name and without a log of the other one. Raises 3187
/// while a program has the practice open, 3049 when the copy is damaged, 3343 when it is foreign or of a newer version,
/// 3024 when it is missing, 61 when the disk can't hold it; the database is then as it was.
QString Restore(const QString& copy, const QString& folder);

} // namespace data
