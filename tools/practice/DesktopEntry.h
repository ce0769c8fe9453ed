#pragma once

#include <QByteArray>
#include <QString>

namespace practice {

/// An entry of the desktop's menu that starts a program in a folder.
struct DesktopEntry {
    QString name;    ///< as the menu shows it
    QString comment; ///< its tooltip
    QString program; ///< path
    QString folder;  ///< the program's working folder
    QString icon;
    QString windowClass; ///< of the program's windows, by which the desktop knows them
};

/// The entry as the desktop reads it, whatever characters its texts have. Raises 5, with a description for the user,
/// when a path has a control character that an entry can't hold.
QByteArray DesktopEntryText(const DesktopEntry& entry);

} // namespace practice
