#include "platform/host/Files.h"

#include <QDir>

namespace host {

QString DriveFolder(const QString& drive)
{
    QString path = drive.trimmed();
    if (path.endsWith(':'))
        path += '/';
    return !path.isEmpty() && QDir(path).exists() ? QDir(path).absolutePath() : QString();
}

QStringList Drives()
{
    QStringList drives;
    for (const QFileInfo& drive : QDir::drives())
        drives << drive.absolutePath().left(2);
    return drives;
}

} // namespace host
