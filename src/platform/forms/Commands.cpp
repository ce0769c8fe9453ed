#include "platform/forms/Commands.h"

#include <algorithm>
#include <iterator>

namespace forms {

namespace {

constexpr CommandKeys Table[] = {
    {Command::Help, Qt::Key_F1, "F1", "ce guide, à la page de l'écran"},
    {Command::Modify, Qt::Key_F2, "F2", "corriger ou modifier la ligne choisie"},
    {Command::FindNext, Qt::Key_F3, "F3", "chercher la suite dans ce guide"},
    {Command::ChooseDate, Qt::Key_F4, "F4", "choisir une date ou un mois ; dans un champ de date, le calendrier"},
    {Command::Accept, Qt::CTRL | Qt::Key_S, "Ctrl+S",
     "accepter la saisie ou le choix qui est ouvert ; sinon enregistrer l'écran, comme son bouton"},
    {Command::New, Qt::Key_Insert, "Inser", "nouvelle ligne"},
    {Command::Delete, Qt::Key_Delete, "Suppr", "supprimer la ligne choisie"},
    {Command::Print, Qt::CTRL | Qt::Key_P, "Ctrl+P", "imprimer"},
    {Command::Search, Qt::CTRL | Qt::Key_F, "Ctrl+F", "chercher un patient, ou un texte de ce guide"},
    {Command::PreviousPage, Qt::CTRL | Qt::Key_PageUp, "Ctrl+Page préc.", "onglet précédent"},
    {Command::NextPage, Qt::CTRL | Qt::Key_PageDown, "Ctrl+Page suiv.", "onglet suivant"},
    {Command::Previous, Qt::ALT | Qt::Key_Left, "Alt+Gauche", "jour ou mois précédent ; dans ce guide, page d'avant"},
    {Command::Next, Qt::ALT | Qt::Key_Right, "Alt+Droite", "jour ou mois suivant"},
    {Command::MoveUp, Qt::ALT | Qt::Key_Up, "Alt+Haut", "monter la prestation choisie"},
    {Command::MoveDown, Qt::ALT | Qt::Key_Down, "Alt+Bas", "descendre la prestation choisie"},
    {Command::Leave, Qt::CTRL | Qt::Key_W, "Ctrl+W", "quitter l'écran, comme le bouton qui quitte"},

    {Command::OpenPractice, Qt::CTRL | Qt::Key_O, "Ctrl+O", "Explorer ..."},
    {Command::OpenPatients, Qt::Key_F5, "F5", "Patients"},
    {Command::OpenActs, Qt::Key_F6, "F6", "Actes"},
    {Command::OpenCash, Qt::Key_F7, "F7", "Caisse du Jour"},
    {Command::OpenPending, Qt::Key_F8, "F8", "Règlements en instance"},
    {Command::OpenExpenses, Qt::Key_F9, "F9", "Dépenses ordinaires"},
    {Command::OpenPlanning, Qt::Key_F11, "F11", "Planning"},
    {Command::OpenJournal, Qt::Key_F12, "F12", "Journal d'activité"},
    {Command::OpenServices, Qt::CTRL | Qt::Key_E, "Ctrl+E", "Prestations"},
    {Command::OpenTariffs, Qt::CTRL | Qt::Key_T, "Ctrl+T", "Tarifs"},
    {Command::OpenMonth, Qt::CTRL | Qt::Key_M, "Ctrl+M", "Récap Mensuelle"},
    {Command::OpenDeletedActs, Qt::CTRL | Qt::Key_U, "Ctrl+U", "Actes supprimés"},
    {Command::OpenCharges, Qt::CTRL | Qt::Key_H, "Ctrl+H", "Charges"},
    {Command::OpenResult, Qt::CTRL | Qt::Key_R, "Ctrl+R", "Résultat"},
    {Command::OpenMenu, Qt::Key_F10, "F10", "le menu"},
    {Command::OpenMovements, Qt::ALT | Qt::Key_M, "Alt+M", "le menu Mouvements"},
    {Command::Quit, Qt::CTRL | Qt::Key_Q, "Ctrl+Q", "Quitter"},
};

const CommandKeys& Find(Command command)
{
    const auto* const found = std::ranges::find(Table, command, &CommandKeys::command);
    Q_ASSERT(found != std::end(Table));
    return *found;
}

} // namespace

std::span<const CommandKeys> KeyTable()
{
    return Table;
}

QKeySequence KeysOf(Command command)
{
    return {Find(command).keys};
}

QString KeyTextOf(Command command)
{
    return QString::fromUtf8(Find(command).text);
}

} // namespace forms
