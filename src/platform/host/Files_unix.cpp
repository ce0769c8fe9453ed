#include "platform/host/Files.h"

#include <QDir>

namespace host {

QString DriveFolder(const QString& drive)
{
    QString path = drive.trimmed();
    if (path.endsWith(':'))
        path.chop(1);
    return !path.isEmpty() && QDir(path).exists() ? QDir(path).absolutePath() : QString();
}

QStringList Drives()
{
    return {};
}

} // namespace host
