#include "platform/store/Opening.h"

#include "platform/host/FileWork.h"
#include "platform/store/DamageCheck.h"
#include "platform/store/Errors.h"
#include "platform/store/FileHeader.h"
#include "platform/store/FileState.h"
#include "platform/store/Marks.h"
#include "platform/store/TextCompare.h"
#include "platform/store/Upgrade.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <sqlite3.h>

namespace store {
namespace {

/// The index that is summed most often takes 25 MB per million rows; the cache holds all of it.
constexpr auto CacheOfSums = "pragma cache_size=-49152"; // in KiB

[[noreturn]] void RaiseProtected(const QString& path)
{
    throw RuntimeError::Described(
        Error::ReadOnly,
        QStringLiteral("La base de données ou son dossier « %1 » est en lecture seule : rien ne pourrait y être "
                       "enregistré. Donnez-vous le droit d'y écrire, ou copiez le dossier sur un disque où vous "
                       "l'avez, puis recommencez.")
            .arg(QFileInfo(path).absolutePath()));
}

[[noreturn]] void RaiseHeldAlone()
{
    throw RuntimeError::Described(
        Error::Locked,
        "Le cabinet est sur un partage réseau, où un seul programme à la fois peut l'ouvrir, et un autre "
        "l'a ouvert. Fermez-le, puis recommencez.");
}

/// How a file is checked at its opening, which is not to take longer than a user notices.
Thoroughness ThoroughnessFor(const QString& path)
{
    constexpr qint64 largest = qint64{12} << 20; // bytes: about 0.3 s
    return QFileInfo(path).size() <= largest ? Thoroughness::Indexes : Thoroughness::Sums;
}

/// Checks all pages of a file that nobody has open, without creating files. False if a program opened it meanwhile.
bool IsSoundAlone(sqlite3* immutable, const FileHeader& header, const QString& path, const OpeningRules& rules)
{
    const host::FileIdentity before = host::IdentityOf(path);
    if (HasLog(path))
        return false;
    RequireWholePages(header, path);
    if (FirstDamage(immutable, ThoroughnessFor(path), rules.summedIndexes).isEmpty())
        return true;
    if (!HasLog(path) && host::IdentityOf(path) == before) // else a program changed it and closed it again
        throw RuntimeError(Error::DamagedDatabase, QFileInfo(path).fileName());
    return false;
}

/// Name of the first trigger or view, empty if none. The program creates none; a foreign one could alter what is saved.
std::string FirstPlantedCode(sqlite3* database)
{
    return TextAnswer(database,
                      "select name from sqlite_schema where type in ('trigger', 'view') order by name limit 1");
}

[[noreturn]] void RaisePlanted(const std::string& code, const QString& name)
{
    throw RuntimeError::Described(Error::UnrecognizedFormat,
                                  QStringLiteral("La base de données '%1' contient un déclencheur ou une vue que le "
                                                 "programme n'a pas créés : '%2'. Elle n'est pas ouverte.")
                                      .arg(name, QString::fromStdString(code)));
}

/// What the header in the file doesn't show: the latest change may be in the log alone.
struct Found {
    qint64 version = 0; ///< of its tables
    std::string planted;
    bool isReplaced = false; ///< a restoration put another file in its place while this one was being opened
    bool IsOurs() const { return version <= SchemaVersion && planted.empty(); }
};

/// Marks the opening and checkpoints it, so that every copy made before lacks the mark. Skipped while another program
/// writes.
void MarkOpening(sqlite3* database, int patience)
{
    if (!HasMarks(database))
        return; // of an older version, which couldn't be upgraded

    sqlite3_busy_timeout(database, 0);
    try {
        RunOnce(database, "begin immediate");
        DeleteOldMarks(database);
        Statement addition = PrepareMark(database);
        AddMark(database, addition);
        RunScript(database, "commit; pragma wal_checkpoint(passive)");
    } catch (const RuntimeError&) {
        if (sqlite3_get_autocommit(database) == 0)
            RunOnce(database, "rollback");
    }
    sqlite3_busy_timeout(database, patience);
}

/// Checks the opened file unless that was done before, and prepares it for work if it is this program's.
Found PrepareForWork(sqlite3* database, Thoroughness thoroughness, bool isChecked, const OpeningRules& rules)
{
    if (!isChecked && !FirstDamage(database, thoroughness, rules.summedIndexes).isEmpty())
        throw RuntimeError(Error::DamagedDatabase);
    Found found{WholeAnswer(database, "pragma user_version"), FirstPlantedCode(database)};
    found.isReplaced = IsMoved(database);
    if (!found.IsOurs() || found.isReplaced)
        return found;
    if (TextAnswer(database, "pragma journal_mode=wal") != "wal")
        throw RuntimeError(Error::ReadOnly);
    found.isReplaced = IsMoved(database); // from here on the connection holds a lock that no restoration gets past
    if (found.isReplaced)
        return found;
    RunOnce(database, "pragma synchronous=full");
    RunOnce(database, CacheOfSums);
    DefineTextComparison(database);
    BringUpToDate(database, rules);
    MarkOpening(database, rules.patience);
    return found;
}

/// Empty when the file was replaced meanwhile. Its log is left alone then: it may be the new file's.
SqliteHandle TryOpening(const QString& path, const OpeningRules& rules)
{
    const QString name = QFileInfo(path).fileName();
    bool isChecked = rules.isCheckedAlready || IsKnownSound(path);
    {
        const SqliteHandle immutable = OpenHardened(path, Access::Immutable);
        const FileHeader header = HeaderOf(immutable.get(), name);
        if (!host::IsWritable(path) || !host::IsWritable(QFileInfo(path).absolutePath()))
            RaiseProtected(path);
        SetForeignLogAside(path, header);
        isChecked = isChecked || IsSoundAlone(immutable.get(), header, path, rules);
    }
    SqliteHandle handle = OpenHardened(path, Access::Write, rules.patience);
    KeepLogAtClose(handle.get(), true);
    const bool isHeldAlone =
        rules.isHeldAlone || host::IsOnShare(path); // between machines a log's index can't be shared
    Found found;
    try {
        if (isHeldAlone) // before the log is opened, which then has no index in a file
            RunOnce(handle.get(), "pragma locking_mode=exclusive");
        found = PrepareForWork(handle.get(), ThoroughnessFor(path), isChecked, rules);
    } catch (const RuntimeError& error) {
        if (error.Code() == Error::DamagedDatabase || error.Code() == Error::UnrecognizedFormat)
            throw RuntimeError(Error::DamagedDatabase, name);
        if (error.Code() == Error::Locked && isHeldAlone)
            RaiseHeldAlone();
        throw;
    }
    if (found.isReplaced)
        return nullptr;
    if (found.version > SchemaVersion)
        RaiseNewer(name);
    if (!found.planted.empty())
        RaisePlanted(found.planted, name);
    KeepLogAtClose(handle.get(), false);
    return handle;
}

} // namespace

void SetForeignLogAside(const QString& path, const FileHeader& header)
{
    const QString log = path + "-wal";
    if (QFileInfo(log).size() != 0 && header.IsInRollbackMode() && !host::RenameAside(log))
        throw RuntimeError(Error::PathAccess);
}

SqliteHandle OpenForWork(const QString& path, const OpeningRules& rules)
{
    QElapsedTimer waited;
    waited.start();
    for (;;) {
        if (SqliteHandle handle = TryOpening(path, rules))
            return handle;
        if (waited.elapsed() > rules.patience)
            throw RuntimeError(Error::Locked);
    }
}

void MoveLogIntoFile(const QString& path)
{
    RunOnce(OpenHardened(path, Access::Write).get(), "pragma wal_checkpoint(truncate)");
}

SqliteHandle OpenForReading(const QString& path)
{
    RequireFile(path);
    SqliteHandle immutable = OpenHardened(path, Access::Immutable);
    const FileHeader header = HeaderOf(immutable.get(), QFileInfo(path).fileName());
    if (HasLog(path))
        return OpenHardened(path, Access::Read);
    RequireWholePages(header, path);
    return immutable;
}

} // namespace store
