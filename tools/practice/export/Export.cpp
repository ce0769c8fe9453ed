#include "practice/export/Export.h"

#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "platform/host/OwnerOnly.h"
#include "practice/fields/QuotedName.h"
#include "practice/output/CsvCell.h"
#include "practice/output/Progress.h"

#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <memory>

namespace practice {
namespace {

using basic::Error;
using basic::RuntimeError;

constexpr auto LineEnd = "\r\n";

/// Makes the folder if it is missing, and removes it again unless it is kept.
class CsvFolder {
public:
    explicit CsvFolder(const QString& folder) : path(folder)
    {
        if (QFileInfo(path).isDir())
            return;
        const auto ownerOnly = host::ForOwnerOnly();
        isNew = !QFileInfo::exists(path) && QDir().mkpath(path);
        if (!isNew)
            throw RuntimeError::Described(Error::PathAccess,
                                          QString("Le dossier « %1 » ne peut pas être créé.").arg(path));
    }
    ~CsvFolder()
    {
        if (isNew)
            QDir().rmdir(path);
    }
    Q_DISABLE_COPY_MOVE(CsvFolder)

    /// With the spelling on the disk: `import` takes only one file for a table.
    QString PathOf(const TableRule& table) const { return host::PathIn(path, QString(table.name) + ".csv"); }
    void Keep() { isNew = false; }

private:
    QString path;
    bool isNew = false;
};

QString CellOf(const FieldRule& field, const store::StoredValue& value)
{
    using enum store::StoredValue::Kind;
    switch (value.kind) {
    case Null:
        return {};
    case Whole:
        return QString::number(value.whole);
    case Real:
        return QString::number(value.real, 'f', QLocale::FloatingPointShortest);
    case Text:
        break;
    }
    const QString text = QString::fromUtf8(value.text, value.length);
    const QDate day = field.kind == FieldKind::Date ? QDate::fromString(text, Qt::ISODate) : QDate();
    return day.isValid() ? day.toString("dd/MM/yyyy") : CsvCell(text);
}

/// The fields in the order of the rule.
store::Statement RowsOf(const store::DatabaseReader& practice, const TableRule& table)
{
    QStringList names;
    for (const FieldRule& field : table.fields)
        names << QuotedName(field.name);
    const QString fields = table.isByPosition ? "*" : names.join(", ");
    return practice.Select(
        QString("select %1 from %2 order by rowid").arg(fields, QuotedName(table.name)).toStdString());
}

qint64 CountRows(const store::DatabaseReader& practice, const TableRule& table)
{
    store::Statement count = practice.Select("select count(*) from " + QuotedName(table.name).toStdString());
    count.Step();
    return count.WholeAt(0);
}

qint64 WriteTable(const store::DatabaseReader& practice, const TableRule& table, QIODevice& file)
{
    QTextStream out(&file);
    QStringList cells;
    for (const FieldRule& field : table.fields)
        cells << field.name;
    out << QChar(QChar::ByteOrderMark) << cells.join(';') << LineEnd;
    qint64 count = 0;
    Progress progress(QString("Écriture de %1").arg(table.name), CountRows(practice, table));
    for (store::Statement rows = RowsOf(practice, table); rows.Step(); ++count) {
        progress.Advance();
        cells.clear();
        for (const FieldRule& field : table.fields)
            cells << CellOf(field, rows.At(static_cast<int>(cells.size())));
        out << cells.join(';') << LineEnd;
    }
    return count;
}

} // namespace

std::vector<ExportedTable> ExportTables(const store::DatabaseReader& practice,
                                        const std::vector<const TableRule*>& tables, const QString& folder,
                                        OutputFile::Existing existing)
{
    CsvFolder place(folder);
    std::vector<std::unique_ptr<OutputFile>> files; // all names are free before the first row is written
    files.reserve(tables.size());
    for (const TableRule* table : tables)
        files.push_back(std::make_unique<OutputFile>(place.PathOf(*table), OutputKind::Csv, existing));
    std::vector<ExportedTable> exported;
    for (std::size_t table = 0; table < tables.size(); ++table) {
        exported.push_back({tables[table], WriteTable(practice, *tables[table], files[table]->Device())});
        files[table]->Flush();
    }
    for (const auto& file : files)
        file->Complete();
    place.Keep();
    return exported;
}

} // namespace practice
