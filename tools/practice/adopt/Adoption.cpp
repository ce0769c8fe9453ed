#include "practice/adopt/Adoption.h"

#include "data/NewFolder.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "practice/import/ImportTarget.h"
#include "practice/import/TableReader.h"
#include "practice/jet/JetFile.h"
#include "practice/opening/PracticeData.h"
#include "practice/output/Progress.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <memory>

namespace practice {
namespace {

using basic::Error;
using basic::RuntimeError;

/// The path of a file of the old practice.
QString OldFile(const QString& folder, const QString& name)
{
    const QString path = host::PathIn(folder, name);
    if (!QFileInfo(path).isFile())
        throw RuntimeError::Described(
            Error::FileNotFound,
            QString("« %1 » n'est pas le dossier d'un ancien cabinet : %2 manque.").arg(folder, name));
    return path;
}

QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw RuntimeError::Described(Error::PathAccess,
                                      QString("« %1 » ne peut pas être lu : %2").arg(path, file.errorString()));
    return file.readAll();
}

/// The canonical path of a folder that may not exist yet.
QString CanonicalPath(const QString& folder)
{
    const QString path = QDir::cleanPath(QDir(folder).absolutePath());
    const QFileInfo file(path);
    if (file.exists() || file.isRoot())
        return file.canonicalFilePath();
    return QDir(CanonicalPath(file.absolutePath())).filePath(file.fileName());
}

void RequireApart(const QString& oldFolder, const QString& newFolder)
{
    const QString within = QDir(CanonicalPath(oldFolder)).filePath("");
    if ((CanonicalPath(newFolder) + "/").startsWith(within))
        throw RuntimeError::Described(
            Error::PathAccess, QString("« %1 » est dans l'ancien dossier, où rien ne doit changer.").arg(newFolder));
}

/// Takes a table of the old database into the new practice.
class TableAdoption {
public:
    TableAdoption(const dao::Database& database, const TableRule& tableRule)
        : rule(tableRule), target(MakeImportTarget(database, tableRule, true)),
          reader(tableRule, *target, problems, BadRows::Mend)
    {
    }

    void Read(const JetFile& old)
    {
        old.Read(rule.name, [this](CsvRow& row) { Take(row); });
        if (!reader.HasFields())
            throw RuntimeError::Described(Error::UnknownField, problems.Texts(rule.name).join('\n'));
        const Progress progress(QString("Comparaison de %1").arg(rule.name));
        target->Compare(problems);
    }

    void Write() { target->Write(problems); }

    AdoptedTable Result() const
    {
        const ImportCounts& counts = target->Counts();
        AdoptedTable result{.name = rule.name, .losses = losses};
        result.taken = counts.added + counts.changed + counts.same;
        result.leftOut = rows - result.taken;
        const QStringList texts = problems.Texts(rule.name);
        result.losses << texts;
        result.unlisted = problems.Count() - texts.size();
        return result;
    }

private:
    void Take(CsvRow& row)
    {
        if (row.line == 0)
            LeaveUnknownFields(row);
        for (const qsizetype column : unknownColumns)
            row.cells.removeAt(column);
        rows = row.line;
        reader.Take(row);
    }

    void LeaveUnknownFields(const CsvRow& header)
    {
        for (qsizetype column = header.cells.size() - 1; column >= 0; --column) {
            if (rule.Find(header.cells[column]) >= 0)
                continue;
            unknownColumns << column; // the last first, as they are removed
            losses << QString("%1 : le champ %2 n'est pas repris.").arg(rule.name, header.cells[column]);
        }
    }

    const TableRule& rule;
    Problems problems;
    std::unique_ptr<ImportTarget> target;
    TableReader reader;
    QList<qsizetype> unknownColumns;
    QStringList losses;
    qint64 rows = 0;
};

void TakeTables(const JetFile& old, const QString& folder, AdoptionReport& report)
{
    const PracticeData practice(folder);
    std::vector<std::unique_ptr<TableAdoption>> tables;
    for (const TableRule& rule : ImportTables()) {
        tables.push_back(std::make_unique<TableAdoption>(practice.Database(), rule));
        tables.back()->Read(old);
    }
    const Progress progress("Écriture");
    dao::Transaction transaction(practice.Database());
    for (const auto& table : tables)
        table->Write();
    practice.Database().KeepKeysAboveReferences();
    transaction.Commit();
    for (const auto& table : tables)
        report.tables.push_back(table->Result());
}

QStringList TablesNotTaken(const JetFile& old)
{
    QStringList others = old.Tables();
    others.removeIf([](const QString& name) {
        return FindImportTable(name) != nullptr || ScratchTables().contains(name, Qt::CaseInsensitive);
    });
    return others;
}

} // namespace

bool AdoptionReport::IsWhole() const
{
    return check.failures.isEmpty() &&
           std::ranges::all_of(tables, [](const AdoptedTable& table) { return table.losses.isEmpty(); });
}

AdoptionReport Adopt(const QString& oldFolder, const QString& newFolder)
{
    if (!QFileInfo(oldFolder).isDir())
        throw RuntimeError::Described(Error::PathNotFound, QString("Le dossier « %1 » n'existe pas.").arg(oldFolder));
    data::RequireUnused(newFolder);
    RequireApart(oldFolder, newFolder);
    const QByteArray configuration = BytesOf(OldFile(oldFolder, data::ConfigurationFile));
    const JetFile old(OldFile(oldFolder, data::DatabaseFile));

    data::NewFolder making(newFolder);
    data::MakePracticeFiles(making.Path(), configuration);
    AdoptionReport report;
    report.otherTables = TablesNotTaken(old);
    report.hasOldTemplates = host::FileExists(oldFolder + "/*.RPT", 0);
    TakeTables(old, making.Path(), report);
    report.check = CheckPractice(making.Path());
    making.Complete();
    return report;
}

} // namespace practice
