"""Opens every screen by keyboard and checks what assistive software gets of it.

Visible focusable controls must have a role and a name or a label, tables named columns and cells, message boxes their
question. Prints each screen and each fault; ends with 1 on a fault or when a screen doesn't open.
"""

import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 20  # seconds until a screen counts as missing
faults = []

# What the user does, the screen that this brings up, and a text that marks it ("" for the same screen, on another page);
# without a name, the screen with the mark is left. M3 and E5 are the third and the fifth entry of the two menus.
STEPS = [
    ("", "Main window", "Quitter"),
    ("F1", "Guide", "Texte à chercher"),
    ("Escape ctrl+o", "Explorer", "Code d'accès"),
    ("2 4 6 8 Return", "Main window, open", "Cabinet du Dr"),
    ("M1", "Services", "Monter la prestation"),
    ("F2", "Services, entry", "Enregistrer la prestation"),
    ("Escape", "", "Monter la prestation"),
    ("M2", "Rates", "Modifier le tarif choisi"),
    ("F2", "Rates, entry", "Modification d'un tarif"),
    ("Escape", "", "Modifier le tarif choisi"),
    ("M3", "Patient search", "Critères de recherche"),
    ("ctrl+Next", "Patient search by name", "Début du nom"),
    ("b Return Return", "Patients found", "Changer les critères"),
    ("", "", "Changer les critères"),
    ("", "Patients", "Patients affichés"),
    ("", "", "Patients affichés"),
    ("F6", "Acts", "Actes par unité"),
    ("ctrl+Next", "Acts, display", "Paramètres d'affichage"),
    ("Button", "Actualisation", "Lancer l'actualisation"),
    ("ctrl+w", "Message", "Modification annulée"),
    ("Return", "Main window, again", "Mouvements"),
    ("F7", "Calendar", "Mois suivant"),
    ("Return", "Cash, recapitulation", "Solde de la veille"),
    ("ctrl+Next", "Cash, settled", ""),
    ("ctrl+Next", "Cash, pending", ""),
    ("F2", "Cash, correction", "Enregistrer la correction"),
    ("Escape ctrl+Next", "Cash, expenses", ""),
    ("ctrl+Prior ctrl+Prior ctrl+Prior ctrl+p", "Preview", "Dernière page"),
    ("Escape", "Cash, printed", "Solde de la veille"),
    ("", "", "Solde de la veille"),
    ("E1", "Planning", "Planning du jour par unité"),
    ("Return", "Planning, list", "Retour au planning|Aucune programmation pour cette unité"),
    ("Escape", "", "Planning du jour par unité"),
    ("E2", "Journal, dates", "Choix des dates"),
    ("Return", "Journal", "Récapitulatif par unité"),
    ("ctrl+Next", "Journal, codes", ""),
    ("ctrl+Next", "Journal, detail", ""),
    ("", "", "Récapitulatif par unité"),
    ("E3", "Monthly situation", "Actes du mois par unité"),
    ("Evolution", "Evolution, months", "Graphique des mois"),
    ("Left", "Evolution, a month", "Graphique des mois\u00a0: "),
    ("Return", "Result of a month", "Résultat net"),
    ("", "", "Résultat net"),
    ("ctrl+Next", "Evolution, services", "Graphique des unités"),
    ("Return", "Evolution, a service", "Graphique des mois de "),
    ("Escape", "", "Graphique des unités"),
    ("", "", "Graphique des unités"),
    ("", "", "Actes du mois par unité"),
    ("E4", "Deleted acts", "Supprimer"),
    ("F4", "Deleted acts, date", "Autre date"),
    ("Escape", "", "Supprimer"),
    ("E5", "Expenses", "Total des dépenses"),
    ("Insert", "Expenses, entry", "Enregistrer la dépense"),
    ("F4", "Expenses, calendar", "Mois suivant"),
    ("Escape", "Expenses, entry again", "Enregistrer la dépense"),
    ("Escape", "", "Total des dépenses"),
    ("F8", "Pending, dates", "Choix des dates"),
    ("Return", "Pending", "Total reçu"),
    ("", "", "Total reçu"),
    ("E8", "Charges", "Enregistrer et quitter"),
    ("", "", "Enregistrer et quitter"),
    ("E9", "Result, dates", "Choix des dates"),
    ("Return", "Result", "Résultat net"),
    ("", "", "Résultat net"),
    ("ctrl+q", "Message", "Veuiller Confirmer Fin de Travail"),
]
BUTTONS = {"Button": "Actualiser la visibilité des actes", "Evolution": "Évolution des mois"}


def press(program, keys):
    """Presses keys one after another; those of a menu entry, or a button as assistive software does."""
    for key in keys.split():
        if key in BUTTONS:
            press_button(program, BUTTONS[key])
        elif key[0] in "ME" and key[1:].isdigit():
            # F10 opens the first menu with no entry chosen, Right the next one with its first.
            down = int(key[1:]) - (key[0] == "E")
            press(program, "F10 " + "Right " * (key[0] == "E") + "Down " * down + "Return")
        else:
            subprocess.run(["xdotool", "key", "--clearmodifiers", key], check=True)
            time.sleep(0.3)


def press_button(program, name):
    try:
        next(item for item in below(front(program)) if item.get_name() == name).do_action(0)
    except GLib.Error:  # the answer comes when the screen that it opens has closed
        pass


def children(item):
    for index in range(item.get_child_count()):
        child = item.get_child_at_index(index)
        if child is not None:
            yield child


def is_in(item, state):
    return item.get_state_set().contains(state)


def shows(item):
    return is_in(item, Atspi.StateType.SHOWING)


def below(item):
    """The item and what shows below it, but neither the cells of tables nor what shows when a list is open."""
    yield item
    if item.get_role() not in (Atspi.Role.TABLE, Atspi.Role.COMBO_BOX, Atspi.Role.LIST, Atspi.Role.MENU_BAR):
        for child in filter(shows, children(item)):
            yield from below(child)


def find_program():
    for child in children(Atspi.get_desktop(0)):
        if child.get_name() == "ZEP Lumo":
            return child
    return None


def wait_for(what, condition):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            found = condition()
        except GLib.Error:  # an object that went while it was asked
            found = None
        if found:
            time.sleep(0.5)
            return found
        time.sleep(0.2)
    window = front(find_program())
    print("In front:", [text for text in texts(window) if text] if window else "nothing")
    sys.exit(f"NOT AS IT SHOULD BE: {what}")


def front(program):
    """The window that the user is in."""
    windows = [window for window in children(program) if shows(window)]
    active = [window for window in windows if is_in(window, Atspi.StateType.ACTIVE)]
    return (active or windows or [None])[-1]


def is_labelled(item):
    return any(
        relation.get_relation_type() == Atspi.RelationType.LABELLED_BY
        and any(relation.get_target(index).get_name().strip() for index in range(relation.get_n_targets()))
        for relation in item.get_relation_set()
    )


def report(place, item, reason):
    fault = f"{place}: {item.get_role_name()} \"{item.get_name()}\": {reason}"
    faults.append(fault)
    print("  FAULT", fault)


def check_table(place, table):
    rows, columns = table.get_n_rows(), table.get_n_columns()
    if columns <= 0:
        report(place, table, "no columns")
    for column in range(columns):
        header = table.get_column_header(column)
        if header is None or not header.get_name().strip():
            report(place, table, f"column {column + 1} has no name")
        if rows > 0 and table.get_accessible_at(0, column) is None:
            report(place, table, f"no cell in column {column + 1}")


def check(place, item):
    if is_in(item, Atspi.StateType.FOCUSABLE):
        if item.get_role() in (Atspi.Role.INVALID, Atspi.Role.UNKNOWN):
            report(place, item, "no role")
        if not item.get_name().strip() and not is_labelled(item):
            report(place, item, "no name")
    if item.get_role() == Atspi.Role.TABLE:
        check_table(place, item)


def texts(window):
    return [text for item in below(window) for text in (item.get_name(), item.get_description())]


def has(program, marks):
    window = front(program)
    return window is not None and any(mark in text for mark in marks.split("|") for text in texts(window))


def look(program, place):
    window = front(program)
    for item in below(window):
        check(place, item)
    count = sum(is_in(item, Atspi.StateType.FOCUSABLE) for item in below(window))
    print(f"{place}: {window.get_role_name()} \"{window.get_name().strip()}\", {count} controls")
    if count == 0:
        report(place, window, "nothing can have the focus")


def main():
    program = wait_for("the program doesn't start", find_program)
    for keys, place, mark in STEPS:
        press(program, keys)
        if place:
            wait_for(f"{place} doesn't come up", lambda: has(program, mark))
            look(program, place)
        else:
            press(program, "ctrl+w")
            wait_for(f"{mark} stays", lambda: front(program) is not None and not has(program, mark))
    press(program, "alt+o")
    print(f"{len(faults)} faults")
    sys.exit(1 if faults else 0)


main()
