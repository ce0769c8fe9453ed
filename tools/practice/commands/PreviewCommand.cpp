#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "practice/commands/Command.h"
#include "practice/commands/OwnPrograms.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

namespace practice {
namespace {

constexpr const char* PreviewNames[] = {"DOSSIER", "MODELE.RPT"};
constexpr Option PreviewOptions[] = {{"pdf", Option::Takes::OneValue, true}};

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
int RunPreview(const Arguments& arguments, const Streams& streams)
{
    const QString folder = arguments.Name(0);
    const QStringList given{FindDatabase(folder), FindTemplate(folder, arguments.Name(1)), arguments.Text("pdf")};
    constexpr int noTimeLimit = -1;
    QProcess painter;
    painter.start(OwnProgram("practice-preview", {".", "../libexec/zep-lumo"}), given, QIODevice::ReadOnly);
    painter.waitForFinished(noTimeLimit);
    streams.output << QString::fromUtf8(painter.readAllStandardOutput());
    streams.errors << QString::fromUtf8(painter.readAllStandardError());
    return painter.exitStatus() == QProcess::NormalExit ? painter.exitCode() : Refused;
}

} // namespace

const Command PreviewCommand{
    "preview",
    "DOSSIER MODELE.RPT --pdf FICHIER",
    "      Écrit un état dans un PDF, avec les lignes et les titres du dernier état imprimé. Pour voir\n"
    "      aussitôt ce que donne un modèle changé ; un chemin est pris comme il est.\n",
    PreviewNames,
    0,
    PreviewOptions,
    RunPreview,
};

} // namespace practice
