#include "data/Practice.h"

#include "data/NewFolder.h"
#include "data/ReportTemplates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/dao/Workgroup.h"
#include "platform/host/FileWork.h"
#include "platform/host/Files.h"
#include "platform/store/Creation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QtEndian>

namespace data {
namespace {

using basic::RuntimeError;

constexpr QFile::Permissions OwnerFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions OwnerFolder = OwnerFile | QFile::ExeOwner;

qint16 AccessValue(int accessCode)
{
    constexpr int lowest = -32768;
    constexpr int highest = 32766;
    if (accessCode % 2 != 0 || accessCode < lowest || accessCode > highest)
        throw basic::RuntimeError::Described(
            basic::Error::BadArgument,
            QString("Le code d'accès %1 ne convient pas : il doit être un nombre pair de %2 à %3.")
                .arg(accessCode)
                .arg(lowest)
                .arg(highest));
    return static_cast<qint16>(accessCode / 2);
}

void RefuseExistingPractice(const QString& folder)
{
    for (const QString& name : {DatabaseFile, WorkgroupFile, ConfigurationFile, ArchiveFolder}) {
        constexpr int filesAndFolders = 16;
        const QString path = host::PathIn(folder, name);
        if (host::FileExists(path, filesAndFolders))
            throw basic::RuntimeError::Described(
                basic::Error::FileExists,
                QString("Le dossier « %1 » contient déjà un cabinet (%2) : rien n'a été modifié.")
                    .arg(folder, QFileInfo(path).fileName()));
    }
}

void WriteNewFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::NewOnly, OwnerFile) &&
                         file.write(content) == content.size() && file.flush();
    if (!written)
        throw basic::RuntimeError::Described(
            basic::Error::PathAccess,
            QString("Le fichier « %1 » ne peut pas être écrit : %2").arg(path, file.errorString()));
}

void SetLetterhead(Configuration& configuration, const QStringList& lines)
{
    if (lines.size() > LetterheadFields)
        throw basic::RuntimeError::Described(
            basic::Error::BadArgument, QString("L'en-tête ne peut pas dépasser %1 lignes.").arg(LetterheadFields));
    for (std::size_t field = 0; field < static_cast<std::size_t>(lines.size()); ++field) {
        const QString line = lines[static_cast<qsizetype>(field)].trimmed();
        if (line.size() > LetterheadWidths[field])
            throw basic::RuntimeError::Described(basic::Error::BadArgument,
                                                 QString("La ligne %1 de l'en-tête dépasse %2 caractères : « %3 ».")
                                                     .arg(field + 1)
                                                     .arg(LetterheadWidths[field])
                                                     .arg(line));
        configuration.letterhead[field] = line;
    }
}

qint16 LanguageWord(TooltipLanguage language)
{
    return language == TooltipLanguage::Arabic ? 1 : -1;
}

[[noreturn]] void RaiseUnusable(const QFileDevice& file)
{
    throw basic::RuntimeError::Described(
        basic::Error::PathAccess,
        QString("Le fichier « %1 » ne peut pas être écrit : %2").arg(file.fileName(), file.errorString()));
}

/// Replaces single records of the configuration; the rest of the file is unchanged.
QByteArray Changed(QByteArray file, const PracticeChange& change)
{
    const auto replaceWord = [&file](int word, qint16 value) {
        qToLittleEndian(value, file.data() + (ConfigHeaderRecord - 1) * ConfigRecordBytes + 2 * (word - 1));
    };
    if (change.accessCode)
        replaceWord(ConfigAccessWord, AccessValue(*change.accessCode));
    if (change.language)
        replaceWord(ConfigLanguageWord, LanguageWord(*change.language));
    if (change.letterhead) {
        Configuration configuration;
        SetLetterhead(configuration, *change.letterhead);
        const QByteArray whole = EncodeConfiguration(configuration);
        constexpr int start = (LetterheadRecord(1) - 1) * ConfigRecordBytes;
        constexpr int length = LetterheadFields * ConfigRecordBytes;
        file.replace(start, length, whole.mid(start, length));
    }
    return file;
}

} // namespace

store::OpeningRules& PracticeRules()
{
    static store::OpeningRules rules = {
        .keyedTables = {{"Presta", {{"Actes", "num_presta"}, {"Plani", "Num_Presta"}, {"Actes_suppr", "num_presta"}}},
                        {"Recettes", {}},
                        {"Actes_suppr", {}}},
        .addedTables = FeedTables(),
        .summedIndexes = {{.table = "Actes", .index = "Actes_Date_Montant", .date = "Date", .amount = "montant"},
                          {.table = "Recettes", .index = "Recettes_Date", .date = "Date", .amount = "montant"}}};
    return rules;
}

QString BuildWorkspacePassword()
{
    static const QString digits = QStringLiteral("42269110117371963075814952182103");
    constexpr int characters = 8;
    constexpr int groupLength = 4; // the first digit of each group is skipped
    QString password;
    for (int group = 0; group < characters; ++group) {
        const double number = basic::Val(digits.mid(group * groupLength + 1, groupLength - 1));
        password += QChar(static_cast<char16_t>(basic::RoundToInt(number / 2)));
    }
    return password;
}

void CreatePractice(const QString& folder, const PracticeSetup& setup)
{
    NewFolder made(folder);
    RefuseExistingPractice(folder);
    MakePracticeFiles(made.Path(), setup, folder);
    made.Complete();
}

void MakePracticeFiles(const QString& folder, const PracticeSetup& setup, const QString& kept)
{
    Configuration configuration;
    configuration.language = LanguageWord(setup.language);
    configuration.accessValue = AccessValue(setup.accessCode);
    SetLetterhead(configuration, setup.letterhead);
    MakePracticeFiles(folder, EncodeConfiguration(configuration), kept);
}

void MakePracticeFiles(const QString& folder, const QByteArray& configuration, const QString& kept)
{
    store::CreateDatabase(folder + "/" + DatabaseFile, Schema());
    const QString workgroup = folder + "/" + WorkgroupFile;
    dao::WriteWorkgroup(workgroup, WorkspaceUser, BuildWorkspacePassword());
    QFile::setPermissions(workgroup, OwnerFile);
    WriteNewFile(folder + "/" + ConfigurationFile, configuration);
    for (const ReportTemplate& report : ReportTemplates())
        if (!HasReportTemplate(kept, report.name))
            WriteNewFile(folder + "/" + report.name, report.text);
    const QString archives = folder + "/" + ArchiveFolder;
    if (!QDir().mkdir(archives, OwnerFolder))
        throw basic::RuntimeError::Described(basic::Error::PathNotFound,
                                             QString("Le dossier « %1 » ne peut pas être créé.").arg(archives));
}

void ChangePractice(const QString& folder, const PracticeChange& change)
{
    const QString path = host::PathIn(folder, ConfigurationFile);
    QFile present(path);
    if (!present.open(QIODevice::ReadOnly))
        throw basic::RuntimeError::Described(
            basic::Error::FileNotFound,
            QString("« %1 » n'est pas le dossier d'un cabinet : %2 manque.").arg(folder, ConfigurationFile));
    const QByteArray bytes = present.readAll();
    present.close();
    if (bytes.size() < ConfigRecordCount * ConfigRecordBytes)
        throw basic::RuntimeError::Described(
            basic::Error::PathAccess, QString("%1 est trop court : rien n'a été modifié.").arg(ConfigurationFile));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        RaiseUnusable(file);
    file.write(Changed(bytes, change));
    if (!file.commit())
        RaiseUnusable(file);
    host::Sync(QFileInfo(path).absolutePath());
}

} // namespace data
