#include "platform/dao/Database.h"

#include "platform/dao/ListedSet.h"
#include "platform/dao/Tokenizer.h"
#include "platform/dao/WholeSet.h"

namespace dao {
namespace {

Table& Known(Connection& connection, const QString& name)
{
    Table* const table = connection.FindTable(name.toStdString());
    if (table == nullptr)
        throw RuntimeError(Error::UnknownField);
    return *table;
}

} // namespace

Connection& Database::Open() const
{
    if (connection == nullptr || !connection->IsOpen())
        throw RuntimeError(Error::ObjectClosed);
    return *connection;
}

Recordset Database::OpenRecordset(const QString& statementOrTable) const
{
    StatementShape split = ShapeOf(statementOrTable);
    const std::shared_ptr<Plan> plan = Open().PlanOf(statementOrTable, split.shape);
    switch (plan->kind) {
    case Plan::Kind::Table:
        return Recordset(std::make_shared<WholeSet>(connection, *plan->table));
    case Plan::Kind::Rows:
        return Recordset(std::make_shared<ListedSet>(connection, plan, std::move(split.literals)));
    case Plan::Kind::Snapshot:
        return Recordset(std::make_shared<SnapshotSet>(connection, plan, split.literals));
    case Plan::Kind::Change:
        break;
    }
    throw RuntimeError(Error::InvalidOperation);
}

int Database::Execute(const QString& statement, int options) const
{
    StatementShape split = ShapeOf(statement);
    const bool skipsFailures = (options & FailOnError) == 0;
    if (skipsFailures)
        split.shape += u'!';
    const std::shared_ptr<Plan> plan = Open().PlanOf(statement, split.shape, skipsFailures);
    if (plan->kind != Plan::Kind::Change)
        throw RuntimeError(Error::NotAnAction);
    return connection->Change(*plan, split.literals);
}

dao::TableDef Database::TableDef(const QString& table) const
{
    Open();
    return {connection, table};
}

void Database::RequireSameFile() const
{
    Open().RequireSameFile();
}

void Database::BeginTrans() const
{
    Open().BeginTransaction();
}

void Database::CommitTrans() const
{
    Open().EndTransaction(true);
}

void Database::Rollback() const
{
    Open().EndTransaction(false);
}

void Database::KeepKeysAboveReferences() const
{
    Open().KeepKeysAboveReferences();
}

void Database::Close()
{
    if (connection != nullptr)
        connection->Close();
    connection.reset();
}

ReadTransaction::ReadTransaction(const Database& database) : connection(database.connection)
{
    database.Open().BeginReadTransaction();
}

ReadTransaction::~ReadTransaction()
{
    connection->EndReadTransaction();
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
    } catch (const RuntimeError&) {
        // The file was closed, which rolled it back.
    }
}

void Transaction::Commit()
{
    open = false;
    target.CommitTrans();
}

TableDef::TableDef(std::shared_ptr<Connection> database, const QString& table)
    : connection(std::move(database)), tableName(table)
{
    Known(*connection, tableName);
}

int TableDef::FieldCount() const
{
    return Known(*connection, tableName).columns.Count();
}

QStringList TableDef::FieldNames() const
{
    const Columns& columns = Known(*connection, tableName).columns;
    QStringList names;
    for (int i = 0; i < columns.Count(); ++i)
        names << QString::fromStdString(columns[i].name);
    return names;
}

void TableDef::AppendField(const QString& name, double initially)
{
    const Table& table = Known(*connection, tableName);
    const std::string field = name.toStdString();
    if (table.columns.PositionOf(field) >= 0)
        throw RuntimeError(Error::FieldExists);
    connection->Change("alter table " + Quoted(table.name) + " add column " + Quoted(field) + " REAL default " +
                       QString::number(initially, 'g', 17).toStdString());
    connection->ForgetTable(tableName.toStdString());
}

} // namespace dao
