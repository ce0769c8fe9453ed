#include "platform/host/FileWork.h"

#include "platform/basic/RuntimeError.h"
#include "platform/host/OwnerOnly.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <QThread>

namespace host {

QString BehindLinks(const QString& path)
{
    const QFileInfo file(path);
    return file.exists() ? file.canonicalFilePath() : file.isSymLink() ? file.symLinkTarget() : path;
}

FolderLock::FolderLock(const QString& path, Wait wait) : folder(TryToHold(path))
{
    constexpr int longestWait = 60'000; // ms
    constexpr int betweenTries = 20;
    for (int waited = 0; folder == nullptr; waited += betweenTries) {
        if (wait == Wait::No || waited > longestWait)
            throw basic::RuntimeError(basic::Error::PermissionDenied);
        QThread::msleep(betweenTries);
        folder = TryToHold(path);
    }
}

DatabaseHold::DatabaseHold(const QString& database) : path(database)
{
    if (!IsWritable(path))
        return;
    file.emplace(path, OpenFile::Access::Write);
    if (!file->TryLockDatabase())
        throw basic::RuntimeError(basic::Error::Locked);
}

void DatabaseHold::ReplaceBy(const QString& other)
{
    if (!TryRenameOverHeld(other, path)) {
        file.reset();
        RenameOver(other, path);
    }
    Sync(QFileInfo(path).absolutePath());
}

void RemoveDatabase(const QString& path)
{
    for (const char* const ending : {"", "-journal", "-wal", "-shm"})
        RemoveFile(path + ending);
}

QString PartOf(const QString& target)
{
    QString part = target + ".part";
    for (int i = 2;; ++i) {
        RemoveDatabase(part);
        const QFileInfo file(part);
        if (!file.exists() && !file.isSymLink())
            return part;
        part = target + ".part" + QString::number(i);
    }
}

void Replace(const QString& path, const QString& target)
{
    RenameOver(path, target);
    Sync(QFileInfo(target).absolutePath());
}

bool RenameAside(const QString& path)
{
    QString aside = path + ".set-aside";
    for (int i = 2; QFileInfo::exists(aside); ++i)
        aside = path + ".set-aside-" + QString::number(i);
    return QFile::rename(path, aside);
}

void CopyFile(const QString& path, const QString& target)
{
    const auto ownerOnly = ForOwnerOnly();
    const OpenFile from(path, OpenFile::Access::Read);
    const OpenFile made(target, OpenFile::Access::CreateNew);
    auto removeHalf = qScopeGuard([&target] { QFile::remove(target); });
    made.AppendAll(from);
    made.SetTimeOf(from);
    made.Sync();
    Sync(QFileInfo(target).absolutePath());
    removeHalf.dismiss();
}

void LinkFile(const QString& path, const QString& target)
{
    if (!TryLink(path, target))
        return CopyFile(path, target);
    Sync(QFileInfo(target).absolutePath());
}

bool IsSameFile(const QString& path, const QString& other)
{
    const FileIdentity one = IdentityOf(path);
    return one != FileIdentity() && one.IsSameFile(IdentityOf(other));
}

} // namespace host
