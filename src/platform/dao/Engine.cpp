#include "platform/dao/Engine.h"

#include "platform/dao/Connection.h"
#include "platform/dao/Workgroup.h"
#include "platform/store/FileState.h"
#include "platform/store/Opening.h"

#include <QFileInfo>

namespace dao {

struct Workspace::Session {
    std::vector<std::weak_ptr<Connection>> opened;

    Session() = default;
    ~Session() { Close(); }
    Q_DISABLE_COPY_MOVE(Session)

    void Close()
    {
        for (const auto& each : opened) {
            if (const auto connection = each.lock())
                connection->Close();
        }
        opened.clear();
    }
};

Database Workspace::OpenDatabase(const QString& path, const store::OpeningRules& rules) const
{
    if (session == nullptr)
        throw RuntimeError(Error::ObjectClosed);
    store::RequireFile(path);
    const QString file = QFileInfo(path).canonicalFilePath(); // the log of a linked file is beside the file itself
    const auto connection = std::make_shared<Connection>(store::OpenForWork(file, rules), file, rules);
    session->opened.push_back(connection);
    return Database(connection);
}

void Workspace::Close()
{
    if (session != nullptr)
        session->Close();
    session.reset();
}

Workspace Engine::CreateWorkspace(const QString&, const QString& user, const QString& password) const
{
    RequireAccount(SystemDB, user, password);
    Workspace workspace;
    workspace.session = std::make_shared<Workspace::Session>();
    return workspace;
}

void Engine::Idle(int option) const
{
    constexpr int freeLocks = 1;
    if (option != freeLocks)
        return;
    for (Connection* const connection : OpenConnections())
        connection->Idle();
}

} // namespace dao
