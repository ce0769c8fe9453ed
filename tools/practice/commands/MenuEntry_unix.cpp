#include "platform/basic/RuntimeError.h"
#include "practice/commands/DesktopEntry.h"
#include "practice/commands/MenuEntry.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace practice {

QString MenuEntryOf(const QString& folder)
{
    constexpr int digits = 12;
    const QByteArray mark = QCryptographicHash::hash(folder.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/applications/zep-lumo-" +
           QString::fromLatin1(mark.first(digits)) + ".desktop";
}

QString WriteMenuEntry(const MenuEntry& entry)
{
    const QByteArray text = DesktopEntryText(entry);
    const QString path = MenuEntryOf(entry.folder);
    QSaveFile file(path);
    if (QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) && file.write(text) == text.size() &&
        file.commit())
        return path;
    throw basic::RuntimeError::Described(
        basic::Error::PathAccess,
        QString("Le fichier « %1 » ne peut pas être écrit : %2").arg(path, file.errorString()));
}

} // namespace practice
