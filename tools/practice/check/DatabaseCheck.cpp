#include "practice/check/DatabaseCheck.h"

#include "platform/basic/RuntimeError.h"
#include "practice/check/Damage.h"
#include "practice/check/Findings.h"
#include "practice/fields/QuotedName.h"
#include "practice/fields/StoredRules.h"
#include "practice/output/Progress.h"

#include <map>
#include <optional>

namespace practice {
namespace {

/// A field under its name in the database, and the faults that its values can have.
struct CheckedField {
    QString field;
    QList<ValueFault> faults;
};

/// Skips fields that the database doesn't have, and faults whose condition reads a missing table or field.
QList<CheckedField> FaultsIn(const TableRule& rule, const Structure& found)
{
    const Structure::Table& table = *found.FindTable(rule.name);
    QList<CheckedField> fields;
    for (int position = 0; position < static_cast<int>(rule.fields.size()); ++position) {
        const FieldRule& field = rule.fields[static_cast<std::size_t>(position)];
        const QString name = rule.isByPosition ? table.fields.value(position).name : QString(field.name);
        if (table.Find(name) == nullptr)
            continue;
        CheckedField checked{name, FaultsOf(field, name)};
        checked.faults.removeIf([&](const ValueFault& fault) {
            return (fault.readsTable != nullptr && found.FindTable(fault.readsTable) == nullptr) ||
                   (fault.readsField != nullptr && table.Find(fault.readsField) == nullptr);
        });
        if (!checked.faults.isEmpty())
            fields << checked;
    }
    return fields;
}

/// A select of the faulty rows: key, then for each field the number of its fault (from 1; Null for none), type and
/// value.
std::string SelectOfFaults(const TableRule& table, const QList<CheckedField>& fields, bool hasKey)
{
    QStringList columns = {hasKey ? "num" : "rowid"};
    QStringList conditions;
    for (const CheckedField& field : fields) {
        QString cases;
        for (qsizetype fault = 0; fault < field.faults.size(); ++fault)
            cases += QString(" when %1 then %2").arg(field.faults[fault].condition, QString::number(fault + 1));
        const QString name = QuotedName(field.field);
        const QString number = "fault" + QString::number(conditions.size());
        columns << "case" + cases + " end as " + number << "typeof(" + name + ")" << name;
        conditions << number + " is not null";
    }
    return QString("select %1 from %2 not indexed where row_read(rowid) and (%3)")
        .arg(columns.join(", "), QuotedName(table.name), conditions.join(" or "))
        .toStdString();
}

class DatabaseCheck {
public:
    DatabaseCheck(store::DatabaseReader& reader, const QString& name, CheckReport& into)
        : select([&reader](std::string_view sql) { return reader.Select(sql); }), file(name), report(into)
    {
        reader.OnRowRead([this] { progress->Advance(); });
    }

    void Run()
    {
        const Structure expected = ExpectedStructure();
        const Structure found = StructureOf(select);
        progress.emplace("Contrôle des pages");
        report.Run(file, [&] { report.failures << DamageOf(select, found).Lines(file); });
        report.Run(file, [&] { CheckPlantedCode(); });
        report.failures << StructureFaults(found, expected);
        report.remarks << ForeignIndexes(found, expected);
        for (const Structure::Table& table : expected.tables) {
            const TableRule* const rule = FindTable(table.name);
            if (rule != nullptr && found.FindTable(table.name) != nullptr)
                report.Run(table.name, [&] { CheckTable(*rule, found); });
        }
    }

private:
    void CheckPlantedCode()
    {
        store::Statement code =
            select("select name, type, tbl_name from sqlite_schema where type in ('trigger', 'view') order by name");
        while (code.Step()) {
            const QString name = QString::fromStdString(code.TextAt(0));
            report.failures << (code.TextAt(1) == "view"
                                    ? QString("La vue %1 n'est pas du programme, qui n'ouvre pas la base.").arg(name)
                                    : QString("Le déclencheur %1 de la table %2 n'est pas du programme, qui n'ouvre "
                                              "pas la base.")
                                          .arg(name, QString::fromStdString(code.TextAt(2))));
        }
    }

    void CheckTable(const TableRule& table, const Structure& found)
    {
        const qint64 rows = CountRows(table.name);
        if (table.hasOneRow)
            CheckSingleRow(table, rows);
        else
            report.facts << QString("%1 : %2").arg(table.name, CountedRows(rows));
        progress.emplace(QString("Contrôle de %1").arg(table.name), rows);
        CheckValues(table, found);
    }

    qint64 CountRows(const QString& table) const
    {
        store::Statement count = select("select count(*) from " + store::Quoted(table.toStdString()) + " not indexed");
        count.Step();
        return count.WholeAt(0);
    }

    void CheckSingleRow(const TableRule& table, qint64 rows)
    {
        if (rows > 1)
            report.failures << QString("%1 : %2 au lieu d'une.").arg(table.name, CountedRows(rows));
        else if (rows == 0 && table.isByPosition)
            report.remarks << QString("%1 : aucune ligne, l'écran des tarifs la fera.").arg(table.name);
        else if (rows == 0)
            report.failures << QString("%1 : aucune ligne au lieu d'une.").arg(table.name);
    }

    void CheckValues(const TableRule& table, const Structure& found)
    {
        const QList<CheckedField> fields = FaultsIn(table, found);
        if (fields.isEmpty())
            return;
        const Structure::Field* const key = found.FindTable(table.name)->Find("num");
        std::map<std::pair<int, int>, Findings> findings; // by field and fault
        store::Statement rows = select(SelectOfFaults(table, fields, key != nullptr));
        while (rows.Step()) {
            for (int field = 0; field < fields.size(); ++field)
                NoteFault(rows, field, key != nullptr, findings);
        }
        for (const auto& [place, faulty] : findings) {
            const CheckedField& field = fields[place.first];
            const ValueFault& fault = field.faults[place.second];
            (fault.isRemark ? report.remarks : report.failures)
                << QString("%1 : %2 %3 %4").arg(table.name, field.field, fault.text, faulty.Text());
        }
    }

    static void NoteFault(const store::Statement& row, int field, bool hasKey,
                          std::map<std::pair<int, int>, Findings>& findings)
    {
        constexpr int columnsOfField = 3;
        const int column = 1 + field * columnsOfField;
        const int fault = static_cast<int>(row.WholeAt(column)) - 1;
        if (fault < 0)
            return;
        Findings& faulty = findings[{field, fault}];
        const std::string type = row.TextAt(column + 1);
        const QString value = ShownValue(row.At(column + 2), type);
        if (hasKey)
            faulty.Note(row.WholeAt(0), type == "null" ? QString() : value);
        else
            faulty.NoteValue(value);
    }

    Select select;
    QString file;
    CheckReport& report;
    std::optional<Progress> progress;
};

} // namespace

void CheckDatabase(store::DatabaseReader& reader, const QString& name, CheckReport& report)
{
    DatabaseCheck(reader, name, report).Run();
}

} // namespace practice
