#pragma once

#include <QKeySequence>
#include <QString>

namespace forms {

/// What a key does on every screen that offers it. A picture is given its command by Dress; the key then clicks it.
enum class Command {
    None,
    Help,
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

/// The keys of a command, the same on every screen. None has no keys.
QKeySequence KeysOf(Command command);

/// The keys as they are written in tooltips ("Ctrl+P", "Suppr").
QString KeyTextOf(Command command);

} // namespace forms
