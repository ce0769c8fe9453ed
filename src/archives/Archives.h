#pragma once

#include "archives/ArchiveCopy.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

/// Making, keeping, checking and restoring the copies of a practice's database in its folder "ARCHIVES".
namespace archives {

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

/// The path of the latest copy.
QString PlainCopyOf(const QString& folder);

/// The folder of the copies: "ARCHIVES", or the folder of the link's target if the latest copy is a symbolic link.
QString CopiesFolder(const QString& folder);

/// The copies of a practice, newest first; replaced files come last. Empty without "ARCHIVES".
QList<ArchivedCopy> ArchivedCopies(const QString& folder);

/// What reading a copy shows of it.
struct CopyCondition {
    enum class Kind {
        Whole,   ///< byte for byte what was sealed, or without a seal and sound
        Changed, ///< sound, but not what was sealed
        Unusable ///< damaged, foreign, of a newer version, with a trigger or a view, or missing
    };
    Kind kind = Kind::Whole;
    QString reason;    ///< a sentence for the user; empty for a whole copy
    QByteArray digest; ///< of the bytes, if they were read for it
};

/// All pages and indexes are checked, unless an intact seal shows that the file is what was checked before.
CopyCondition ConditionOf(const QString& copy);

/// The same; raises 3049, 3343 or 3024 when a copy can't be used.
CopyCondition RequireUsable(const QString& copy);

/// The reason why a copy isn't whole, as a sentence for the user; empty for a whole one.
QString FaultOf(const QString& copy);

/// The newest copy that is whole and not later than today or, with `before`, earlier than that day; with `kind`, the
/// newest in that condition. Replaced files don't count.
std::optional<ArchivedCopy> NewestWholeCopy(const QString& folder, const std::optional<QDate>& before = {},
                                            CopyCondition::Kind kind = CopyCondition::Kind::Whole);

/// Modification time as "23/11/2026 à 18:02".
QString MomentOf(const ArchivedCopy& copy);

/// What the user should know of a copy that was made.
struct ArchiveNotes {
    QList<QDate> deletedDays; ///< whose copies made room for it on a full disk
    QString obstacle;         ///< path of what kept yesterday's copy from its name; empty if nothing did

    /// The sentences to show; empty for nothing.
    QString Text() const;
};

/// Replaces the latest copy in "ARCHIVES" by a copy of the closed database, clearing write protection first. The
/// previous copy, unless unusable or of today, is kept under its day's name; dated copies outside the newest 7 days, 5
/// weeks and 12 months are deleted.
///
/// On a full disk, copies that no rule keeps and then the oldest dated ones make room, but never the newest two, and
/// none if that wouldn't be enough. Raises the errors of CopyDatabase; no copy changes then.
ArchiveNotes CopyToArchives(const QString& folder, const store::CopyProgress& progress = {});

/// Removes what killed programs left in the folder of the practice and in that of the copies: files that are certainly
/// partial, and none that is being written now.
void RemoveLeftovers(const QString& folder);

/// Raises 3187 while a program has the practice open.
void RequireClosed(const QString& folder);

/// Replaces a practice's database by a copy. The present database is kept, byte for byte and with its log, as
/// "ARCHIVES/ZEP_ONE avant restauration 2026-11-24 18-02-33.MDB", whose path is returned; empty when there was none.
///
/// At every moment the old or the new database is complete under its name, never beside the other's log. Raises 3187
/// while a program has the practice open, 3049 when the copy is damaged or (unless accepted) not what was sealed, 3343
/// when it is foreign or of a newer version, 3024 when it is missing, 61 when the disk can't hold it; the database is
/// then as it was.
enum class Accepts : quint8 { WholeCopies, ChangedCopies };
QString Restore(const QString& copy, const QString& folder, Accepts accepts = Accepts::WholeCopies);

} // namespace archives
