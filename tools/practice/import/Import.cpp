#include "practice/import/Import.h"

#include "platform/basic/RuntimeError.h"
#include "practice/import/TableReader.h"
#include "practice/output/Progress.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

namespace practice {
namespace {

using basic::RuntimeError;

/// The CSV files of a folder, by table.
class CsvFolder {
public:
    explicit CsvFolder(const QString& path) : folder(path)
    {
        if (!folder.exists())
            throw RuntimeError::Described(basic::Error::PathNotFound,
                                          QString("Le dossier « %1 » n'existe pas.").arg(path));
        // What isn't a file is listed as well: a table must not be left out because of a dead link or a folder.
        for (const QString& file :
             folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
            if (file.endsWith(".csv", Qt::CaseInsensitive))
                names << file;
        }
        if (names.isEmpty())
            throw RuntimeError::Described(basic::Error::FileNotFound,
                                          QString("Le dossier « %1 » ne contient aucun fichier CSV.").arg(path));
    }

    /// Removes the files of a table from the list and returns them.
    QStringList Take(const QString& table)
    {
        QStringList taken;
        for (const QString& name : names) {
            if (name.chopped(4).compare(table, Qt::CaseInsensitive) == 0)
                taken << name;
        }
        names.removeIf([&taken](const QString& name) { return taken.contains(name); });
        return taken;
    }

    QString PathOf(const QString& file) const { return folder.filePath(file); }
    const QStringList& Left() const { return names; }

private:
    QDir folder;
    QStringList names;
};

} // namespace

Import::Import(const QString& folder, bool updatesRows) : practice(folder), updates(updatesRows) {}

void Import::Read(const QString& table, const QString& file)
{
    const TableRule* const rule = FindImportTable(table);
    if (rule == nullptr)
        throw RuntimeError::Described(
            basic::Error::BadArgument,
            QString("« %1 » n'est pas une table à importer. Tables : %2.").arg(table, ImportTableNames()));
    ReadFile(*rule, file);
}

void Import::ReadFolder(const QString& path)
{
    readsFolder = true;
    CsvFolder folder(path);
    for (const TableRule& rule : ImportTables()) {
        const QStringList names = folder.Take(rule.name);
        if (names.size() > 1)
            folderProblems.Add(0, QString("Plusieurs fichiers pour %1 : %2.").arg(rule.name, names.join(", ")));
        else if (names.size() == 1)
            ReadFile(rule, folder.PathOf(names.first()));
    }
    for (const QString& table : ScratchTables()) {
        if (!folder.Take(table).isEmpty())
            passedOver << table;
    }
    for (const QString& name : folder.Left())
        folderProblems.Add(
            0, QString("%1 : ce n'est pas une table à importer. Tables : %2.").arg(name, ImportTableNames()));
}

void Import::ReadFile(const TableRule& rule, const QString& path)
{
    ImportedFile file{.table = rule.name,
                      .name = QFileInfo(path).fileName(),
                      .problems = {},
                      .target = MakeImportTarget(practice.Database(), rule, updates)};
    TableReader reader(rule, *file.target, file.problems);
    try {
        file.encoding = ReadCsv(path, [&reader](const CsvRow& row) { reader.Take(row); });
        reader.End();
    } catch (const RuntimeError& error) {
        if (error.Code() != basic::Error::BadArgument)
            throw;
        file.problems.Add(0, error.Description());
    }
    const Progress progress(QString("Comparaison de %1").arg(rule.name));
    if (reader.HasFields())
        file.target->Compare(file.problems);
    files.push_back(std::move(file));
}

void Import::Write()
{
    const ImportCounts sum = Sum();
    if (ProblemCount() > 0 || sum.added + sum.changed + sum.noted == 0)
        return;
    Progress progress("Écriture", sum.added + sum.changed);
    dao::Transaction transaction(practice.Database());
    for (ImportedFile& file : files) {
        file.target->Write(file.problems);
        if (!file.problems.IsEmpty())
            return;
        progress.Advance(file.target->Counts().added + file.target->Counts().changed);
    }
    practice.Database().KeepKeysAboveReferences();
    transaction.Commit();
}

ImportCounts Import::Sum() const
{
    ImportCounts sum;
    for (const ImportedFile& file : files) {
        const ImportCounts& counts = file.target->Counts();
        sum.added += counts.added;
        sum.changed += counts.changed;
        sum.same += counts.same;
        sum.left += counts.left;
        sum.noted += counts.noted;
    }
    return sum;
}

int Import::ProblemCount() const
{
    int count = folderProblems.Count();
    for (const ImportedFile& file : files)
        count += file.problems.Count();
    return count;
}

QStringList Import::ProblemTexts() const
{
    QStringList texts = folderProblems.Texts();
    for (const ImportedFile& file : files)
        texts << file.problems.Texts(readsFolder ? file.name : QString());
    return texts;
}

} // namespace practice
