#include "platform/store/DatabaseHold.h"

#include "platform/store/Errors.h"

#include <QFileInfo>

namespace store {

DatabaseHold::DatabaseHold(const QString& database) : path(database)
{
    if (!host::IsWritable(path))
        return;
    file.emplace(path, host::OpenFile::Access::Write);
    if (!file->TryLockDatabase())
        throw RuntimeError(Error::Locked);
}

void DatabaseHold::ReplaceBy(const QString& other)
{
    if (!host::TryRenameOverHeld(other, path)) {
        file.reset();
        host::RenameOver(other, path);
    }
    host::Sync(QFileInfo(path).absolutePath());
}

} // namespace store
