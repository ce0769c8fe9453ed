#include "practice/commands/OwnPrograms.h"

#include "platform/basic/RuntimeError.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace practice {

QString OwnProgram(const QString& name, const QStringList& folders)
{
    const QDir here(QCoreApplication::applicationDirPath());
    for (const QString& folder : folders) {
        const QString path = QStandardPaths::findExecutable(name, {QDir::cleanPath(here.filePath(folder))});
        if (!path.isEmpty())
            return path;
    }
    throw basic::RuntimeError::Described(
        basic::Error::FileNotFound,
        QString("Le programme %1 n'est pas installé avec practice (%2).").arg(name, here.path()));
}

QString PracticeProgram()
{
    return OwnProgram("zep_lumo", {".", "../../src"});
}

} // namespace practice
