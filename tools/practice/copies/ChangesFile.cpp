#include "practice/copies/ChangesFile.h"

#include "platform/basic/RuntimeError.h"
#include "practice/copies/RowTexts.h"

#include <QSaveFile>
#include <QTextStream>

namespace practice {
namespace {

QString CsvField(QString text)
{
    return '"' + text.replace('"', "\"\"") + '"';
}

QString CsvValue(const FieldChange& change, const store::Value& value)
{
    return CsvField(value.IsNull() ? QString() : FieldText(change.field, value));
}

void WriteLines(const TableChanges& table, QTextStream& out)
{
    for (const RowChange& row : table.rows)
        for (const FieldChange& change : row.fields)
            out << table.table << ';' << row.key << ';' << KindText(row.kind) << ';' << CsvField(change.field) << ';'
                << CsvValue(change, change.before) << ';' << CsvValue(change, change.after) << "\r\n";
}

} // namespace

void WriteChanges(const QList<TableChanges>& changes, const QString& path)
{
    QSaveFile file(path);
    bool isWritten = file.open(QIODevice::WriteOnly);
    if (isWritten) {
        QTextStream out(&file);
        out << QString(QChar(QChar::ByteOrderMark)) << "table;num;changement;champ;avant;maintenant\r\n";
        for (const TableChanges& table : changes)
            WriteLines(table, out);
        out.flush();
        isWritten = out.status() == QTextStream::Ok && file.commit();
    }
    if (!isWritten)
        throw basic::RuntimeError::Described(
            basic::Error::PathAccess, QString("« %1 » n'a pas pu être écrit : %2").arg(path, file.errorString()));
}

} // namespace practice
