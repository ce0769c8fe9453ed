#pragma once

#include <QByteArray>
#include <QString>

namespace practice {

/// An entry of the desktop's menu that starts a program in a folder.
struct DesktopEntry {
    QString name;    ///< as the menu shows it
    QString comment; ///< tooltip
    QString program; ///< path
    QString folder;  ///< the program's working folder
    QString icon;
    QString windowClass; ///< of the program's windows, by which the desktop knows them
};

/// The text of the .desktop file, with all special characters escaped. Raises 5, with a description for the user, if a
/// path has a control character that can't be escaped.
QByteArray DesktopEntryText(const DesktopEntry& entry);

} // namespace practice
