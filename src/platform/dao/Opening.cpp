#include "platform/dao/Opening.h"

#include "platform/basic/RuntimeError.h"
#include "platform/dao/Connection.h"
#include "platform/dao/Upgrade.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>

namespace dao {
namespace {

constexpr int headSize = 100;
/// Balances are sums over the index of days and amounts: 25 MB of it for a million acts. What holds it whole spares the
/// next balance all its reading, whatever was read in between.
constexpr auto cacheOfBalances = "pragma cache_size=-49152"; // in KiB
constexpr std::string_view magic("SQLite format 3\0", 16);

using Head = std::array<unsigned char, headSize>;

int NumberAt(const Head& head, std::size_t place)
{
    return int(quint32(head[place]) << 24 | quint32(head[place + 1]) << 16 | quint32(head[place + 2]) << 8 |
               quint32(head[place + 3]));
}

/// Opens the file itself, without a lock and without its log. Not by a file of our own: closing one would take away the
/// locks that this process holds on the same file through another connection.
StoreHandle OpenStill(const QString& path)
{
    const QByteArray uri = "file:" + QUrl::toPercentEncoding(QFileInfo(path).absoluteFilePath(), "/") + "?immutable=1";
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(uri.constData(), &opened,
                                     SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
    StoreHandle handle(opened);
    Check(opened, code);
    return handle;
}

/// The first bytes of the file; raises 3343 when it is shorter.
Head HeadOf(sqlite3* database, const QString& name)
{
    Head head{};
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file == nullptr || file->pMethods == nullptr ||
        file->pMethods->xRead(file, head.data(), headSize, 0) != SQLITE_OK)
        throw basic::RuntimeError(basic::Error::UnrecognizedFormat, name);
    return head;
}

[[noreturn]] void RaiseNewer(const QString& name)
{
    throw basic::RuntimeError::Described(
        basic::Error::UnrecognizedFormat,
        "Format de base de données '" + name +
            "' non reconnu : le fichier vient d'une version plus récente du programme.");
}

void CheckHead(const Head& head, const QString& name)
{
    constexpr std::size_t versionPlace = 60;
    constexpr std::size_t markPlace = 68;
    const bool ours =
        std::memcmp(head.data(), magic.data(), magic.size()) == 0 && NumberAt(head, markPlace) == applicationMark;
    if (!ours)
        throw basic::RuntimeError(basic::Error::UnrecognizedFormat, name);
    if (NumberAt(head, versionPlace) > SchemaVersion)
        RaiseNewer(name);
}

void RequireFile(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        throw basic::RuntimeError(basic::Error::DatabaseNotFound, path);
    if (!file.isReadable())
        throw basic::RuntimeError(basic::Error::PermissionDenied);
}

/// A log or journal beside the file holds pages that the file alone doesn't show.
bool StandsAlone(const QString& path)
{
    return QFileInfo(path + "-wal").size() == 0 && QFileInfo(path + "-journal").size() == 0;
}

/// Nothing that a file holds may make the store do more than keep rows.
void Harden(sqlite3* database)
{
    sqlite3_extended_result_codes(database, 1);
    sqlite3_busy_timeout(database, busyMilliseconds);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    // Words between double quotes are names or errors, never text by mistake.
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    RunOnce(database, "pragma cell_size_check=on");
}

/// A log beside a file in rollback form was left by another file that stood under this name, before an archive copy was
/// put back: its pages must not get into this one. It is kept under a name that the store doesn't look for.
void SetForeignLogAside(const QString& path, const Head& head)
{
    constexpr std::size_t formPlace = 18;
    constexpr unsigned char rollbackForm = 1;
    const QString log = path + "-wal";
    if (head[formPlace] != rollbackForm || QFileInfo(log).size() == 0)
        return;
    QString aside = log + ".set-aside";
    for (int i = 2; QFileInfo::exists(aside); ++i)
        aside = log + ".set-aside-" + QString::number(i);
    if (!QFile::rename(log, aside))
        throw basic::RuntimeError(basic::Error::PathAccess);
}

/// What tells that nobody has written to a file since: which one it is, its size and the moment of its last change.
struct FileState {
    ino_t number = 0;
    off_t size = 0;
    qint64 changedSeconds = 0;
    qint64 changedNanoseconds = 0;
    bool operator==(const FileState&) const = default;
};

FileState StateOf(const QString& path)
{
    struct stat state = {};
    if (::stat(SystemPath(path).c_str(), &state) != 0)
        return {};
    return {state.st_ino, state.st_size, state.st_mtim.tv_sec, state.st_mtim.tv_nsec};
}

/// The files that this program has worked with and closed, as they were then.
std::map<QString, FileState>& ClosedSound()
{
    static std::map<QString, FileState> files;
    return files;
}

/// Whether the file was checked when it was opened before and hasn't changed but by this program since.
bool IsKnownSound(const QString& path)
{
    const auto hasOpen = [&](const Connection* connection) { return connection->File() == path; };
    if (std::ranges::any_of(OpenConnections(), hasOpen))
        return true;
    const auto closed = ClosedSound().find(path);
    return closed != ClosedSound().end() && closed->second == StateOf(path) && StandsAlone(path);
}

StoreHandle OpenReally(const QString& path, int flags)
{
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(SystemPath(path).c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    StoreHandle handle(opened);
    Check(opened, code);
    Harden(opened);
    return handle;
}

/// Errors by which the store says that a file with our mark is no file of the store are damage.
template <class Work>
void NamingDamage(const QString& name, Work work)
{
    try {
        work();
    } catch (const basic::RuntimeError& error) {
        if (error.Code() == basic::Error::DamagedDatabase ||
            (error.Code() == basic::Error::UnrecognizedFormat &&
             error.Description() == basic::RuntimeError(basic::Error::UnrecognizedFormat).Description()))
            throw basic::RuntimeError(basic::Error::DamagedDatabase, name);
        throw;
    }
}

/// Raises 3049 when the file ends within a page. Pages are written whole; the store would take what is missing of the
/// last one for zeros and say nothing, be it amounts that are lost.
void RequireWholePages(sqlite3* database, const Head& head, const QString& name)
{
    constexpr std::size_t pageSizePlace = 16;
    constexpr int largestPage = 65536; // the only size that two bytes can't hold; they say 1 for it
    const int told = head[pageSizePlace] << 8 | head[pageSizePlace + 1];
    const int pageSize = told == 1 ? largestPage : told;
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    sqlite3_int64 size = 0;
    Check(database, file->pMethods->xFileSize(file, &size));
    if (pageSize == 0 || size % pageSize != 0)
        throw basic::RuntimeError(basic::Error::DamagedDatabase, name);
}

/// Looks over all pages of a file that nobody has open, without making anything beside it. False when another program
/// came in meanwhile, so that the look must be taken through its log.
bool IsSoundAlone(sqlite3* still, const Head& head, const QString& path, const QString& name)
{
    if (!StandsAlone(path))
        return false;
    RequireWholePages(still, head, name);
    if (FirstDamage(still).isEmpty())
        return true;
    if (StandsAlone(path))
        throw basic::RuntimeError(basic::Error::DamagedDatabase, name);
    return false;
}

/// Whether the end of this connection leaves log and file as they are.
void KeepLogAtClose(sqlite3* database, bool keeps)
{
    sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, keeps ? 1 : 0, nullptr);
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

QString FirstDamage(sqlite3* database)
{
    try {
        const std::string answer = TextAnswer(database, "pragma quick_check(1)");
        return answer == "ok" ? QString() : QString::fromStdString(answer);
    } catch (const basic::RuntimeError& error) {
        if (error.Code() == basic::Error::DamagedDatabase || error.Code() == basic::Error::UnrecognizedFormat)
            return error.Description();
        throw;
    }
}

StoreHandle OpenForWork(const QString& path)
{
    RequireFile(path);
    const QString name = QFileInfo(path).fileName();
    bool isChecked = IsKnownSound(path);
    {
        const StoreHandle still = OpenStill(path);
        const Head head = HeadOf(still.get(), name);
        CheckHead(head, name);
        if (!IsWritable(path) || !IsWritable(QFileInfo(path).absolutePath()))
            throw basic::RuntimeError(basic::Error::ReadOnly);
        SetForeignLogAside(path, head);
        Harden(still.get());
        isChecked = isChecked || IsSoundAlone(still.get(), head, path, name);
    }

    StoreHandle handle = OpenReally(path, SQLITE_OPEN_READWRITE);
    sqlite3* const database = handle.get();
    KeepLogAtClose(database, true);
    NamingDamage(name, [&] {
        if (!isChecked && !FirstDamage(database).isEmpty())
            throw basic::RuntimeError(basic::Error::DamagedDatabase, name);
        // A change of form may still stand in the log alone.
        if (WholeAnswer(database, "pragma user_version") > SchemaVersion)
            RaiseNewer(name);
        if (TextAnswer(database, "pragma journal_mode=wal") != "wal")
            throw basic::RuntimeError(basic::Error::ReadOnly);
        RunOnce(database, "pragma synchronous=full");
        RunOnce(database, cacheOfBalances);
        BringUpToDate(database, DBEngine.KeyedTables);
    });
    KeepLogAtClose(database, false);
    return handle;
}

void RememberSound(const QString& path)
{
    ClosedSound()[path] = StateOf(path);
}

StoreHandle OpenForReading(const QString& path)
{
    RequireFile(path);
    const QString name = QFileInfo(path).fileName();
    StoreHandle still = OpenStill(path);
    const Head head = HeadOf(still.get(), name);
    CheckHead(head, name);
    if (!StandsAlone(path))
        return OpenReally(path, SQLITE_OPEN_READONLY);
    RequireWholePages(still.get(), head, name);
    Harden(still.get());
    return still;
}

} // namespace dao
