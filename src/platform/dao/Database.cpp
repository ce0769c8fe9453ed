#include "platform/dao/Database.h"

#include "platform/basic/RuntimeError.h"
#include "platform/dao/AnswerSet.h"
#include "platform/dao/TableSet.h"

namespace dao {

Connection& Database::Open() const
{
    if (connection == nullptr || !connection->IsOpen())
        throw basic::RuntimeError(basic::Error::ObjectClosed);
    return *connection;
}

Recordset Database::OpenRecordset(const QString& statementOrTable) const
{
    Phrase phrase = TakeApart(statementOrTable);
    Plan& plan = Open().PlanOf(statementOrTable, phrase.shape);
    switch (plan.sort) {
    case Plan::Sort::Rows:
        return Recordset(std::make_shared<TableSet>(connection, plan, std::move(phrase.literals)));
    case Plan::Sort::Answer:
        return Recordset(std::make_shared<AnswerSet>(connection, plan, phrase.literals));
    default:
        throw basic::RuntimeError(basic::Error::InvalidOperation);
    }
}

int Database::Execute(const QString& statement, int options) const
{
    Phrase phrase = TakeApart(statement);
    const bool skipsFailures = (options & FailOnError) == 0;
    if (skipsFailures)
        phrase.shape += u'!';
    Plan& plan = Open().PlanOf(statement, phrase.shape, skipsFailures);
    if (plan.sort == Plan::Sort::Rows || plan.sort == Plan::Sort::Answer)
        throw basic::RuntimeError(basic::Error::NotAnAction);
    return connection->Change(plan, phrase.literals);
}

dao::TableDef Database::TableDef(const QString& table) const
{
    Open();
    return {connection, table};
}

void Database::BeginTrans() const
{
    Open().BeginTransaction();
}

void Database::CommitTrans() const
{
    Open().CommitTransaction();
}

void Database::Rollback() const
{
    Open().RollbackTransaction();
}

void Database::Close()
{
    if (connection != nullptr)
        connection->Close();
    connection.reset();
}

Transaction::Transaction(Database database) : target(std::move(database))
{
    target.BeginTrans();
}

Transaction::~Transaction()
{
    if (!open)
        return;
    try {
        target.Rollback();
    } catch (const basic::RuntimeError&) {
        // The file was closed meanwhile, which has rolled it back.
    }
}

void Transaction::Commit()
{
    open = false;
    target.CommitTrans();
}

} // namespace dao
