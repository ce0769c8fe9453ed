#include "practice/Import.h"

#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"
#include "practice/CsvFile.h"
#include "practice/FieldRules.h"
#include "practice/PracticeData.h"

#include <QHash>
#include <vector>

namespace practice {
namespace {

/// The rows of one file on their way into one table.
class TableImport {
public:
    TableImport(const dao::Database& database, const TableRule& rule)
        : table(rule), rows(database.OpenRecordset(QLatin1String(rule.name))), values(rule.fields.size())
    {
        tableHasRows = !rows.IsEOF();
    }

    void Take(const CsvRow& row)
    {
        if (headerLine == 0)
            TakeHeader(row);
        else if (headerIsGood)
            TakeRow(row);
    }

    ImportResult Result() const
    {
        if (headerLine == 0)
            return {0, {"Le fichier est vide : la première ligne doit nommer les champs."}};
        return {problems.isEmpty() ? added : 0, problems};
    }

private:
    void Refuse(qint64 line, const QString& reason) { problems << QString("Ligne %1 : %2.").arg(line).arg(reason); }

    void TakeHeader(const CsvRow& row)
    {
        headerLine = row.line;
        for (const QString& cell : row.cells) {
            const int position = table.Find(cell.trimmed());
            if (position < 0)
                Refuse(row.line,
                       QString("le champ « %1 » n'existe pas dans %2").arg(cell.trimmed(), QString(table.name)));
            else if (columns.contains(position))
                Refuse(row.line, QString("le champ %1 est nommé deux fois").arg(table.fields[Index(position)].name));
            columns << position;
        }
        for (std::size_t position = 0; position < table.fields.size(); ++position) {
            if (table.fields[position].required && !columns.contains(static_cast<int>(position)))
                Refuse(row.line, QString("le champ %1 manque").arg(table.fields[position].name));
        }
        headerIsGood = problems.isEmpty();
    }

    void TakeRow(const CsvRow& row)
    {
        if (row.cells.size() != columns.size()) {
            Refuse(row.line, QString("%1 valeurs au lieu de %2").arg(row.cells.size()).arg(columns.size()));
            return;
        }
        QStringList reasons;
        for (qsizetype column = 0; column < columns.size(); ++column) {
            const std::size_t position = Index(columns[column]);
            const ReadValue read = ReadField(table.fields[position], row.cells[column].trimmed());
            values[position] = read.value;
            if (!read.problem.isEmpty())
                reasons << QString("%1 : %2").arg(table.fields[position].name, read.problem);
        }
        if (reasons.isEmpty())
            reasons << CompleteRow() << CheckKey(row.line);
        if (!reasons.isEmpty())
            Refuse(row.line, reasons.join(" ; "));
        else if (problems.isEmpty())
            AddRow();
    }

    /// Fills what follows from other fields; returns what contradicts them.
    QStringList CompleteRow()
    {
        QStringList reasons;
        const int day = table.Find("Date");
        if (table.Find("AA") >= 0) {
            const QDate date = basic::DateValue(values[Index(day)].Text());
            for (const auto& [field, number] : {std::pair("MM", date.month()), std::pair("AA", date.year())}) {
                dao::Value& value = values[Index(table.Find(field))];
                if (!value.IsNull() && value.Long() != number)
                    reasons << QString("%1 : %2 ne correspond pas à la date").arg(field).arg(value.Long());
                value = number;
            }
        }
        if (const int archived = table.Find("Flag_H"); archived >= 0 && values[Index(archived)].IsNull())
            values[Index(archived)] = 0;
        return reasons;
    }

    QStringList CheckKey(qint64 line)
    {
        const dao::Key key = values[Index(table.Find("num"))].Long();
        if (const auto earlier = lineOfKey.constFind(key); earlier != lineOfKey.constEnd())
            return {QString("num : la clé %1 est déjà celle de la ligne %2").arg(key).arg(*earlier)};
        lineOfKey.insert(key, line);
        if (!tableHasRows)
            return {};
        rows.FindFirst(QString("num = %1").arg(key));
        return rows.NoMatch()
                   ? QStringList()
                   : QStringList(
                         QString("num : la clé %1 existe déjà dans %2").arg(key).arg(QLatin1String(table.name)));
    }

    void AddRow()
    {
        rows.AddNew();
        for (std::size_t position = 0; position < values.size(); ++position)
            rows[table.fields[position].name] = values[position];
        rows.Update();
        ++added;
    }

    static std::size_t Index(int position) { return static_cast<std::size_t>(position); }

    const TableRule& table;
    dao::Recordset rows;
    std::vector<dao::Value> values; ///< of the row in hand, by the table's fields
    bool tableHasRows = false;
    bool headerIsGood = false;
    qint64 headerLine = 0;
    QList<int> columns; ///< the field of each column
    QHash<dao::Key, qint64> lineOfKey;
    QStringList problems;
    int added = 0;
};

} // namespace

ImportResult ImportCsv(const QString& folder, const QString& table, const QString& file)
{
    const TableRule* const rule = FindTable(table);
    if (rule == nullptr)
        throw basic::RuntimeError::Described(
            basic::Error::BadArgument,
            QString("« %1 » n'est pas une table à importer. Tables : Patients, Actes, Plani, "
                    "Actes_suppr.")
                .arg(table));
    const PracticeData practice(folder);
    dao::Transaction transaction(practice.Database());
    TableImport import(practice.Database(), *rule);
    ReadCsv(file, [&import](const CsvRow& row) { import.Take(row); });
    const ImportResult result = import.Result();
    if (result.problems.isEmpty())
        transaction.Commit();
    return result;
}

} // namespace practice
