#include "practice/feed/FeedSource.h"

#include "platform/basic/RuntimeError.h"
#include "practice/jet/JetFile.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <numeric>

namespace practice {
namespace {

using basic::RuntimeError;

constexpr const char* FedNames[] = {"Patients", "Actes", "Plani", "Actes_suppr"};

[[noreturn]] void Refuse(const QString& reason)
{
    throw RuntimeError::Described(basic::Error::BadArgument, reason);
}

QString FedFiles()
{
    return "Patients.csv, Actes.csv, Plani.csv, Actes_suppr.csv";
}

bool IsFed(const TableRule& table)
{
    return std::ranges::any_of(FedNames, [&](const char* name) { return qstrcmp(name, table.name) == 0; });
}

/// The table that a CSV file is named after, as it is written; empty for another name.
QString TableOf(const QString& fileName)
{
    if (!fileName.endsWith(".csv", Qt::CaseInsensitive))
        return {};
    const QString name = fileName.chopped(4);
    if (const TableRule* const rule = FindImportTable(name))
        return rule->name;
    return ScratchTables().contains(name, Qt::CaseInsensitive) ? name : QString();
}

/// The letters of a name without accents, in lower case.
QString LettersOf(const QString& name)
{
    QString letters;
    for (const QChar each : name.normalized(QString::NormalizationForm_D).toLower()) {
        if (each.isLetter())
            letters += each;
    }
    return letters;
}

/// The number of letters to be added, removed or replaced to make one word of the other.
int Distance(const QString& left, const QString& right)
{
    std::vector<int> row(static_cast<std::size_t>(right.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const QChar letter : left) {
        int diagonal = row[0]++;
        for (std::size_t column = 1; column < row.size(); ++column) {
            const int replaced = diagonal + (letter != right[static_cast<qsizetype>(column) - 1] ? 1 : 0);
            diagonal = row[column];
            row[column] = std::min({replaced, row[column] + 1, row[column - 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::vector<const TableRule*> FedTables()
{
    std::vector<const TableRule*> tables;
    for (const TableRule& table : ImportTables()) {
        if (IsFed(table))
            tables.push_back(&table);
    }
    return tables;
}

bool IsNearlyFed(const QString& fileName)
{
    constexpr int fewLetters = 3;
    constexpr int slips = 2;
    const QString name = LettersOf(fileName.left(fileName.indexOf('.')));
    return std::ranges::any_of(FedNames, [&](const char* each) {
        const QString fed = LettersOf(each);
        return name.contains(fed) || (name.size() >= fewLetters && fed.startsWith(name)) ||
               Distance(name, fed) <= slips;
    });
}

FeedSource::FeedSource(const QString& path)
{
    const QFileInfo source(path);
    if (source.isDir())
        AddFolder(path);
    else if (path.endsWith(".csv", Qt::CaseInsensitive))
        AddFile(path);
    else
        AddOldDatabase(path);
    std::ranges::sort(tables, {}, &Table::rule); // the rules are in one array, patients first
    if (tables.empty())
        Refuse(QString("« %1 » ne contient aucune des tables à reprendre : %2.").arg(path, FedFiles()));
}

FeedSource::~FeedSource() = default;

void FeedSource::AddOldDatabase(const QString& path)
{
    oldDatabase = std::make_unique<JetFile>(path);
    for (const QString& name : oldDatabase->Tables()) {
        const TableRule* const rule = FindImportTable(name);
        if (rule != nullptr && IsFed(*rule))
            tables.push_back({rule, {}});
        else
            passedOver << name;
    }
}

void FeedSource::AddFile(const QString& path)
{
    const QString name = QFileInfo(path).fileName();
    const TableRule* const rule = FindImportTable(TableOf(name));
    if (rule != nullptr && IsFed(*rule))
        tables.push_back({rule, path});
    else
        Refuse(QString("« %1 » n'est pas le fichier d'une table à reprendre : %2.").arg(name, FedFiles()));
}

void FeedSource::AddFolder(const QString& path)
{
    const QDir folder(path);
    // What isn't a file is listed as well: a table must not be left out because of a dead link or a folder.
    for (const QString& name : folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name)) {
        const QString table = TableOf(name);
        const TableRule* const rule = FindImportTable(table);
        if (rule != nullptr && IsFed(*rule)) {
            if (std::ranges::find(tables, rule, &Table::rule) != tables.end())
                Refuse(QString("Plusieurs fichiers pour %1.").arg(table));
            tables.push_back({rule, folder.filePath(name)});
        } else if (!table.isEmpty()) {
            passedOver << table;
        } else if (IsNearlyFed(name) && !QFileInfo(folder, name).isDir()) {
            Refuse(QString("« %1 » ressemble à une table à reprendre, dont le fichier s'appelle autrement (%2) : "
                           "renommez-le ou enlevez-le.")
                       .arg(name, FedFiles()));
        }
    }
}

std::vector<const TableRule*> FeedSource::Tables() const
{
    std::vector<const TableRule*> rules;
    for (const Table& table : tables)
        rules.push_back(table.rule);
    return rules;
}

CsvEncoding FeedSource::Read(const TableRule& table, const CsvReceiver& take) const
{
    const auto found = std::ranges::find(tables, &table, &Table::rule);
    if (oldDatabase != nullptr) {
        oldDatabase->Read(table.name, take);
        return CsvEncoding::Utf8;
    }
    return ReadCsv(found->file, take);
}

} // namespace practice
