#include "practice/check/Check.h"

#include "data/Practice.h"
#include "data/ReportTemplates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/host/Files.h"
#include "practice/check/DatabaseCheck.h"

#include <QFile>
#include <QFileInfo>

namespace practice {
namespace {

class PracticeCheck {
public:
    explicit PracticeCheck(const QString& practice) : path(practice) { report.isFolder = !QFileInfo(path).isFile(); }

    CheckReport Run()
    {
        if (QFileInfo(path).isDir())
            CheckFolder();
        else if (!report.isFolder)
            CheckFile(path);
        else
            report.failures << QString("Le dossier ou le fichier « %1 » n'existe pas.").arg(path);
        return report;
    }

private:
    void CheckFolder()
    {
        CheckConfiguration();
        CheckWorkgroup();
        CheckTemplates();
        if (!QFileInfo(host::PathIn(path, data::ArchiveFolder)).isDir())
            report.remarks
                << QString("Le dossier %1 est absent : la copie de fin de travail échouera.").arg(data::ArchiveFolder);
        if (Exists(data::DatabaseFile))
            CheckFile(host::PathIn(path, data::DatabaseFile));
    }

    bool Exists(const QString& name)
    {
        if (QFileInfo(host::PathIn(path, name)).isFile())
            return true;
        report.failures << QString("Le fichier %1 est absent.").arg(name);
        return false;
    }

    void CheckConfiguration()
    {
        if (!Exists(data::ConfigurationFile))
            return;
        QFile file(host::PathIn(path, data::ConfigurationFile));
        if (!file.open(QIODevice::ReadOnly)) {
            report.failures << QString("%1 ne peut pas être lu : %2").arg(data::ConfigurationFile, file.errorString());
            return;
        }
        const QByteArray bytes = file.readAll();
        if (bytes.size() < data::ConfigRecordCount * data::ConfigRecordBytes) {
            report.failures << QString("%1 est trop court : %2 octets au lieu de %3.")
                                   .arg(data::ConfigurationFile)
                                   .arg(bytes.size())
                                   .arg(data::ConfigRecordCount * data::ConfigRecordBytes);
            return;
        }
        report.Run(data::ConfigurationFile, [&] { CheckRecords(bytes); });
    }

    void CheckRecords(const QByteArray& bytes)
    {
        const auto record = [&bytes](int number) {
            return bytes.mid((number - 1) * data::ConfigRecordBytes, data::ConfigRecordBytes);
        };
        QStringList lines;
        for (int field = 1; field <= data::LetterheadFields; ++field)
            lines << data::DecodeConfigRecord(record(data::LetterheadRecord(field))).trimmed();
        report.facts << QString("En-tête : %1").arg(lines.mid(0, 3).join(" / "));
        const int access = data::ConfigWord(record(data::ConfigHeaderRecord), data::ConfigAccessWord);
        if (access < -16384 || access > 16383)
            report.failures << QString("%1 : la valeur d'accès %2 ne donne aucun code d'accès.")
                                   .arg(data::ConfigurationFile)
                                   .arg(access);
    }

    void CheckWorkgroup()
    {
        if (!Exists(data::WorkgroupFile))
            return;
        report.Run(data::WorkgroupFile, [this] {
            dao::DBEngine.SystemDB = host::PathIn(path, data::WorkgroupFile);
            dao::DBEngine.CreateWorkspace("Special", data::WorkspaceUser, data::BuildWorkspacePassword());
        });
    }

    void CheckTemplates()
    {
        for (const data::ReportTemplate& expected : data::ReportTemplates()) {
            if (!data::HasReportTemplate(path, expected.name))
                report.failures << QString("Le modèle d'état %1 est absent.").arg(expected.name);
        }
    }

    void CheckFile(const QString& file)
    {
        const QString name = QFileInfo(file).fileName();
        report.Run(name, [&] {
            store::DatabaseReader reader(file);
            CheckDatabase(reader, name, report);
        });
    }

    QString path;
    CheckReport report;
};

} // namespace

void CheckReport::Run(const QString& subject, const std::function<void()>& step)
{
    try {
        step();
    } catch (const basic::RuntimeError& error) {
        failures << QString("%1 : lecture impossible (erreur %2, %3)")
                        .arg(subject, QString::number(error.Number()), error.Description());
    }
}

QString CheckReport::Text() const
{
    QString text;
    for (const QString& fact : facts)
        text += "  " + fact + "\n";
    for (const QString& remark : remarks)
        text += "  Remarque : " + remark + "\n";
    for (const QString& failure : failures)
        text += "  ERREUR : " + failure + "\n";
    return text + (isFolder ? "Le cabinet " : "La base de données ") +
           (failures.isEmpty() ? "est en ordre.\n" : "n'est pas en ordre.\n");
}

CheckReport CheckPractice(const QString& path)
{
    return PracticeCheck(path).Run();
}

} // namespace practice
