#include "data/NewFolder.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/host/OwnerOnly.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QTemporaryDir>

namespace data {
namespace {

constexpr auto Everything = QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System;
const auto LockName = QStringLiteral(".practice.lock");
const auto MoveList = QStringLiteral(".practice.moves");

[[noreturn]] void RaiseNotMade(const QString& path)
{
    throw basic::RuntimeError::Described(basic::Error::PathAccess,
                                         QString("Le dossier « %1 » ne peut pas être créé.").arg(path));
}

std::unique_ptr<QLockFile> LockOf(const QString& part)
{
    auto lock = std::make_unique<QLockFile>(part + "/" + LockName);
    lock->setStaleLockTime(0); // stale only when its process has ended
    return lock;
}

/// Entries to move, the database last: a folder without it isn't a practice.
QStringList EntriesToMove(const QString& part)
{
    QStringList entries = QDir(part).entryList(Everything);
    entries.removeAll(LockName);
    entries.removeAll(MoveList);
    if (entries.removeOne(DatabaseFile))
        entries << DatabaseFile;
    return entries;
}

/// Undoes the moves of a run that was killed before it had moved everything.
void UndoMoves(const QString& part, const QString& wanted)
{
    QFile list(part + "/" + MoveList);
    if (!list.open(QIODevice::ReadOnly) || !QFileInfo::exists(part + "/" + DatabaseFile))
        return;
    for (const QString& entry : QString::fromUtf8(list.readAll()).split('\n', Qt::SkipEmptyParts)) {
        const QString moved = wanted + "/" + entry;
        if (!QFileInfo::exists(part + "/" + entry) && !QFile::remove(moved))
            QDir().rmdir(moved);
    }
}

/// Removes leftovers of killed runs: folders whose names start with `prefix`.
void RemoveLeftovers(const QString& place, const QString& prefix, const QString& wanted)
{
    for (const QString& name : QDir(place).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot)) {
        const QString part = place + "/" + name;
        if (!name.startsWith(prefix) || !QFileInfo::exists(part + "/" + LockName))
            continue;
        const auto lock = LockOf(part);
        if (!lock->tryLock(0)) // its program is still running
            continue;
        UndoMoves(part, wanted);
        lock->unlock();
        QDir(part).removeRecursively();
    }
}

void SyncAll(const QString& folder)
{
    QDirIterator entries(folder, Everything, QDirIterator::Subdirectories);
    while (entries.hasNext())
        if (const QString path = entries.next(); !path.endsWith("/" + LockName))
            host::Sync(path);
    host::Sync(folder);
}

} // namespace

NewFolder::NewFolder(const QString& folder) : wanted(QDir::cleanPath(QDir(folder).absolutePath()))
{
    const QFileInfo self(wanted);
    if (self.exists() && !self.isDir())
        throw basic::RuntimeError::Described(basic::Error::PathAccess,
                                             QString("« %1 » n'est pas un dossier.").arg(folder));
    const QString parent = self.absolutePath();
    if (!QDir().mkpath(parent))
        throw basic::RuntimeError::Described(basic::Error::PathNotFound,
                                             QString("Le dossier « %1 » ne peut pas être créé.").arg(folder));
    RemoveLeftovers(parent, self.fileName() + ".part-", wanted);
    RemoveLeftovers(wanted, ".practice.part-", wanted);

    isWithin = self.exists() && !QDir(wanted).isEmpty(Everything);
    QTemporaryDir made(isWithin ? wanted + "/.practice.part-XXXXXX" : wanted + ".part-XXXXXX");
    if (!made.isValid())
        throw basic::RuntimeError::Described(basic::Error::PathNotFound,
                                             QString("Le dossier « %1 » ne peut pas être créé.").arg(folder));
    part = made.path();
    host::MakePrivate(part);
    owner = LockOf(part);
    if (!owner->tryLock(0))
        RaiseNotMade(folder);
    made.setAutoRemove(false);
}

NewFolder::~NewFolder()
{
    if (owner == nullptr)
        return;
    owner->unlock();
    QDir(part).removeRecursively();
}

void NewFolder::Complete()
{
    SyncAll(part);
    if (isWithin) {
        MoveInto();
        return; // the destructor removes the hidden folder
    }
    owner->unlock();
    if (!host::TryRenameFolder(part, wanted))
        RaiseNotMade(wanted);
    owner.reset();
    host::Sync(QFileInfo(wanted).absolutePath());
}

void NewFolder::MoveInto() const
{
    const QStringList entries = EntriesToMove(part);
    QFile list(part + "/" + MoveList);
    if (!list.open(QIODevice::WriteOnly) || list.write(entries.join('\n').toUtf8()) < 0 || !list.flush())
        RaiseNotMade(wanted);
    host::Sync(list.fileName());
    host::Sync(part);
    for (const QString& entry : entries) {
        const QString place = wanted + "/" + entry;
        if (QFileInfo::exists(place) || !QFile::rename(part + "/" + entry, place)) {
            UndoMoves(part, wanted);
            RaiseNotMade(place);
        }
    }
    host::Sync(wanted);
}

void RequireUnused(const QString& folder)
{
    if (QFileInfo::exists(folder) && !(QFileInfo(folder).isDir() && QDir(folder).isEmpty(Everything)))
        throw basic::RuntimeError::Described(
            basic::Error::FileExists, QString("Le dossier « %1 » n'est pas vide : rien n'a été modifié.").arg(folder));
}

} // namespace data
