#include "platform/dao/Catalog.h"

#include <sqlite3.h>

#include <algorithm>

namespace dao {
namespace {

std::string SmallLetters(std::string_view name)
{
    std::string small(name);
    std::ranges::transform(small, small.begin(),
                           [](char each) { return each >= 'A' && each <= 'Z' ? char(each + ('a' - 'A')) : each; });
    return small;
}

ColumnType TypeOfDeclaration(const char* declared)
{
    const std::string type = SmallLetters(declared != nullptr ? declared : "");
    constexpr std::pair<const char*, ColumnType> parts[] = {
        {"date", ColumnType::Date},   {"smallint", ColumnType::Small}, {"int", ColumnType::Whole},
        {"text", ColumnType::Text},   {"char", ColumnType::Text},      {"real", ColumnType::Real},
        {"double", ColumnType::Real}, {"num", ColumnType::Real},
    };
    for (const auto& [part, meaning] : parts) {
        if (type.find(part) != std::string::npos)
            return meaning;
    }
    return ColumnType::Any;
}

} // namespace

int Columns::PositionOf(std::string_view name) const
{
    // For a few names a linear search beats a hash; most differ in length already.
    constexpr int otherCase = 'a' ^ 'A';
    const auto same = [](char left, char right) { return (left | otherCase) == (right | otherCase); };
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name.size() == name.size() && std::ranges::equal(columns[i].name, name, same))
            return static_cast<int>(i);
    }
    return -1;
}

Columns ResultColumnsOf(const Statement& statement)
{
    Columns answer;
    for (int i = 0; i < sqlite3_column_count(statement.Raw()); ++i)
        answer.Add(
            {sqlite3_column_name(statement.Raw(), i), TypeOfDeclaration(sqlite3_column_decltype(statement.Raw(), i))});
    return answer;
}

Table::Table(sqlite3* database, std::string_view storedName) : name(storedName)
{
    ReadColumns(database);
    key = keyColumn >= 0 ? Quoted(columns[keyColumn].name) : "rowid";
    rowParts = key;
    for (int i = 0; i < columns.Count(); ++i)
        rowParts += "," + Quoted(columns[i].name);

    const std::string from = " from " + Quoted(name);
    first = "select " + rowParts + ",(select max(" + key + ")" + from + ")" + from + " order by " + key + " limit 1";
    following = "select " + rowParts + from + " where " + key + ">? and " + key + "<=? order by " + key + " limit ?";
    byKey = "select " + rowParts + from + " where " + key + "=?";
    last = "select " + rowParts + from + " where " + key + "<=? order by " + key + " desc limit 1";
    // Counting all rows is far faster than counting up to a key.
    count = "select (select count(*)" + from + ")-(select count(*)" + from + " where " + key + ">?)";
}

void Table::ReadColumns(sqlite3* database)
{
    Statement statement(database, "select name, type, pk from pragma_table_info(?)");
    statement.Bind(1, QString::fromStdString(name));
    while (statement.Step()) {
        const std::string declared = statement.TextAt(1);
        if (statement.WholeAt(2) == 1 && SmallLetters(declared) == "integer")
            keyColumn = columns.Count();
        columns.Add({statement.TextAt(0), TypeOfDeclaration(declared.c_str())});
    }
}

Table* Catalog::Find(sqlite3* database, std::string_view name)
{
    const std::string asked = SmallLetters(name);
    if (const auto known = byName.find(asked); known != byName.end())
        return known->second;

    Statement statement(database, "select name from sqlite_schema where type='table' and name=? collate nocase "
                                  "and substr(name,1,7)<>'sqlite_'");
    statement.Bind(1, QString::fromStdString(asked));
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

} // namespace dao
