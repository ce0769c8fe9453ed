#include "platform/host/ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>

namespace host {
namespace {

QString& FixedProgramFolder()
{
    static QString folder;
    return folder;
}

} // namespace

QString ProgramFolder()
{
    if (!FixedProgramFolder().isEmpty())
        return FixedProgramFolder();
    const QString ownFolder = QCoreApplication::applicationDirPath();
    const QString installed = QDir::cleanPath(ownFolder + "/../share/zep-lumo");
    return QDir(installed).exists() ? installed : ownFolder;
}

void FixProgramFolder(const QString& folder)
{
    FixedProgramFolder() = folder;
}

} // namespace host
