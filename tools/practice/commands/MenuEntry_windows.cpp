#include "platform/basic/RuntimeError.h"
#include "platform/host/ShellLink_windows.h"
#include "practice/commands/MenuEntry.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

namespace practice {
namespace {

QDir StartMenu()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation));
}

/// The name as a file can have it.
QString FileNameFor(QString name)
{
    static const QRegularExpression refused(R"([<>:"/\\|?*\x00-\x1f]|[. ]+$)");
    return name.replace(refused, "-");
}

/// A path that no link to another practice has.
QString FreePath(const QString& name)
{
    QString path = StartMenu().filePath(name + ".lnk");
    for (int i = 2; QFileInfo::exists(path); ++i)
        path = StartMenu().filePath(QString("%1 (%2).lnk").arg(name).arg(i));
    return path;
}

} // namespace

QString MenuEntryOf(const QString& folder)
{
    for (const QFileInfo& link : StartMenu().entryInfoList({"*.lnk"}, QDir::Files)) {
        const host::ShellLink read = host::ReadShellLink(link.filePath());
        if (QFileInfo(read.program).completeBaseName() == "zep_lumo" && QDir(read.folder) == QDir(folder))
            return link.filePath();
    }
    return {};
}

QString WriteMenuEntry(const MenuEntry& entry)
{
    const QString present = MenuEntryOf(entry.folder);
    if (!present.isEmpty())
        QFile::remove(present);
    const QString path = FreePath(FileNameFor(entry.name));
    if (QDir().mkpath(StartMenu().path()) &&
        host::WriteShellLink(path, {.program = entry.program, .folder = entry.folder, .comment = entry.comment}))
        return path;
    throw basic::RuntimeError::Described(basic::Error::PathAccess,
                                         QString("Le fichier « %1 » ne peut pas être écrit.").arg(path));
}

} // namespace practice
