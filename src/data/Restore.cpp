#include "data/Archives.h"

#include "data/Practice.h"
#include "platform/basic/OwnerOnly.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/dao/FileState.h"
#include "platform/dao/FileWork.h"
#include "platform/dao/Opening.h"
#include "platform/dao/Seal.h"
#include "platform/host/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

namespace data {
namespace {

using basic::Error;
using basic::RuntimeError;

/// Copies a whole database, with its log where it has one. Raises 3049 when the bytes that come back aren't those of
/// the copy.
void CopyWhole(const QString& copy, const QString& target)
{
    QStringList endings = dao::LogsOf(copy);
    endings << "";
    for (const QString& ending : endings) {
        dao::CopyFile(copy + ending, target + ending);
        if (dao::DigestOf(target + ending) != dao::DigestOf(copy + ending))
            throw RuntimeError(Error::DamagedDatabase, QFileInfo(copy).fileName());
    }
}

/// Opens the file as the program opens a practice, with all the checks of that, and brings it up to date.
void OpenOnce(const QString& file)
{
    dao::DBEngine.KeyedTables = KeyedTables();
    dao::DBEngine.SummedIndexes = SummedIndexes();
    dao::RememberSound(file); // the copy was checked just before, and these are its bytes
    dao::OpenForWork(file);
}

/// "…/ZEP_ONE avant restauration 2026-11-24 18-02-33.MDB", a name that no file has.
QString FreeName(const QString& copies)
{
    for (QDateTime moment = QDateTime::currentDateTime();; moment = moment.addSecs(1)) {
        const QString path = copies + "/ZEP_ONE avant restauration " + moment.toString("yyyy-MM-dd HH-mm-ss") + ".MDB";
        if (!QFileInfo::exists(path) && !QFileInfo::exists(path + "-wal") && !QFileInfo::exists(path + "-journal"))
            return path;
    }
}

/// Moves what the log holds into the file. The log of a file that is too damaged for that goes; it was kept.
void FoldLog(const QString& database)
{
    try {
        dao::MoveLogIntoFile(database);
    } catch (const RuntimeError& error) {
        if (error.Code() != Error::DamagedDatabase && error.Code() != Error::UnrecognizedFormat)
            throw; // on a full disk for instance: the log stays
    }
    for (const char* const ending : {"-wal", "-journal", "-shm"})
        QFile::remove(database + ending);
}

/// Keeps the present database under a name of its own and leaves it without a log. Returns that name.
QString KeepPresent(const QString& database, const QString& copies)
{
    if (!QFileInfo::exists(database))
        return {};
    const QString kept = FreeName(copies);
    if (!dao::HasLog(database)) {
        dao::LinkFile(database, kept);
        QFile::remove(database + "-shm");
        return kept;
    }
    // Not linked: moving the log into the database would change the kept file as well.
    auto removeKept = qScopeGuard([&kept] { dao::RemoveDatabase(kept); });
    for (const char* const ending : {"-wal", "-journal", ""})
        if (QFileInfo::exists(database + ending))
            dao::CopyFile(database + ending, kept + ending);
    FoldLog(database);
    removeKept.dismiss();
    return kept;
}

} // namespace

void RequireClosed(const QString& folder)
{
    if (dao::IsInUse(dao::BehindLinks(host::PathIn(folder, DatabaseFile))))
        throw RuntimeError::Described(
            Error::Locked, "Le cabinet est ouvert dans un programme. Fermez-le, puis recommencez la restauration.");
}

void RemoveUnfinishedRestoration(const QString& folder)
{
    const QString database = dao::BehindLinks(host::PathIn(folder, DatabaseFile));
    dao::RemoveDatabase(database + ".part");
    for (const ArchivedCopy& copy : ArchivedCopies(folder))
        if (copy.kind == ArchivedCopy::Kind::Replaced && dao::IsSameFile(copy.path, database))
            QFile::remove(copy.path);
}

QString Restore(const QString& copy, const QString& folder)
{
    const QString database = dao::BehindLinks(host::PathIn(folder, DatabaseFile));
    RequireClosed(folder);
    RequireWhole(copy);
    const auto ownerOnly = basic::ForOwnerOnly();
    QDir().mkpath(CopiesFolder(folder));
    const QString copies = CopiesFolder(folder);
    const dao::FolderLock alone(copies);
    RemoveUnfinishedRestoration(folder);

    const QString part = database + ".part";
    const auto removeAtEnd = qScopeGuard([&part] { dao::RemoveDatabase(part); });
    CopyWhole(copy, part);
    OpenOnce(part);
    host::Sync(part);
    RequireClosed(folder);
    const QString kept = KeepPresent(database, copies);
    dao::Replace(part, database);
    return kept;
}

} // namespace data
