#include "platform/basic/RuntimeError.h"
#include "platform/dao/Connection.h"
#include "platform/dao/Database.h"

#include <sqlite3.h>

namespace dao {
namespace {

struct FieldKind {
    const char* declared;
    ColumnType type;
};

FieldKind KindOf(FieldType type)
{
    switch (type) {
    case FieldType::Integer:
        return {"SMALLINT", ColumnType::Small};
    case FieldType::Long:
        return {"INTEGER", ColumnType::Whole};
    case FieldType::Double:
        return {"REAL", ColumnType::Real};
    case FieldType::Date:
        return {"DATE", ColumnType::Date};
    case FieldType::Text:
        break;
    }
    return {"TEXT", ColumnType::Text};
}

/// The value as a constant of the store's language.
std::string Constant(sqlite3* database, const Datum& value)
{
    Statement quote(database, "select quote(?)");
    quote.Bind(1, value);
    quote.Step();
    return quote.TextAt(0);
}

Table& Known(Connection& connection, const QString& name)
{
    Table* const table = connection.FindTable(name.toStdString());
    if (table == nullptr)
        throw basic::RuntimeError(basic::Error::UnknownField);
    return *table;
}

} // namespace

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

void TableDef::AppendField(const QString& name, FieldType type, const Value& initially)
{
    const Table& table = Known(*connection, tableName);
    const std::string field = name.toStdString();
    if (table.columns.PositionOf(field) >= 0)
        throw basic::RuntimeError(basic::Error::FieldExists);
    const FieldKind kind = KindOf(type);
    const Datum value = Stored(initially, kind.type);

    connection->Settle();
    sqlite3* const database = connection->Handle();
    std::string change = "alter table " + Quoted(table.name) + " add column " + Quoted(field) + " " + kind.declared;
    if (value.kind != Kind::Null)
        change += " default " + Constant(database, value);
    Statement alteration(database, change);
    connection->RunChange(alteration);
    connection->ForgetTable(tableName.toStdString());
}

} // namespace dao
