#include "practice/copies/ChangesFile.h"

#include "practice/copies/RowTexts.h"
#include "practice/output/CsvCell.h"

#include <QTextStream>

namespace practice {
namespace {

/// A text as a cell that no spreadsheet takes for a formula.
QString CsvText(const QString& text)
{
    const QString shown = text.trimmed(); // blanks don't protect it
    const bool isFormula = !shown.isEmpty() && QStringView(u"=+-@").contains(shown.front());
    return CsvCell(isFormula ? "'" + text : text);
}

QString CsvValue(const FieldChange& change, const store::Value& value)
{
    if (value.IsNull())
        return CsvCell({});
    const QString text = FieldText(change.field, value);
    return std::holds_alternative<QString>(value.Raw()) ? CsvText(text) : CsvCell(text);
}

void WriteLines(const TableChanges& table, QTextStream& out)
{
    for (const RowChange& row : table.rows)
        for (const FieldChange& change : row.fields)
            out << table.table << ';' << row.key << ';' << KindText(row.kind) << ';' << CsvText(change.field) << ';'
                << CsvValue(change, change.before) << ';' << CsvValue(change, change.after) << "\r\n";
}

} // namespace

void WriteChanges(const QList<TableChanges>& changes, QIODevice& file)
{
    QTextStream out(&file);
    out << QString(QChar(QChar::ByteOrderMark)) << "table;num;changement;champ;avant;maintenant\r\n";
    for (const TableChanges& table : changes)
        WriteLines(table, out);
}

} // namespace practice
