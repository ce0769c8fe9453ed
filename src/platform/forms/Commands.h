#pragma once

#include <QKeySequence>
#include <QString>
#include <span>

namespace forms {

/// Keyboard commands, the same on every screen. Dress assigns commands to a picture, which their keys then click.
enum class Command {
    Help,
    Modify,
    FindNext,
    ChooseDate,
    Accept, ///< what is open for entry, else the screen
    New,
    Delete,
    Print,
    Search,
    PreviousPage, ///< of a TabStrip
    NextPage,
    Previous, ///< day or month
    Next,
    MoveUp,
    MoveDown,
    Leave,

    // Of the main window.
    OpenPractice,
    OpenPatients,
    OpenActs,
    OpenCash,
    OpenPending,
    OpenExpenses,
    OpenPlanning,
    OpenJournal,
    OpenServices,
    OpenTariffs,
    OpenMonth,
    OpenDeletedActs,
    OpenCharges,
    OpenResult,
    OpenMenu,
    OpenMovements,
    Quit,
};

/// The keys of a command, in the words of tooltips and of the guide.
struct CommandKeys {
    Command command;
    QKeyCombination keys;
    const char* text;   ///< "Ctrl+P", "Suppr"
    const char* effect; ///< "imprimer"
};

/// All commands, in the order of the guide's page about keys.
std::span<const CommandKeys> KeyTable();

QKeySequence KeysOf(Command command);
QString KeyTextOf(Command command);

} // namespace forms
