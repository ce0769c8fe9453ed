#include "practice/feed/StagedTable.h"

#include "platform/basic/RuntimeError.h"

#include <algorithm>

namespace practice {
namespace {

using basic::RuntimeError;
using store::ColumnType;

constexpr qint64 MostNamed = 1000;

ColumnType TypeOf(const FieldRule& field)
{
    switch (field.kind) {
    case FieldKind::Date:
        return ColumnType::Date;
    case FieldKind::Amount:
        return ColumnType::Real;
    case FieldKind::Key:
    case FieldKind::Reference:
        return ColumnType::Whole;
    case FieldKind::Month:
    case FieldKind::Year:
    case FieldKind::Code:
        return ColumnType::Small;
    default:
        return ColumnType::Text;
    }
}

const char* DeclarationOf(const FieldRule& field)
{
    switch (TypeOf(field)) {
    case ColumnType::Date:
        return " DATE";
    case ColumnType::Real:
        return " REAL";
    case ColumnType::Whole:
    case ColumnType::Small:
        return field.kind == FieldKind::Key ? " INTEGER PRIMARY KEY" : " INTEGER";
    default:
        return " TEXT";
    }
}

bool IsSettlement(const TableRule& table, const FieldRule& field)
{
    return qstrcmp(table.name, "Actes") == 0 &&
           (qstrcmp(field.name, "flag_R") == 0 || qstrcmp(field.name, "montant") == 0);
}

std::string Joined(const std::vector<std::string>& parts, const char* separator)
{
    std::string all;
    for (const std::string& part : parts)
        all += (all.empty() ? "" : separator) + part;
    return all;
}

} // namespace

std::string IsSame(const std::string& left, const std::string& right, const FieldRule& field)
{
    if (TypeOf(field) != ColumnType::Text)
        return left + " is " + right;
    return "nullif(trim(" + left + "),'') is nullif(trim(" + right + "),'')";
}

StagedTable::StagedTable(const dao::Database& database, const TableRule& rule)
    : direct(database), table(rule), target("main." + store::Quoted(rule.name)),
      rows("temp." + store::Quoted(std::string("fed ") + rule.name)),
      newRows("temp." + store::Quoted(std::string("new ") + rule.name)),
      changedRows("temp." + store::Quoted(std::string("changed ") + rule.name))
{
}

StagedTable::~StagedTable()
{
    insert.reset();
    try {
        direct.RollBackIfOpen();
        for (const std::string& each : {rows, newRows, changedRows})
            direct.Run("drop table if exists " + each);
    } catch (const RuntimeError&) {
        // The temporary file goes with the connection.
    }
}

std::string StagedTable::Quoted(const Field& field) const
{
    return store::Quoted(field.rule->name);
}

bool StagedTable::Has(const char* name) const
{
    return std::ranges::any_of(fields, [name](const Field& field) { return qstrcmp(field.rule->name, name) == 0; });
}

/// Fields that the source doesn't change in a row that is here.
bool StagedTable::IsOurs(const FieldRule& field) const
{
    return field.kind == FieldKind::Key || qstrcmp(field.name, "Flag_H") == 0 || IsSettlement(table, field);
}

// -- staging

void StagedTable::Begin(const QStringList& names)
{
    for (qsizetype position = 0; position < names.size(); ++position) {
        const int place = table.Find(names[position]);
        const FieldRule& rule = table.fields[static_cast<std::size_t>(place)];
        fields.push_back({&rule, static_cast<std::size_t>(position), TypeOf(rule)});
    }
    hasSettlements = qstrcmp(table.name, "Actes") == 0 && Has("flag_R") && Has("montant");
    if (!hasSettlements)
        std::erase_if(fields, [this](const Field& field) { return IsSettlement(table, *field.rule); });

    std::vector<std::string> columns;
    std::vector<std::string> parameters;
    for (const Field& field : fields) {
        columns.push_back(Quoted(field) + DeclarationOf(*field.rule));
        parameters.emplace_back("?");
    }
    direct.Run("drop table if exists " + rows);
    direct.Run("create table " + rows + " (" + Joined(columns, ",") + ")");
    direct.Run("begin");
    insert.emplace(direct.Prepare("insert into " + rows + " values (" + Joined(parameters, ",") + ")"));
}

QString StagedTable::Add(const std::vector<store::Value>& values, qint64 /*line*/)
{
    int parameter = 0;
    for (Field& field : fields) {
        const store::Value& value = values[field.position];
        if (field.type != ColumnType::Date)
            insert->Bind(++parameter, store::ToColumn(value, field.type));
        else
            insert->Bind(++parameter, field.StoredDay(value));
    }
    try {
        direct.Run(*insert);
    } catch (const RuntimeError& error) {
        if (error.Code() != basic::Error::DuplicateKey)
            throw;
        return "num : une autre ligne de la source a la même clé";
    }
    ++staged;
    return {};
}

/// Most rows have the day of the row before.
const store::Value& StagedTable::Field::StoredDay(const store::Value& value)
{
    if (day.Raw() != value.Raw()) {
        day = value;
        storedDay = store::ToColumn(value, type);
    }
    return storedDay;
}

void StagedTable::End()
{
    insert.reset();
    direct.Run("commit");
}

// -- comparing

void StagedTable::Compare(qint64 highestEver, Problems& problems)
{
    counts = {};
    FindOtherRows();
    const std::string absent = changedRows + " c cross join " + rows + " s on s.num=c.num where c.isNew";
    direct.Run("drop table if exists " + newRows);
    direct.Run("create table " + newRows + " as select s.* from " + absent + " and s.num>" +
               std::to_string(highestEver) + " order by " + OrderOfFirstIndex());
    const int others = direct.Run("delete from " + changedRows + " where isNew");
    counts.added = direct.WholeNumber("select count(*) from " + newRows);
    counts.changed = direct.WholeNumber("select count(*) from " + changedRows);
    counts.kept = others - counts.added;
    counts.unchanged = staged - others - counts.changed;
    hasDifferences = counts.changed > 0;
    for (Field& field : fields)
        field.isDifferent =
            hasDifferences && !IsOurs(*field.rule) &&
            direct.WholeNumber("select max(d" + std::to_string(field.position) + ") from " + changedRows) != 0;
    if (counts.added > 0)
        RequireFields(problems);
}

/// Finds rows that aren't here and those that are different.
void StagedTable::FindOtherRows()
{
    std::vector<std::string> same;
    std::string differs;
    for (const Field& field : fields) {
        if (IsOurs(*field.rule))
            continue;
        same.push_back(IsSame("s." + Quoted(field), "t." + Quoted(field), *field.rule));
        differs += ",not(" + same.back() + ") as d" + std::to_string(field.position);
    }
    direct.Run("drop table if exists " + changedRows);
    direct.Run("create table " + changedRows + " as select s.num as num,t.num is null as isNew" + differs + " from " +
               rows + " s left join " + target + " t on t.num=s.num where t.num is null or not (" +
               (same.empty() ? "1" : Joined(same, " and ")) + ")");
}

void StagedTable::RequireFields(Problems& problems) const
{
    QStringList missing;
    for (const FieldRule& field : table.fields) {
        if (field.missing == Missing::Fault && !IsSettlement(table, field) && !Has(field.name))
            missing << field.name;
    }
    if (missing.isEmpty())
        return;
    dao::Rows added = direct.Select("select num from " + newRows + " order by num limit " + std::to_string(MostNamed));
    while (added.Step())
        problems.Add(0, QString("%1 : une valeur est obligatoire dans une ligne nouvelle").arg(missing.join(", ")),
                     added.Row().WholeAt(0));
}

/// In the order of the table's first index, in which rows are added fastest.
std::string StagedTable::OrderOfFirstIndex() const
{
    std::string order;
    dao::Rows columns =
        direct.Select("select part.name from pragma_index_info((select name from pragma_index_list(?1,'main') order by "
                      "seq desc limit 1),'main') part where part.name is not null order by part.seqno",
                      {QString(table.name)});
    while (columns.Step()) {
        const std::string name = columns.Row().TextAt(0);
        if (Has(name.c_str()))
            order += store::Quoted(name) + ",";
    }
    return order + "num";
}

// -- writing

void StagedTable::Write() const
{
    std::vector<std::string> settings;
    std::vector<std::string> names;
    for (const Field& field : fields) {
        names.push_back(Quoted(field));
        if (field.isDifferent) // an index over none of these fields isn't touched
            settings.push_back(Quoted(field) + "=s." + Quoted(field));
    }
    if (!settings.empty())
        direct.Change("update " + target + " as t set " + Joined(settings, ",") + " from " + changedRows +
                      " c cross join " + rows + " s on s.num=c.num where t.num=c.num");
    const std::string all = Joined(names, ",");
    if (counts.added > 0)
        direct.Change("insert into " + target + " (" + all + ") select " + all + " from " + newRows);
}

} // namespace practice
