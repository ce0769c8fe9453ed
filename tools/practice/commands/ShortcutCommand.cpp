#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Files.h"
#include "practice/commands/Command.h"
#include "practice/commands/MenuEntry.h"
#include "practice/commands/OwnPrograms.h"

#include <QDir>
#include <QFileInfo>

namespace practice {
namespace {

constexpr const char* ShortcutNames[] = {"DOSSIER"};
constexpr Option ShortcutOptions[] = {{"remove"}};

/// Resolves links if the folder exists, so that each practice has one entry.
QString WholePath(const QString& folder)
{
    const QString found = QFileInfo(folder).canonicalFilePath();
    return found.isEmpty() ? QDir::cleanPath(QDir(folder).absolutePath()) : found;
}

/// The first line of the letterhead, or the folder's name if that is empty.
QString NameOf(const QString& folder)
{
    QFile file(host::PathIn(folder, data::ConfigurationFile));
    if (!file.open(QIODevice::ReadOnly) || !QFileInfo(host::PathIn(folder, data::DatabaseFile)).isFile())
        throw basic::RuntimeError::Described(basic::Error::FileNotFound,
                                             QString("« %1 » n'est pas le dossier d'un cabinet.").arg(folder));
    file.seek((data::LetterheadRecord(1) - 1) * data::ConfigRecordBytes);
    const QString name = data::DecodeConfigRecord(file.read(data::ConfigRecordBytes)).simplified();
    return name.isEmpty() ? QFileInfo(folder).fileName() : name;
}

int Remove(const QString& folder, const Streams& streams)
{
    QFile entry(MenuEntryOf(folder));
    if (!entry.exists())
        throw basic::RuntimeError::Described(basic::Error::FileNotFound,
                                             QString("Le menu n'a pas d'entrée pour « %1 ».").arg(folder));
    if (!entry.remove())
        throw basic::RuntimeError::Described(
            basic::Error::PathAccess,
            QString("L'entrée « %1 » ne peut pas être enlevée : %2").arg(entry.fileName(), entry.errorString()));
    streams.output << "Entrée enlevée du menu : " << entry.fileName() << "\n";
    return Done;
}

int RunShortcut(const Arguments& arguments, const Streams& streams)
{
    const QString folder = WholePath(arguments.Name(0));
    if (arguments.Has("remove"))
        return Remove(folder, streams);
    const QString name = NameOf(folder);
    const QString path = WriteMenuEntry({.name = name,
                                         .comment = "ZEP Lumo, cabinet " + folder.simplified(),
                                         .program = PracticeProgram(),
                                         .folder = folder});
    streams.output << "Entrée du menu : " << name << "\nFichier : " << path << "\n";
    return Done;
}

} // namespace

const Command ShortcutCommand{
    "shortcut",
    "DOSSIER [--remove]",
    "      Met dans le menu du bureau une entrée au nom du cabinet, qui ouvre le programme dans ce\n"
    "      dossier ; --remove l'enlève.\n",
    ShortcutNames,
    0,
    ShortcutOptions,
    RunShortcut,
};

} // namespace practice
