#include "platform/dao/DirectStatements.h"

#include "platform/host/SystemErrors.h"

namespace dao {
namespace {

template <class Work>
void InStore(Connection& connection, const Work& work)
{
    try {
        work();
    } catch (const RuntimeError& error) {
        const QString folder = error.Code() == Error::DiskFull ? connection.TemporaryFolder() : QString();
        if (folder.isEmpty())
            throw;
        host::RaiseDiskFull(folder);
    }
}

} // namespace

DirectStatements::DirectStatements(const Database& target) : connection(target.connection)
{
    target.Open();
}

int DirectStatements::Run(const std::string& sql) const
{
    int rows = 0;
    InStore(*connection, [&] { rows = connection->Run(sql); });
    return rows;
}

RepeatedStatement DirectStatements::Prepare(const std::string& sql) const
{
    return connection->Prepare(sql);
}

void DirectStatements::Run(RepeatedStatement& repeated) const
{
    InStore(*connection, [&] { connection->Run(repeated); });
}

void DirectStatements::RollBackIfOpen() const
{
    if (connection->IsOpen())
        connection->RollBackIfOpen();
}

int DirectStatements::Change(const std::string& sql) const
{
    return connection->Change(sql);
}

Rows DirectStatements::Select(const std::string& sql, std::initializer_list<Value> parameters) const
{
    return connection->Select(sql, parameters);
}

qint64 DirectStatements::WholeNumber(const std::string& select) const
{
    Rows answer = connection->Select(select);
    return answer.Step() ? answer.Row().WholeAt(0) : 0;
}

quint32 DirectStatements::CommitsOfOthers() const
{
    return connection->Version().commits;
}

} // namespace dao
