#include "practice/copies/Differences.h"

#include "practice/fields/QuotedName.h"
#include "practice/output/Progress.h"

#include <QHash>
#include <algorithm>
#include <cstring>

namespace practice {
namespace {

/// The compared tables, with the column that identifies a row.
constexpr std::pair<const char*, const char*> ComparedTables[] = {
    {"Patients", "num"}, {"Actes", "num"},    {"Actes_suppr", "num"}, {"Plani", "num"},
    {"Presta", "num"},   {"Recettes", "num"}, {"Tarif", "rowid"},     {"Permn", "rowid"}};

QStringList ColumnsOf(const store::DatabaseReader& reader, const QString& table)
{
    QStringList columns;
    store::Statement names = reader.Select("select name from pragma_table_info('" + table.toStdString() + "')");
    while (names.Step())
        columns << QString::fromStdString(names.TextAt(0));
    return columns;
}

QStringList CommonColumns(const QStringList& before, const QStringList& after, const QString& key)
{
    QStringList common;
    for (const QString& column : after)
        if (column.compare(key, Qt::CaseInsensitive) != 0 && before.contains(column, Qt::CaseInsensitive))
            common << column;
    return common;
}

/// Iterates over a table in the order of its keys; the key is column 0 of the select.
class Rows {
public:
    Rows(const store::DatabaseReader& reader, const QString& table, const QString& key, const QStringList& columns)
    {
        store::Statement number = reader.Select(("select count(*) from " + table).toStdString());
        number.Step();
        count = number.WholeAt(0);
        QString select = "select " + key;
        for (const QString& column : columns)
            select += ", " + QuotedName(column);
        statement = reader.Select((select + " from " + table + " order by " + key).toStdString());
        Next();
    }

    qint64 Count() const { return count; }
    bool IsAtEnd() const { return atEnd; }
    qint64 Key() const { return statement.WholeAt(0); }
    store::StoredValue At(int column) const { return statement.At(column + 1); }
    void Next() { atEnd = !statement.Step(); }

private:
    store::Statement statement;
    qint64 count = 0;
    bool atEnd = false;
};

bool IsSame(const store::StoredValue& left, const store::StoredValue& right)
{
    using Kind = store::StoredValue::Kind;
    if (left.kind != right.kind) {
        const auto number = [](const store::StoredValue& value) {
            return value.kind == Kind::Whole ? double(value.whole) : value.real;
        };
        const auto isNumber = [](const store::StoredValue& value) {
            return value.kind == Kind::Whole || value.kind == Kind::Real;
        };
        return isNumber(left) && isNumber(right) && number(left) == number(right);
    }
    switch (left.kind) {
    case Kind::Null:
        return true;
    case Kind::Whole:
        return left.whole == right.whole;
    case Kind::Real:
        return left.real == right.real;
    case Kind::Text:
        break;
    }
    return left.length == right.length && std::memcmp(left.text, right.text, std::size_t(left.length)) == 0;
}

store::Value Held(const store::StoredValue& stored)
{
    return store::ValueOf(stored, store::ColumnType::Text); // keeps dates in their stored form
}

RowChange WholeRow(RowChange::Kind kind, const Rows& row, const QStringList& columns)
{
    RowChange change{kind, row.Key(), {}};
    for (int column = 0; column < columns.size(); ++column) {
        const store::Value value = Held(row.At(column));
        if (kind == RowChange::Kind::Added)
            change.fields << FieldChange{columns[column], {}, value};
        else
            change.fields << FieldChange{columns[column], value, {}};
    }
    return change;
}

RowChange Compared(const Rows& before, const Rows& after, const QStringList& columns)
{
    RowChange change{RowChange::Kind::Changed, after.Key(), {}};
    for (int column = 0; column < columns.size(); ++column)
        if (!IsSame(before.At(column), after.At(column)))
            change.fields << FieldChange{columns[column], Held(before.At(column)), Held(after.At(column))};
    return change;
}

TableChanges ChangesOf(const QString& table, Rows before, Rows after, const QStringList& columns)
{
    TableChanges changes{table, {}};
    Progress progress(QString("Comparaison de %1").arg(table), before.Count() + after.Count());
    while (!before.IsAtEnd() || !after.IsAtEnd()) {
        progress.Advance();
        if (after.IsAtEnd() || (!before.IsAtEnd() && before.Key() < after.Key())) {
            changes.rows << WholeRow(RowChange::Kind::Gone, before, columns);
            before.Next();
        } else if (before.IsAtEnd() || after.Key() < before.Key()) {
            changes.rows << WholeRow(RowChange::Kind::Added, after, columns);
            after.Next();
        } else {
            if (RowChange change = Compared(before, after, columns); !change.fields.isEmpty())
                changes.rows << std::move(change);
            before.Next();
            after.Next();
            progress.Advance(); // two rows
        }
    }
    return changes;
}

} // namespace

const FieldChange* RowChange::Find(const QString& field) const
{
    const auto found = std::ranges::find_if(
        fields, [&](const FieldChange& change) { return change.field.compare(field, Qt::CaseInsensitive) == 0; });
    return found == fields.end() ? nullptr : &*found;
}

int TableChanges::Count(RowChange::Kind kind) const
{
    return int(std::ranges::count(rows, kind, &RowChange::kind));
}

QList<TableChanges> DifferencesOf(const store::DatabaseReader& before, const store::DatabaseReader& after)
{
    QList<TableChanges> all;
    for (const auto& [table, key] : ComparedTables) {
        const QStringList columns = CommonColumns(ColumnsOf(before, table), ColumnsOf(after, table), key);
        if (!columns.isEmpty())
            all << ChangesOf(table, Rows(before, table, key, columns), Rows(after, table, key, columns), columns);
    }
    return all;
}

QString KindText(RowChange::Kind kind)
{
    switch (kind) {
    case RowChange::Kind::Added:
        return "ajoutée";
    case RowChange::Kind::Changed:
        return "modifiée";
    case RowChange::Kind::Gone:
        break;
    }
    return "disparue";
}

QString CountsText(const TableChanges& changes)
{
    QStringList counts;
    for (const RowChange::Kind kind : {RowChange::Kind::Added, RowChange::Kind::Changed, RowChange::Kind::Gone})
        if (const int count = changes.Count(kind); count > 0)
            counts << QString("%1 %2%3").arg(count).arg(KindText(kind), count > 1 ? "s" : "");
    return counts.isEmpty() ? QString("rien n'a changé") : counts.join(", ");
}

} // namespace practice
