#include "data/NewFolder.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QTemporaryDir>
#include <cstdio>

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
    lock->setStaleLockTime(0); // only the end of its process makes it stale
    return lock;
}

/// What is to be moved, the database last: until it is there, there is no practice.
QStringList EntriesToMove(const QString& part)
{
    QStringList entries = QDir(part).entryList(Everything);
    entries.removeAll(LockName);
    entries.removeAll(MoveList);
    if (entries.removeOne(DatabaseFile))
        entries << DatabaseFile;
    return entries;
}

/// Takes back the files that a run moved before it was killed, unless it had moved them all.
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

/// Takes away what runs that were killed have left under names that begin so.
void RemoveLeftovers(const QString& place, const QString& prefix, const QString& wanted)
{
    for (const QString& name : QDir(place).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot)) {
        const QString part = place + "/" + name;
        if (!name.startsWith(prefix) || !QFileInfo::exists(part + "/" + LockName))
            continue;
        const auto lock = LockOf(part);
        if (!lock->tryLock(0)) // its run is alive
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
        host::Sync(entries.next());
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
        return; // what is left of the hidden folder goes with this object
    }
    owner->unlock();
    if (std::rename(QFile::encodeName(part).constData(), QFile::encodeName(wanted).constData()) != 0)
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

} // namespace data
