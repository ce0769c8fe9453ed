#include "practice/Check.h"

#include "data/Practice.h"
#include "data/ReportTemplates.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "practice/DatabaseCheck.h"

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
    /// Runs a step; a run-time error of it becomes a failure of the report.
    template <typename Step>
    void Guarded(const QString& subject, Step step)
    {
        try {
            step();
        } catch (const basic::RuntimeError& error) {
            report.failures
                << QString("%1 : erreur %2, %3").arg(subject, QString::number(error.Number()), error.Description());
        }
    }

    void CheckFolder()
    {
        CheckConfiguration();
        CheckWorkgroup();
        CheckTemplates();
        if (!QFileInfo(host::PathIn(path, data::archiveFolder)).isDir())
            report.remarks
                << QString("Le dossier %1 est absent : la copie de fin de travail échouera.").arg(data::archiveFolder);
        if (Exists(data::databaseFile))
            CheckFile(host::PathIn(path, data::databaseFile));
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
        if (!Exists(data::configurationFile))
            return;
        QFile file(host::PathIn(path, data::configurationFile));
        if (!file.open(QIODevice::ReadOnly)) {
            report.failures << QString("%1 ne peut pas être lu : %2").arg(data::configurationFile, file.errorString());
            return;
        }
        const QByteArray bytes = file.readAll();
        if (bytes.size() < data::configRecordCount * data::configRecordBytes) {
            report.failures << QString("%1 est trop court : %2 octets au lieu de %3.")
                                   .arg(data::configurationFile)
                                   .arg(bytes.size())
                                   .arg(data::configRecordCount * data::configRecordBytes);
            return;
        }
        Guarded(data::configurationFile, [&] { CheckRecords(bytes); });
    }

    void CheckRecords(const QByteArray& bytes)
    {
        const auto record = [&bytes](int number) {
            return bytes.mid((number - 1) * data::configRecordBytes, data::configRecordBytes);
        };
        QStringList lines;
        for (int field = 1; field <= data::letterheadFields; ++field)
            lines << data::DecodeConfigRecord(record(data::LetterheadRecord(field))).trimmed();
        report.facts << QString("En-tête : %1").arg(lines.mid(0, 3).join(" / "));
        const int access = data::ConfigWord(record(data::configHeaderRecord), data::configAccessWord);
        if (access < -16384 || access > 16383)
            report.failures << QString("%1 : la valeur d'accès %2 ne donne aucun code d'accès.")
                                   .arg(data::configurationFile)
                                   .arg(access);
    }

    void CheckWorkgroup()
    {
        if (!Exists(data::workgroupFile))
            return;
        Guarded(data::workgroupFile, [this] {
            dao::DBEngine.SystemDB = host::PathIn(path, data::workgroupFile);
            dao::DBEngine.CreateWorkspace("Special", data::workspaceUser, data::BuildWorkspacePassword());
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
        Guarded(name, [&] { CheckDatabase(dao::DatabaseReader(file), name, report); });
    }

    QString path;
    CheckReport report;
};

} // namespace

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
