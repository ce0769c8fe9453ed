#include "platform/store/Creation.h"

#include "platform/host/FileWork.h"
#include "platform/host/OwnerOnly.h"
#include "platform/store/Errors.h"
#include "platform/store/FileHeader.h"
#include "platform/store/Hardened.h"
#include "platform/store/Marks.h"

#include <QFileInfo>
#include <QScopeGuard>

namespace store {

void CreateDatabase(const QString& path, const QString& schema)
{
    const QFileInfo file(path);
    if (file.exists())
        throw RuntimeError(Error::DatabaseExists);
    if (!QFileInfo(file.absolutePath()).isDir())
        throw RuntimeError(Error::PathNotFound);

    const auto ownerOnly = host::ForOwnerOnly();
    auto removeHalfMade = qScopeGuard([&path] { host::RemoveDatabase(path); });
    const SqliteHandle handle = OpenHardened(path, Access::Create);
    RunScript(handle.get(), "begin immediate");
    RunScript(handle.get(), schema.toStdString());
    CreateMarks(handle.get());
    RunScript(handle.get(), "pragma application_id=" + std::to_string(ApplicationId) + "; pragma user_version=" +
                                std::to_string(SchemaVersion) + "; commit; pragma journal_mode=wal");
    removeHalfMade.dismiss();
}

} // namespace store
