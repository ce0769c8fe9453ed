#include "data/Practice.h"

#include "data/ReportTemplates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/host/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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

Configuration ConfigurationOf(const PracticeSetup& setup)
{
    if (setup.letterhead.size() > letterheadFields)
        throw basic::RuntimeError::Described(
            basic::Error::BadArgument, QString("L'en-tête ne peut pas dépasser %1 lignes.").arg(letterheadFields));
    Configuration configuration;
    configuration.language = setup.language == TooltipLanguage::Arabic ? 1 : -1;
    configuration.accessValue = AccessValue(setup.accessCode);
    for (std::size_t field = 0; field < static_cast<std::size_t>(setup.letterhead.size()); ++field) {
        const QString line = setup.letterhead[static_cast<qsizetype>(field)].trimmed();
        if (line.size() > letterheadWidths[field])
            throw basic::RuntimeError::Described(basic::Error::BadArgument,
                                                 QString("La ligne %1 de l'en-tête dépasse %2 caractères : « %3 ».")
                                                     .arg(field + 1)
                                                     .arg(letterheadWidths[field])
                                                     .arg(line));
        configuration.letterhead[field] = line;
    }
    return configuration;
}

void RefuseExistingPractice(const QString& folder)
{
    for (const QString& name : {databaseFile, workgroupFile, configurationFile, archiveFolder}) {
        constexpr int filesAndFolders = 16;
        const QString path = host::PathIn(folder, name);
        if (host::FileExists(path, filesAndFolders))
            throw basic::RuntimeError::Described(
                basic::Error::FileExists,
                QString("Le dossier « %1 » contient déjà un cabinet (%2) : rien n'a été modifié.")
                    .arg(folder, QFileInfo(path).fileName()));
    }
}

/// What has been made so far; taken away again unless everything succeeds.
class NewFolder {
public:
    explicit NewFolder(const QString& path) : folder(path) {}
    NewFolder(const NewFolder&) = delete;
    NewFolder& operator=(const NewFolder&) = delete;
    ~NewFolder()
    {
        if (complete)
            return;
        for (const QString& path : files)
            QFile::remove(path);
        for (const QString& path : folders)
            QDir().rmdir(path);
    }

    void MakeSelf()
    {
        const QFileInfo self(folder);
        if (!self.exists()) {
            QDir().mkpath(self.absolutePath());
            MakeFolder(folder);
        } else if (!self.isDir()) {
            throw basic::RuntimeError::Described(basic::Error::PathAccess,
                                                 QString("« %1 » n'est pas un dossier.").arg(folder));
        } else if (QDir(folder).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System)) {
            QFile::setPermissions(folder, OwnerFolder);
        }
    }

    void MakeFolder(const QString& path)
    {
        if (!QDir().mkdir(path, OwnerFolder))
            throw basic::RuntimeError::Described(basic::Error::PathNotFound,
                                                 QString("Le dossier « %1 » ne peut pas être créé.").arg(path));
        folders.prepend(path);
    }

    /// The path of a file about to be made.
    QString Expect(const QString& name)
    {
        files << folder + "/" + name;
        return files.last();
    }

    void Write(const QString& name, const QByteArray& content)
    {
        QFile file(Expect(name));
        const bool written = file.open(QIODevice::WriteOnly | QIODevice::NewOnly, OwnerFile) &&
                             file.write(content) == content.size() && file.flush();
        if (!written)
            throw basic::RuntimeError::Described(
                basic::Error::PathAccess,
                QString("Le fichier « %1 » ne peut pas être écrit : %2").arg(file.fileName(), file.errorString()));
    }

    void Keep() { complete = true; }

private:
    QString folder;
    QStringList files;
    QStringList folders;
    bool complete = false;
};

} // namespace

QList<dao::KeyedTable> KeyedTables()
{
    return {{"Presta", {{"Actes", "num_presta"}, {"Plani", "Num_Presta"}, {"Actes_suppr", "num_presta"}}},
            {"Recettes", {}}};
}

QString BuildWorkspacePassword()
{
    static const QString digits = QStringLiteral("42269110117371963075814952182103");
    constexpr int characters = 8;
    constexpr int groupLength = 4; // the first digit of each group is there to be skipped
    QString password;
    for (int group = 0; group < characters; ++group) {
        const double number = basic::Val(digits.mid(group * groupLength + 1, groupLength - 1));
        password += QChar(static_cast<char16_t>(basic::RoundToInt(number / 2)));
    }
    return password;
}

void CreatePractice(const QString& folder, const PracticeSetup& setup)
{
    const QByteArray configuration = EncodeConfiguration(ConfigurationOf(setup));
    RefuseExistingPractice(folder);

    NewFolder made(QDir::cleanPath(QDir(folder).absolutePath()));
    made.MakeSelf();
    dao::CreateDatabase(made.Expect(databaseFile), Schema());
    const QString workgroup = made.Expect(workgroupFile);
    dao::WriteWorkgroup(workgroup, workspaceUser, BuildWorkspacePassword());
    QFile::setPermissions(workgroup, OwnerFile);
    made.Write(configurationFile, configuration);
    for (const ReportTemplate& report : ReportTemplates())
        if (!HasReportTemplate(folder, report.name))
            made.Write(report.name, report.text);
    made.MakeFolder(QDir(folder).absolutePath() + "/" + archiveFolder);
    made.Keep();
}

} // namespace data
