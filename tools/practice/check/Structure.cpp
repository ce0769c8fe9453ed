#include "practice/check/Structure.h"

#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/store/Creation.h"
#include "platform/store/DatabaseReader.h"
#include "platform/store/Marks.h"
#include "practice/fields/FieldRules.h"

#include <QTemporaryDir>
#include <algorithm>

namespace practice {
namespace {

bool IsSame(const QString& left, const QString& right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

template <class Item>
const Item* FindNamed(const QList<Item>& items, const QString& name)
{
    const auto found =
        std::find_if(items.begin(), items.end(), [&name](const Item& item) { return IsSame(item.name, name); });
    return found != items.end() ? &*found : nullptr;
}

QString TextOf(const store::Statement& row, int column)
{
    return QString::fromStdString(row.TextAt(column));
}

QList<Structure::Field> FieldsOf(const Select& select, const QString& table)
{
    QList<Structure::Field> fields;
    store::Statement rows = select("select name, type, pk from pragma_table_info(?)");
    rows.Bind(1, table);
    while (rows.Step())
        fields << Structure::Field{TextOf(rows, 0), TextOf(rows, 1), rows.WholeAt(2) != 0};
    return fields;
}

QList<Structure::Table> TablesWhere(const Select& select, const std::string& condition)
{
    QList<Structure::Table> found;
    store::Statement tables = select("select name from sqlite_schema where type = 'table' and " + condition);
    while (tables.Step())
        found << Structure::Table{TextOf(tables, 0), FieldsOf(select, TextOf(tables, 0))};
    return found;
}
/// Reads the columns of an index, with order and collation unless ascending and binary.
void ReadColumns(const Select& select, Structure::Index& index)
{
    QStringList columns;
    store::Statement rows = select("select name, desc, coll from pragma_index_xinfo(?) where key = 1");
    rows.Bind(1, index.name);
    while (rows.Step()) {
        const QString field = TextOf(rows, 0);
        if (!field.isEmpty())
            index.fields << field;
        columns << (field.isEmpty() ? "expression" : field) + (rows.WholeAt(1) != 0 ? " desc" : "") +
                       (IsSame(TextOf(rows, 2), "binary") ? QString() : " " + TextOf(rows, 2));
    }
    index.columns = index.table + " (" + columns.join(", ") + ")";
}

QString CountOfFields(const Structure::Table& found, const QString& expected)
{
    return QString("%1 : %2 champ%3 au lieu de %4.")
        .arg(found.name, QString::number(found.fields.size()), found.fields.size() > 1 ? "s" : "", expected);
}

QStringList FieldFaults(const Structure::Table& found, const Structure::Table& expected)
{
    const TableRule* const rule = FindTable(expected.name);
    if (rule != nullptr && rule->isByPosition)
        return found.fields.size() >= expected.fields.size()
                   ? QStringList()
                   : QStringList(CountOfFields(found, QString::number(expected.fields.size())));
    QStringList faults;
    for (const Structure::Field& field : expected.fields) {
        const Structure::Field* const there = found.Find(field.name);
        if (there == nullptr)
            faults << QString("%1 : le champ %2 est absent.").arg(expected.name, field.name);
        else if (!IsSame(there->type, field.type))
            faults << QString("%1 : le champ %2 est du type « %3 » au lieu de %4.")
                          .arg(expected.name, field.name, there->type, field.type);
        else if (there->isKey != field.isKey)
            faults << QString(field.isKey ? "%1 : le champ %2 n'est pas la clé." : "%1 : le champ %2 est une clé.")
                          .arg(expected.name, field.name);
    }
    return faults;
}

/// The screens read the first fields of Permn by position.
QStringList PositionFaults(const Structure::Table& found, const Structure::Table& expected)
{
    constexpr int reachedByPosition = 8;
    QStringList wanted;
    QStringList there;
    for (int position = 0; position < reachedByPosition; ++position) {
        wanted << expected.fields[position].name;
        there << found.fields.value(position).name;
    }
    const bool isMissing = std::ranges::any_of(wanted, [&](const QString& field) { return !found.Find(field); });
    if (isMissing || IsSame(there.join(u' '), wanted.join(u' ')))
        return {};
    return {QString("%1 : les premiers champs ne sont pas %2.").arg(found.name, wanted.join(", "))};
}

/// The first opening adds the field Mt2 to a Prov of five fields.
QStringList AddedFieldFaults(const Structure::Table& found)
{
    constexpr int withAddedField = 6;
    if (found.fields.size() < withAddedField - 1)
        return {CountOfFields(found, "5 ou 6")};
    if (found.fields.size() >= withAddedField && found.Find("Mt2") == nullptr)
        return {QString("%1 : le champ Mt2 est absent.").arg(found.name)};
    return {};
}

QStringList TableFaults(const Structure& found, const Structure::Table& expected)
{
    const Structure::Table* const table = found.FindTable(expected.name);
    if (table == nullptr)
        return {QString("La table %1 est absente.").arg(expected.name)};
    QStringList faults = FieldFaults(*table, expected);
    if (IsSame(expected.name, "Permn"))
        faults << PositionFaults(*table, expected);
    if (IsSame(expected.name, "Prov"))
        faults << AddedFieldFaults(*table);
    return faults;
}

bool CanBeMade(const Structure& found, const Structure::Index& index)
{
    const Structure::Table* const table = found.FindTable(index.table);
    return table != nullptr &&
           std::ranges::all_of(index.fields, [table](const QString& field) { return table->Find(field) != nullptr; });
}

} // namespace

const Structure::Field* Structure::Table::Find(const QString& field) const
{
    return FindNamed(fields, field);
}

const Structure::Table* Structure::FindTable(const QString& name) const
{
    return FindNamed(tables, name);
}

const Structure::Index* Structure::FindIndex(const QString& name) const
{
    return FindNamed(indexes, name);
}

Structure StructureOf(const Select& select)
{
    Structure found;
    found.tables = TablesWhere(select, "name not like 'sqlite!_%' escape '!' and name not like 'ZEP %'");
    store::Statement indexes = select("select i.name, i.tbl_name, i.sql, l.\"unique\", l.partial from sqlite_schema i "
                                      "left join pragma_index_list(i.tbl_name) l on l.name = i.name "
                                      "where i.type = 'index' and i.sql is not null order by i.rowid");
    while (indexes.Step()) {
        Structure::Index index{TextOf(indexes, 0), TextOf(indexes, 1), {}, {}, TextOf(indexes, 2)};
        ReadColumns(select, index);
        if (indexes.WholeAt(3) != 0)
            index.columns += ", sans doublons";
        if (indexes.WholeAt(4) != 0)
            index.columns += ", sous condition";
        found.indexes << index;
    }
    return found;
}

Structure ExpectedStructure()
{
    const QTemporaryDir place;
    if (!place.isValid())
        throw basic::RuntimeError::Described(basic::Error::PathAccess, "Le dossier temporaire ne peut pas être créé.");
    const QString path = place.filePath(data::DatabaseFile);
    store::CreateDatabase(path, data::Schema());
    const store::DatabaseReader empty(path);
    return StructureOf([&empty](std::string_view sql) { return empty.Select(sql); });
}

QList<Structure::Table> FeedTables(const Select& select)
{
    return TablesWhere(select, "name like 'ZEP %' and name <> '" + std::string(store::MarksTable) + "'");
}

QStringList StructureFaults(const Structure& found, const Structure& expected)
{
    QStringList faults;
    for (const Structure::Table& table : expected.tables)
        faults << TableFaults(found, table);
    for (const Structure::Index& index : expected.indexes) {
        const Structure::Index* const there = found.FindIndex(index.name);
        if (there == nullptr)
            faults << QString("L'index %1 est absent.").arg(index.name);
        else if (!IsSame(there->columns, index.columns))
            faults << QString("L'index %1 porte sur %2 au lieu de %3.").arg(index.name, there->columns, index.columns);
    }
    return faults;
}

QStringList ForeignIndexes(const Structure& found, const Structure& expected)
{
    QStringList lines;
    for (const Structure::Index& index : found.indexes)
        if (expected.FindIndex(index.name) == nullptr)
            lines << QString("L'index %1 sur %2 n'est pas du programme.").arg(index.name, index.columns);
    return lines;
}

QList<Structure::Index> IndexesToMake(const Structure& found, const Structure& expected)
{
    QList<Structure::Index> indexes;
    for (const Structure::Index& index : expected.indexes) {
        const Structure::Index* const there = found.FindIndex(index.name);
        if ((there == nullptr || !IsSame(there->columns, index.columns)) && CanBeMade(found, index))
            indexes << index;
    }
    return indexes;
}

} // namespace practice
