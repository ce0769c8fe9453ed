#pragma once

#include <QByteArray>
#include <QString>

namespace practice {

/// A menu entry of the desktop that starts a program in a folder.
struct DesktopEntry {
    QString name;    ///< caption in the menu
    QString comment; ///< tooltip
    QString program; ///< path
    QString folder;  ///< the program's working folder
    QString icon;
    QString windowClass; ///< by which the desktop assigns windows to the entry
};

/// The text of the .desktop file, with all special characters escaped. Raises 5, with a description for the user, if a
/// path has a control character that can't be escaped.
QByteArray DesktopEntryText(const DesktopEntry& entry);

} // namespace practice
