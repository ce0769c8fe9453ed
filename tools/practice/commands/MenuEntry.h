#pragma once

#include <QString>

namespace practice {

/// An entry of the desktop's menu, or of Windows' start menu, that opens a practice.
struct MenuEntry {
    QString name;    ///< caption in the menu
    QString comment; ///< tooltip
    QString program; ///< path
    QString folder;  ///< of the practice; the program's working folder
};

/// The file of the entry for this practice. On Linux it may not exist; on Windows it is empty then.
QString MenuEntryOf(const QString& folder);

/// Makes the practice's entry, or replaces it. Returns its file. Raises 5 for a path that an entry can't name, 75 when
/// the file can't be written, with a description for the user.
QString WriteMenuEntry(const MenuEntry& entry);

} // namespace practice
