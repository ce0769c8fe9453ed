#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "practice/commands/Command.h"
#include "practice/commands/OutputOption.h"
#include "practice/commands/OwnPrograms.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

namespace practice {
namespace {

constexpr const char* PreviewNames[] = {"DOSSIER", "MODELE.RPT"};
constexpr Option PreviewOptions[] = {{"pdf", Option::Takes::OneValue, true}, {"force"}};

/// Looks up a name in the practice, then in the program's folder; a path is used unchanged.
QString FindTemplate(const QString& folder, const QString& report)
{
    if (report.contains('/'))
        return report;
    const QString ofPractice = host::PathIn(folder, report);
    if (host::FileExists(ofPractice, 0))
        return ofPractice;
    const QString ofProgram =
        host::PathIn(host::FolderOfOwnFile(QCoreApplication::applicationDirPath(), report), report);
    if (host::FileExists(ofProgram, 0))
        return ofProgram;
    throw basic::RuntimeError::Described(basic::Error::FileNotFound,
                                         QString("Fichier %1 absent de « %2 ».").arg(report, folder));
}

QString FindDatabase(const QString& folder)
{
    const QString database = host::PathIn(folder, data::DatabaseFile);
    if (!QFileInfo(database).isFile())
        throw basic::RuntimeError::Described(
            basic::Error::FileNotFound,
            QString("« %1 » n'est pas le dossier d'un cabinet : %2 manque.").arg(folder, data::DatabaseFile));
    return database;
}

/// Runs a separate program: printing needs fonts, whose libraries this command must not load.
int Paint(const QStringList& given, QString& output, const Streams& streams)
{
    constexpr int noTimeLimit = -1;
    QProcess painter;
    painter.start(OwnProgram("practice-preview", {".", "../libexec/zep-lumo"}), given, QIODevice::ReadOnly);
    painter.waitForFinished(noTimeLimit);
    output = QString::fromUtf8(painter.readAllStandardOutput());
    streams.errors << QString::fromUtf8(painter.readAllStandardError());
    return painter.exitStatus() == QProcess::NormalExit ? painter.exitCode() : Refused;
}

void CopyTo(QIODevice& target, const QString& path)
{
    constexpr qint64 blockBytes = qint64{1} << 16;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw basic::RuntimeError(basic::Error::FileNotFound);
    while (!file.atEnd())
        target.write(file.read(blockBytes));
}

int RunPreview(const Arguments& arguments, const Streams& streams)
{
    const QString folder = arguments.Name(0);
    const QString database = FindDatabase(folder);
    const QString report = FindTemplate(folder, arguments.Name(1));
    const std::unique_ptr<OutputFile> pdf = OutputOf(arguments, "pdf", OutputKind::Pdf);
    const QTemporaryDir scratch;
    const QString painted = scratch.filePath("etat.pdf");
    QString summary;
    if (const int code = Paint({database, report, painted}, summary, streams); code != Done)
        return code;
    CopyTo(pdf->Device(), painted);
    pdf->Complete();
    (pdf->IsStandardOutput() ? streams.errors : streams.output) << arguments.Text("pdf") << " : " << summary;
    return Done;
}

} // namespace

const Command PreviewCommand{
    "preview",
    "DOSSIER MODELE.RPT --pdf FICHIER [--force]",
    "      Écrit un état dans un PDF, avec les lignes et les titres du dernier état imprimé. Pour voir\n"
    "      aussitôt ce que donne un modèle changé ; un chemin est pris comme il est. --force remplace un PDF qui\n"
    "      existe.\n",
    PreviewNames,
    0,
    PreviewOptions,
    RunPreview,
};

} // namespace practice
