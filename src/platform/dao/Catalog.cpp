#include "platform/dao/Catalog.h"

#include <sqlite3.h>

#include <algorithm>

namespace dao {
namespace {

char Small(char character)
{
    return character >= 'A' && character <= 'Z' ? char(character + ('a' - 'A')) : character;
}

std::string SmallLetters(std::string_view name)
{
    std::string small(name);
    std::ranges::transform(small, small.begin(), Small);
    return small;
}

/// The value of a column's default, which the store keeps as the text of an expression.
Datum DefaultValue(sqlite3* database, const std::string& expression, ColumnType type)
{
    if (expression.empty())
        return {};
    Statement statement(database, "select typeof(v), v from (select " + expression + " as v)");
    if (!statement.Step() || statement.TextAt(0) == "null")
        return {};
    if (statement.TextAt(0) == "text")
        return Datum::Of(statement.TextAt(1));
    if (type == ColumnType::Real || statement.TextAt(0) == "real")
        return Datum::Of(std::stod(statement.TextAt(1)));
    return Datum::Of(statement.WholeAt(1));
}

} // namespace

void Columns::Add(Column column)
{
    columns.push_back(std::move(column));
}

int Columns::PositionOf(std::string_view name) const
{
    // A walk through few names beats any index over them, and the length tells most of them apart.
    constexpr int otherCase = 'a' ^ 'A';
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string& each = columns[i].name;
        if (each.size() != name.size())
            continue;
        std::size_t same = 0;
        while (same < name.size() && (each[same] | otherCase) == (name[same] | otherCase))
            ++same;
        if (same == name.size())
            return int(i);
    }
    return -1;
}

Columns AnswerColumns(const Statement& statement)
{
    Columns answer;
    for (int i = 0; i < sqlite3_column_count(statement.Raw()); ++i) {
        const char* const name = sqlite3_column_name(statement.Raw(), i);
        const char* const declared = sqlite3_column_decltype(statement.Raw(), i);
        answer.Add({name != nullptr ? name : "", TypeOfDeclaration(declared != nullptr ? declared : ""), {}});
    }
    return answer;
}

ColumnType TypeOfDeclaration(std::string_view declared)
{
    const std::string type = SmallLetters(declared);
    const auto has = [&](const char* part) { return type.find(part) != std::string::npos; };
    if (type.empty())
        return ColumnType::Any;
    if (has("date"))
        return ColumnType::Date;
    if (has("smallint"))
        return ColumnType::Small;
    if (has("int") || has("long"))
        return ColumnType::Whole;
    if (has("char") || has("text") || has("clob"))
        return ColumnType::Text;
    if (has("real") || has("doub") || has("floa") || has("num") || has("dec"))
        return ColumnType::Real;
    return ColumnType::Any;
}

Table::Table(sqlite3* database, std::string_view storedName) : name(storedName)
{
    ReadColumns(database);
    if (keyColumn >= 0)
        key = Quoted(columns[keyColumn].name);
    else
        key = "rowid";
    rowParts = key;
    for (int i = 0; i < columns.Count(); ++i)
        rowParts += "," + Quoted(columns[i].name);
}

void Table::ReadColumns(sqlite3* database)
{
    Statement statement(database, "select name, type, dflt_value, pk from pragma_table_info(?)");
    const Datum wanted = Datum::Of(name);
    statement.Bind(1, wanted);
    while (statement.Step()) {
        Column column;
        column.name = statement.TextAt(0);
        column.type = TypeOfDeclaration(statement.TextAt(1));
        column.initially = DefaultValue(database, statement.TextAt(2), column.type);
        if (statement.WholeAt(3) == 1 && SmallLetters(statement.TextAt(1)) == "integer")
            keyColumn = columns.Count();
        columns.Add(std::move(column));
    }
}

Statement& Table::RowByKey(sqlite3* database)
{
    if (!rowByKey)
        rowByKey = Statement(database, "select " + rowParts + " from " + Quoted(name) + " where " + key + "=?");
    return rowByKey;
}

Statement& Table::KeyExists(sqlite3* database)
{
    if (!keyExists)
        keyExists = Statement(database, "select 1 from " + Quoted(name) + " where " + key + "=?");
    return keyExists;
}

void Table::ReleaseStatements()
{
    rowByKey = Statement();
    keyExists = Statement();
}

Table* Catalog::Find(sqlite3* database, std::string_view name)
{
    const std::string asked = SmallLetters(name);
    if (const auto known = byName.find(asked); known != byName.end())
        return known->second;

    Statement statement(database, "select name from sqlite_schema where type='table' and name=? collate nocase "
                                  "and name not like 'sqlite*'");
    const Datum wanted = Datum::Of(asked);
    statement.Bind(1, wanted);
    if (!statement.Step())
        return nullptr;
    Table& table = tables.emplace_back(database, statement.TextAt(0));
    byName.emplace(asked, &table);
    return &table;
}

void Catalog::Forget(std::string_view name)
{
    byName.erase(SmallLetters(name));
}

void Catalog::ReleaseStatements()
{
    for (Table& table : tables)
        table.ReleaseStatements();
}

} // namespace dao
