#include "platform/store/FileState.h"

#include "platform/host/FileWork.h"
#include "platform/store/Errors.h"
#include "platform/store/FileHeader.h"
#include "platform/store/Hardened.h"

#include <QFile>
#include <QFileInfo>

#include <map>

namespace store {
namespace {

/// Databases that this program has open, once for each connection.
QStringList& OpenPaths()
{
    static auto& paths = *new QStringList; // never destroyed: a global handle may close later
    return paths;
}

/// The files that this program has worked with and closed, as they were then.
std::map<QString, host::FileIdentity>& ClosedSound()
{
    static auto& files = *new std::map<QString, host::FileIdentity>; // as above
    return files;
}

} // namespace

void RequireFile(const QString& path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        throw RuntimeError(Error::DatabaseNotFound, path);
    if (!file.isReadable())
        throw RuntimeError(Error::PermissionDenied);
}

bool HasLog(const QString& path)
{
    return QFileInfo(path + "-wal").size() != 0 || QFileInfo(path + "-journal").size() != 0;
}

QStringList LogsOf(const QString& path)
{
    QStringList logs;
    FileHeader header;
    if (QFileInfo(path + "-journal").size() != 0)
        logs << "-journal";
    if (QFileInfo(path + "-wal").size() != 0 && ReadHeader(OpenHardened(path, Access::Immutable).get(), header) &&
        !header.IsInRollbackMode())
        logs << "-wal";
    return logs;
}

bool IsInUse(const QString& path)
{
    return OpenPaths().contains(path) || host::IsOpenElsewhere(path);
}

void NoteOpened(const QString& path)
{
    OpenPaths() << path;
}

void NoteClosed(const QString& path)
{
    OpenPaths().removeOne(path);
}

void SetLogAside(const QString& path)
{
    if (host::RenameAside(path + "-wal"))
        QFile::remove(path + "-shm");
}

void RememberSound(const QString& path)
{
    ClosedSound()[path] = host::IdentityOf(path);
}

bool IsKnownSound(const QString& path)
{
    const auto closed = ClosedSound().find(path);
    return OpenPaths().contains(path) ||
           (closed != ClosedSound().end() && closed->second == host::IdentityOf(path) && !HasLog(path));
}

} // namespace store
