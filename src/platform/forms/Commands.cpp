#include "platform/forms/Commands.h"

#include <algorithm>
#include <iterator>

namespace forms {

namespace {

struct CommandKeys {
    Command command;
    QKeyCombination keys;
    const char* text;
};

constexpr CommandKeys KeysByCommand[] = {
    {Command::Help, Qt::Key_F1, "F1"},
    {Command::Accept, Qt::CTRL | Qt::Key_S, "Ctrl+S"},
    {Command::ChooseDate, Qt::Key_F4, "F4"},
    {Command::Modify, Qt::Key_F2, "F2"},
    {Command::New, Qt::Key_Insert, "Inser"},
    {Command::Delete, Qt::Key_Delete, "Suppr"},
    {Command::Print, Qt::CTRL | Qt::Key_P, "Ctrl+P"},
    {Command::Search, Qt::CTRL | Qt::Key_F, "Ctrl+F"},
    {Command::Previous, Qt::ALT | Qt::Key_Left, "Alt+Gauche"},
    {Command::Next, Qt::ALT | Qt::Key_Right, "Alt+Droite"},
    {Command::MoveUp, Qt::ALT | Qt::Key_Up, "Alt+Haut"},
    {Command::MoveDown, Qt::ALT | Qt::Key_Down, "Alt+Bas"},
    {Command::PreviousPage, Qt::CTRL | Qt::Key_PageUp, "Ctrl+Page préc."},
    {Command::NextPage, Qt::CTRL | Qt::Key_PageDown, "Ctrl+Page suiv."},
    {Command::Leave, Qt::CTRL | Qt::Key_W, "Ctrl+W"},
    {Command::OpenActs, Qt::Key_F6, "F6"},
    {Command::OpenCash, Qt::Key_F7, "F7"},
    {Command::OpenPending, Qt::Key_F8, "F8"},
};

const CommandKeys* Find(Command command)
{
    const auto* const found = std::ranges::find(KeysByCommand, command, &CommandKeys::command);
    return found == std::end(KeysByCommand) ? nullptr : found;
}

} // namespace

QKeySequence KeysOf(Command command)
{
    const CommandKeys* const found = Find(command);
    return found != nullptr ? QKeySequence(found->keys) : QKeySequence();
}

QString KeyTextOf(Command command)
{
    const CommandKeys* const found = Find(command);
    return found != nullptr ? QString::fromUtf8(found->text) : QString();
}

} // namespace forms
