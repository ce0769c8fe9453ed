#pragma once

#include <QString>

namespace host {

/// A link of Windows' desktop or start menu (.lnk).
struct ShellLink {
    QString program;
    QString folder; ///< the program's working folder
    QString comment;
};

/// False when it can't be written.
bool WriteShellLink(const QString& path, const ShellLink& link);

/// An empty one when the file is none or can't be read.
ShellLink ReadShellLink(const QString& path);

} // namespace host
