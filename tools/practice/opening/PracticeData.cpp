#include "practice/opening/PracticeData.h"

#include "archives/Archives.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/host/Files.h"

#include <QFileInfo>

namespace practice {

PracticeData::PracticeData(const QString& folder)
{
    if (!QFileInfo(folder).isDir())
        throw basic::RuntimeError::Described(basic::Error::PathNotFound,
                                             QString("Le dossier « %1 » n'existe pas.").arg(folder));
    dao::DBEngine.SystemDB = host::PathIn(folder, data::WorkgroupFile);
    workspace = dao::DBEngine.CreateWorkspace("Special", data::WorkspaceUser, data::BuildWorkspacePassword());
    archives::RemoveLeftovers(folder);
    database = workspace.OpenDatabase(host::PathIn(folder, data::DatabaseFile), data::PracticeRules());
}

PracticeData::~PracticeData()
{
    try {
        dao::DBEngine.Idle(dao::RefreshCache);
        workspace.Close();
    } catch (const basic::RuntimeError&) {
        // All rows are committed; the next opening makes the checkpoint.
    }
}

} // namespace practice
