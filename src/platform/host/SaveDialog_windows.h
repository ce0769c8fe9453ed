#pragma once

#include <QString>

namespace host {

/// What Windows' own dialog for a new file shows.
struct SaveDialog {
    QString title;
    QString folder;
    QString name;
    QString kind;   ///< of files, such as "PDF"
    QString ending; ///< such as "pdf"; added to a name without one
};

/// Asks for a path; empty if that is declined. An existing file isn't asked about. `owner` is the handle of the window
/// that waits meanwhile. Nothing is written to the registry.
QString AskPath(const SaveDialog& dialog, quintptr owner);

} // namespace host
