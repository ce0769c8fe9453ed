#pragma once

#include <QKeySequence>
#include <QString>

namespace forms {

/// Keyboard commands, the same on every screen. Dress assigns a command to a picture, which its keys then click.
enum class Command {
    None,
    Help,
    Accept, ///< of what is open for entry, else of the screen
    ChooseDate,
    Modify,
    New,
    Delete,
    Print,
    Search,
    Previous, ///< day or month
    Next,
    MoveUp,
    MoveDown,
    PreviousPage, ///< of a TabStrip
    NextPage,
    Leave,
    OpenActs,
    OpenCash,
    OpenPending,
};

/// The keys of a command; none for None.
QKeySequence KeysOf(Command command);

/// The keys as shown in tooltips ("Ctrl+P", "Suppr").
QString KeyTextOf(Command command);

} // namespace forms
