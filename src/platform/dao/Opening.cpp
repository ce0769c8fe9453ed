#include "platform/dao/Opening.h"

#include "platform/dao/Connection.h"
#include "platform/dao/Errors.h"
#include "platform/dao/TextCompare.h"
#include "platform/dao/Upgrade.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QtEndian>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <tuple>

namespace dao {
namespace {

/// Balances are sums over the index of days and amounts: 25 MB of it for a million acts. A cache that holds it whole
/// spares the next balance all its reading, whatever was read in between.
constexpr auto CacheOfBalances = "pragma cache_size=-49152"; // in KiB

/// Opens the file alone, without a lock and without its log. Not by a file of our own: closing one would release the
/// locks that this process holds on the same file through another connection.
SqliteHandle OpenImmutable(const QString& path)
{
    const QByteArray address = QUrl::toPercentEncoding(QFileInfo(path).absoluteFilePath(), "/");
    return OpenHardened("file:" + QString::fromLatin1(address) + "?immutable=1",
                        SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
}

[[noreturn]] void RaiseNewer(const QString& name)
{
    throw RuntimeError::Described(Error::UnrecognizedFormat,
                                  "Format de base de données '" + name +
                                      "' non reconnu : le fichier vient d'une version plus récente du programme.");
}

/// The file's header as it is on the disk. A checkpoint that was cut off leaves a header that SQLite takes only
/// together with the log, so no pragma reads it from the file alone.
struct Header {
    std::array<unsigned char, 100> bytes{};

    quint32 NumberAt(std::size_t offset) const { return qFromBigEndian<quint32>(bytes.data() + offset); }
    qint64 PageSize() const { return bytes[16] == 0 && bytes[17] == 1 ? 65536 : bytes[16] << 8 | bytes[17]; }
    bool IsInRollbackMode() const { return bytes[18] == 1; }
    quint32 Stamp() const { return NumberAt(40); }
};

/// Reads the raw header of the file behind a connection. False when the file is shorter or can't be read.
bool ReadHeader(sqlite3* database, Header& header)
{
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    return file != nullptr && file->pMethods != nullptr &&
           file->pMethods->xRead(file, header.bytes.data(), int(header.bytes.size()), 0) == SQLITE_OK;
}

/// Raises 3343 unless the file is a database of this program, and not of a newer one.
Header HeaderOf(sqlite3* immutable, const QString& name)
{
    constexpr std::string_view magic("SQLite format 3\0", 16);
    Header header;
    const bool isOurs = ReadHeader(immutable, header) &&
                        std::ranges::equal(magic, std::span(header.bytes).first(magic.size()),
                                           [](char left, unsigned char right) { return left == char(right); }) &&
                        header.NumberAt(68) == ApplicationId;
    if (!isOurs)
        throw RuntimeError(Error::UnrecognizedFormat, name);
    if (header.NumberAt(60) > SchemaVersion)
        RaiseNewer(name);
    return header;
}

/// A log or journal beside the file holds pages that the file alone doesn't show.
bool StandsAlone(const QString& path)
{
    return QFileInfo(path + "-wal").size() == 0 && QFileInfo(path + "-journal").size() == 0;
}

bool RenameAside(const QString& log)
{
    QString aside = log + ".set-aside";
    for (int i = 2; QFileInfo::exists(aside); ++i)
        aside = log + ".set-aside-" + QString::number(i);
    return QFile::rename(log, aside);
}

/// A log beside a file in rollback mode was left by another file that had this name, before an archive copy was put
/// back: its pages must not get into this one. It is kept under a name that SQLite doesn't look for.
void SetForeignLogAside(const QString& path, const Header& header)
{
    const QString log = path + "-wal";
    if (QFileInfo(log).size() != 0 && header.IsInRollbackMode() && !RenameAside(log))
        throw RuntimeError(Error::PathAccess);
}

/// File identity: inode, size, mtime.
using FileIdentity = std::tuple<ino_t, off_t, time_t, long>;

FileIdentity IdentityOf(const QString& path)
{
    struct stat state = {};
    ::stat(SystemPath(path).c_str(), &state);
    return {state.st_ino, state.st_size, state.st_mtim.tv_sec, state.st_mtim.tv_nsec};
}

/// The files that this program has worked with and closed, as they were then.
std::map<QString, FileIdentity>& ClosedSound()
{
    static auto& files = *new std::map<QString, FileIdentity>; // never destroyed: a global handle may close later
    return files;
}

/// Whether the file was checked when it was opened before and hasn't changed but by this program since.
bool IsKnownSound(const QString& path)
{
    const auto hasOpen = [&](const Connection* connection) { return connection->File() == path; };
    if (std::ranges::any_of(OpenConnections(), hasOpen))
        return true;
    const auto closed = ClosedSound().find(path);
    return closed != ClosedSound().end() && closed->second == IdentityOf(path) && StandsAlone(path);
}

/// Raises 3049 when the file ends within a page. Pages are written whole; SQLite would take what is missing of the last
/// one for zeros, be it amounts that are lost.
void RequireWholePages(const Header& header, const QString& path)
{
    if (header.PageSize() == 0 || QFileInfo(path).size() % header.PageSize() != 0)
        throw RuntimeError(Error::DamagedDatabase, QFileInfo(path).fileName());
}

/// How a file is checked at its opening, which is not to take longer than a user notices.
Thoroughness ThoroughnessFor(const QString& path)
{
    constexpr qint64 largest = qint64{12} << 20; // bytes: about 0.3 s
    return QFileInfo(path).size() <= largest ? Thoroughness::Indexes : Thoroughness::Pages;
}

/// Checks all pages of a file that nobody has open, without making anything beside it. False when another program came
/// in meanwhile, so that the check must be made through its log.
bool IsSoundAlone(sqlite3* immutable, const Header& header, const QString& path)
{
    if (!StandsAlone(path))
        return false;
    RequireWholePages(header, path);
    if (FirstDamage(immutable, ThoroughnessFor(path)).isEmpty())
        return true;
    if (StandsAlone(path))
        throw RuntimeError(Error::DamagedDatabase, QFileInfo(path).fileName());
    return false;
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
    RunOnce(database, CacheOfBalances);
    DefineTextComparison(database);
    BringUpToDate(database, DBEngine.KeyedTables);
    Stamp(database);
    return found;
}

} // namespace

std::string SystemPath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

bool IsWritable(const QString& path)
{
    constexpr mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    struct stat state = {};
    const std::string name = SystemPath(path);
    return ::stat(name.c_str(), &state) == 0 && (state.st_mode & anyWrite) != 0 && ::access(name.c_str(), W_OK) == 0;
}

void RequireFile(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        throw RuntimeError(Error::DatabaseNotFound, path);
    if (!file.isReadable())
        throw RuntimeError(Error::PermissionDenied);
}

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

QString FirstDamage(sqlite3* database, Thoroughness thoroughness)
{
    try {
        const std::string answer = TextAnswer(
            database, thoroughness == Thoroughness::Indexes ? "pragma integrity_check(1)" : "pragma quick_check(1)");
        return answer == "ok" ? QString() : QString::fromStdString(answer);
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
        const Header header = HeaderOf(immutable.get(), name);
        if (!IsWritable(path) || !IsWritable(QFileInfo(path).absolutePath()))
            throw RuntimeError(Error::ReadOnly);
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

OpenedFile::OpenedFile(sqlite3* opened, const QString& openedPath) : path(openedPath)
{
    struct stat state = {};
    ::stat(SystemPath(path).c_str(), &state);
    device = state.st_dev;
    inode = state.st_ino;
    Header header;
    if (ReadHeader(opened, header))
        stamp = header.Stamp();
}

bool OpenedFile::IsInPlace(sqlite3* opened) const
{
    struct stat state = {};
    Header header;
    return ::stat(SystemPath(path).c_str(), &state) == 0 && state.st_dev == device && state.st_ino == inode &&
           ReadHeader(opened, header) && header.Stamp() >= stamp;
}

void SetLogAside(const QString& path)
{
    if (RenameAside(path + "-wal"))
        QFile::remove(path + "-shm");
}

void RememberSound(const QString& path)
{
    ClosedSound()[path] = IdentityOf(path);
}

SqliteHandle OpenForReading(const QString& path)
{
    RequireFile(path);
    SqliteHandle immutable = OpenImmutable(path);
    const Header header = HeaderOf(immutable.get(), QFileInfo(path).fileName());
    if (!StandsAlone(path))
        return OpenHardened(path, SQLITE_OPEN_READONLY);
    RequireWholePages(header, path);
    return immutable;
}

} // namespace dao
