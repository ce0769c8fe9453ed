#include "platform/dao/Opening.h"

#include "platform/dao/Connection.h"
#include "platform/dao/Errors.h"
#include "platform/dao/FileHeader.h"
#include "platform/dao/FileState.h"
#include "platform/dao/TextCompare.h"
#include "platform/dao/Upgrade.h"

#include <QFileInfo>
#include <array>
#include <sqlite3.h>
#include <utility>

namespace dao {
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

/// How a file is checked at its opening, which is not to take longer than a user notices.
Thoroughness ThoroughnessFor(const QString& path)
{
    constexpr qint64 largest = qint64{12} << 20; // bytes: about 0.3 s
    return QFileInfo(path).size() <= largest ? Thoroughness::Indexes : Thoroughness::Sums;
}

/// Checks all pages of a file that nobody has open, without making anything beside it. False when another program came
/// in meanwhile, so that the check must be made through its log.
bool IsSoundAlone(sqlite3* immutable, const FileHeader& header, const QString& path)
{
    if (HasLog(path))
        return false;
    RequireWholePages(header, path);
    if (FirstDamage(immutable, ThoroughnessFor(path)).isEmpty())
        return true;
    if (!HasLog(path))
        throw RuntimeError(Error::DamagedDatabase, QFileInfo(path).fileName());
    return false;
}

/// Number of rows, sum of the amounts, and sum of the amounts times their dates: an amount under a wrong day shows.
/// Whole hundredths don't depend on the order.
std::array<qint64, 3> SumsOf(sqlite3* database, const SummedIndex& summed, const QString& source)
{
    const QString cents = QString("cast(round(%1 * 100) as integer)").arg(summed.amount);
    const QString day = QString("cast(replace(%1, '-', '') as integer)").arg(summed.date);
    Statement sums(database, QString("select count(*), sum(%1), sum(%1 * %2) from %3 %4")
                                 .arg(cents, day, summed.table, source)
                                 .toStdString());
    sums.Step();
    return {sums.WholeAt(0), sums.WholeAt(1), sums.WholeAt(2)};
}

/// A summed index that disagrees with its table. Empty when there is none.
QString DisagreeingIndex(sqlite3* database)
{
    for (const SummedIndex& summed : DBEngine.SummedIndexes)
        if (SumsOf(database, summed, "not indexed") != SumsOf(database, summed, "indexed by " + summed.index))
            return "index " + summed.index;
    return {};
}

/// Whether the end of this connection leaves log and file as they are.
void KeepLogAtClose(sqlite3* database, bool keeps)
{
    sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, keeps ? 1 : 0, nullptr);
}

/// A trigger or a view: this program makes none, and one that was planted could change what is saved. Empty for none.
std::string PlantedCode(sqlite3* database)
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

/// What only the opened database shows of itself: a change may be in the log alone.
struct Found {
    qint64 version = 0; ///< of its tables
    std::string planted;
    bool IsOurs() const { return version <= SchemaVersion && planted.empty(); }
};

/// Gives the file a stamp that no copy made before has: the schema version in its header, which every change of the
/// schema raises and which a copy starts anew. A file that another program is writing keeps the one it has.
void Stamp(sqlite3* database)
{
    sqlite3_busy_timeout(database, 0);
    try {
        RunScript(database, "begin immediate; create table \"ZEP opening\" (stamp); drop table \"ZEP opening\"; commit;"
                            "pragma wal_checkpoint(passive);");
    } catch (const RuntimeError&) {
        if (sqlite3_get_autocommit(database) == 0)
            RunOnce(database, "rollback");
    }
    sqlite3_busy_timeout(database, busyMilliseconds);
}

/// Checks what was opened, and prepares it when it is ours.
Found PrepareForWork(sqlite3* database, bool isChecked, Thoroughness thoroughness)
{
    if (!isChecked && !FirstDamage(database, thoroughness).isEmpty())
        throw RuntimeError(Error::DamagedDatabase);
    const Found found{WholeAnswer(database, "pragma user_version"), PlantedCode(database)};
    if (!found.IsOurs())
        return found;
    if (TextAnswer(database, "pragma journal_mode=wal") != "wal")
        throw RuntimeError(Error::ReadOnly);
    RunOnce(database, "pragma synchronous=full");
    RunOnce(database, CacheOfSums);
    DefineTextComparison(database);
    BringUpToDate(database, DBEngine.KeyedTables);
    Stamp(database);
    return found;
}

} // namespace

SqliteHandle OpenHardened(const QString& path, int flags)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(SystemPath(path).c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    SqliteHandle handle(opened);
    Check(opened, code);
    sqlite3_extended_result_codes(opened, 1);
    sqlite3_busy_timeout(opened, busyMilliseconds);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    // Words between double quotes are names or errors, never text by mistake.
    for (const int option : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL,
                             SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW,
                             SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER})
        sqlite3_db_config(opened, option, 0, nullptr);
    RunOnce(opened, "pragma cell_size_check=on");
    return handle;
}

void SetForeignLogAside(const QString& path, const FileHeader& header)
{
    const QString log = path + "-wal";
    if (QFileInfo(log).size() != 0 && header.IsInRollbackMode() && !RenameAside(log))
        throw RuntimeError(Error::PathAccess);
}

QString FirstDamage(sqlite3* database, Thoroughness thoroughness)
{
    try {
        const std::string answer = TextAnswer(
            database, thoroughness == Thoroughness::Indexes ? "pragma integrity_check(1)" : "pragma quick_check(1)");
        if (answer != "ok")
            return QString::fromStdString(answer);
        return thoroughness == Thoroughness::Sums ? DisagreeingIndex(database) : QString();
    } catch (const RuntimeError& error) {
        if (error.Code() == Error::DamagedDatabase || error.Code() == Error::UnrecognizedFormat)
            return error.Description();
        throw;
    }
}

SqliteHandle OpenForWork(const QString& path)
{
    const QString name = QFileInfo(path).fileName();
    bool isChecked = IsKnownSound(path);
    {
        const SqliteHandle immutable = OpenImmutable(path);
        const FileHeader header = HeaderOf(immutable.get(), name);
        if (!IsWritable(path) || !IsWritable(QFileInfo(path).absolutePath()))
            RaiseProtected(path);
        SetForeignLogAside(path, header);
        isChecked = isChecked || IsSoundAlone(immutable.get(), header, path);
    }
    SqliteHandle handle = OpenHardened(path, SQLITE_OPEN_READWRITE);
    KeepLogAtClose(handle.get(), true);
    Found found;
    try {
        found = PrepareForWork(handle.get(), isChecked, ThoroughnessFor(path));
    } catch (const RuntimeError& error) {
        if (error.Code() == Error::DamagedDatabase || error.Code() == Error::UnrecognizedFormat)
            throw RuntimeError(Error::DamagedDatabase, name);
        throw;
    }
    if (found.version > SchemaVersion)
        RaiseNewer(name);
    if (!found.planted.empty())
        RaisePlanted(found.planted, name);
    KeepLogAtClose(handle.get(), false);
    return handle;
}

void MoveLogIntoFile(const QString& path)
{
    RunOnce(OpenHardened(path, SQLITE_OPEN_READWRITE).get(), "pragma wal_checkpoint(truncate)");
}

SqliteHandle OpenForReading(const QString& path)
{
    RequireFile(path);
    SqliteHandle immutable = OpenImmutable(path);
    const FileHeader header = HeaderOf(immutable.get(), QFileInfo(path).fileName());
    if (HasLog(path))
        return OpenHardened(path, SQLITE_OPEN_READONLY);
    RequireWholePages(header, path);
    return immutable;
}

} // namespace dao
