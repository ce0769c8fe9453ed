#include "archives/Archives.h"

#include "archives/Leftovers.h"
#include "archives/Seal.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/host/Files.h"
#include "platform/host/OwnerOnly.h"
#include "platform/store/FileState.h"
#include "platform/store/Opening.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <memory>

namespace archives {
namespace {

using basic::Error;
using basic::RuntimeError;

/// Copies a database with its log. Raises 3049 when the bytes that are read back differ; `digest` is that of the
/// database if it is known.
void CopyWhole(const QString& copy, const QByteArray& digest, const QString& target)
{
    QStringList endings = store::LogsOf(copy);
    endings << "";
    for (const QString& ending : endings) {
        host::CopyFile(copy + ending, target + ending);
        const QByteArray expected = ending.isEmpty() && !digest.isEmpty() ? digest : DigestOf(copy + ending);
        if (DigestOf(target + ending) != expected)
            throw RuntimeError(Error::DamagedDatabase, QFileInfo(copy).fileName());
    }
}

/// Opens the file as the program opens a practice, which upgrades it. Its bytes are those of the copy just checked.
void OpenOnce(const QString& file)
{
    store::OpeningRules rules = data::PracticeRules();
    rules.isCheckedAlready = true;
    store::OpenForWork(file, rules);
}

/// A free name like "…/ZEP_ONE avant restauration 2026-11-24 18-02-33.MDB".
QString FreeName(const QString& copies)
{
    for (QDateTime moment = QDateTime::currentDateTime();; moment = moment.addSecs(1)) {
        const QString path = copies + "/ZEP_ONE avant restauration " + moment.toString("yyyy-MM-dd HH-mm-ss") + ".MDB";
        if (!QFileInfo::exists(path) && !QFileInfo::exists(path + "-wal") && !QFileInfo::exists(path + "-journal"))
            return path;
    }
}

/// Checkpoints the log into the file. If the file is too damaged for that, the log is removed: a copy of it was kept.
void FoldLog(const QString& database)
{
    try {
        store::MoveLogIntoFile(database);
    } catch (const RuntimeError& error) {
        if (error.Code() != Error::DamagedDatabase && error.Code() != Error::UnrecognizedFormat)
            throw; // on a full disk for instance: the log stays
    }
    for (const char* const ending : {"-wal", "-journal", "-shm"})
        QFile::remove(database + ending);
}

/// Keeps the present database under a new name, which is returned, and leaves it without a log.
QString KeepPresent(const QString& database, const QString& copies)
{
    if (!QFileInfo::exists(database))
        return {};
    const QString kept = FreeName(copies);
    if (!store::HasLog(database)) {
        host::LinkFile(database, kept);
        QFile::remove(database + "-shm");
        return kept;
    }
    // Not linked: moving the log into the database would change the kept file as well.
    auto removeKept = qScopeGuard([&kept] { host::RemoveDatabase(kept); });
    const QString part = host::PartOf(kept);
    const auto removePart = qScopeGuard([&part] { host::RemoveDatabase(part); });
    QStringList endings;
    for (const char* const ending : {"-wal", "-journal", ""})
        if (QFileInfo::exists(database + ending))
            endings << ending;
    for (const QString& ending : endings)
        host::CopyFile(database + ending, part + ending);
    for (const QString& ending : endings) // the database last: a log alone is a leftover
        host::Replace(part + ending, kept + ending);
    FoldLog(database);
    removeKept.dismiss();
    return kept;
}

[[noreturn]] void RaiseOpen()
{
    throw RuntimeError::Described(
        Error::Locked, "Le cabinet est ouvert dans un programme. Fermez-le, puis recommencez la restauration.");
}

/// Holds the database against programs that open it. Removes the kept copy when one has it open.
std::unique_ptr<host::DatabaseHold> Hold(const QString& database, const QString& kept)
{
    try {
        return std::make_unique<host::DatabaseHold>(database);
    } catch (const RuntimeError& error) {
        if (!kept.isEmpty())
            host::RemoveDatabase(kept);
        if (error.Code() == Error::Locked)
            RaiseOpen();
        throw;
    }
}

} // namespace

void RequireClosed(const QString& folder)
{
    if (store::IsInUse(host::BehindLinks(host::PathIn(folder, data::DatabaseFile))))
        RaiseOpen();
}

QString Restore(const QString& copy, const QString& folder, Accepts accepts)
{
    const QString database = host::BehindLinks(host::PathIn(folder, data::DatabaseFile));
    RequireClosed(folder);
    const CopyCondition condition = RequireUsable(copy);
    if (condition.kind != CopyCondition::Kind::Whole && accepts == Accepts::WholeCopies)
        throw RuntimeError::Described(Error::DamagedDatabase, condition.reason);
    const auto ownerOnly = host::ForOwnerOnly();
    QDir().mkpath(CopiesFolder(folder));
    const QString copies = CopiesFolder(folder);
    const host::FolderLock alone(copies);
    RemoveUnfinishedRestoration(folder);

    const QString part = database + ".part";
    const auto removeAtEnd = qScopeGuard([&part] { host::RemoveDatabase(part); });
    CopyWhole(copy, condition.digest, part);
    OpenOnce(part);
    host::Sync(part);
    for (;;) {
        RequireClosed(folder);
        const QString kept = KeepPresent(database, copies);
        const host::FileIdentity present = host::IdentityOf(database);
        const auto hold = Hold(database, kept);
        if (host::IdentityOf(database) == present && !store::HasLog(database)) {
            hold->ReplaceBy(part);
            return kept;
        }
        if (!kept.isEmpty()) // a program has worked in between
            host::RemoveDatabase(kept);
    }
}

} // namespace archives
