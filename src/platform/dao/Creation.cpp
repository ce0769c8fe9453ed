#include "platform/basic/OwnerOnly.h"
#include "platform/dao/Engine.h"
#include "platform/dao/Errors.h"
#include "platform/dao/FileHeader.h"
#include "platform/dao/Opening.h"

#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>
#include <sqlite3.h>

namespace dao {

void CreateDatabase(const QString& path, const QString& schema)
{
    const QFileInfo file(path);
    if (file.exists())
        throw RuntimeError(Error::DatabaseExists);
    if (!QFileInfo(file.absolutePath()).isDir())
        throw RuntimeError(Error::PathNotFound);

    const auto ownerOnly = basic::ForOwnerOnly();
    auto removeHalfMade = qScopeGuard([&path] {
        for (const char* const ending : {"", "-journal", "-wal", "-shm"})
            QFile::remove(path + ending);
    });
    const SqliteHandle handle = OpenHardened(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    RunScript(handle.get(), "begin immediate");
    RunScript(handle.get(), schema.toStdString());
    RunScript(handle.get(), "pragma application_id=" + std::to_string(ApplicationId) + "; pragma user_version=" +
                                std::to_string(SchemaVersion) + "; commit; pragma journal_mode=wal");
    removeHalfMade.dismiss();
}

} // namespace dao
