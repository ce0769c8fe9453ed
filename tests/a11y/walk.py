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

# Controls that may be without a name, by place, role and reason. There is none.
EXCEPTIONS = set()

MAIN = "Mouvements"  # the menu, which no other window has
PATIENCE = 20  # seconds until a screen counts as missing
faults = []


def keys(*names):
    for name in names:
        subprocess.run(["xdotool", "key", "--clearmodifiers", name], check=True)
        time.sleep(0.3)


def write(text):
    subprocess.run(["xdotool", "type", "--delay", "30", text], check=True)
    time.sleep(0.3)


def children(item):
    for index in range(item.get_child_count()):
        child = item.get_child_at_index(index)
        if child is not None:
            yield child


def is_in(item, state):
    return item.get_state_set().contains(state)


def shows(item):
    return is_in(item, Atspi.StateType.SHOWING)


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
    if (place, item.get_role_name(), reason) not in EXCEPTIONS:
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
    """Checks what shows of an item and below it; returns how many controls can have the focus."""
    count = 0
    role = item.get_role()
    if is_in(item, Atspi.StateType.FOCUSABLE):
        count += 1
        if role in (Atspi.Role.INVALID, Atspi.Role.UNKNOWN):
            report(place, item, "no role")
        if not item.get_name().strip() and not is_labelled(item):
            report(place, item, "no name")
    if role == Atspi.Role.TABLE:
        check_table(place, item)
        return count
    if role in (Atspi.Role.COMBO_BOX, Atspi.Role.LIST, Atspi.Role.MENU_BAR):
        return count  # what is in them shows when they are open
    return count + sum(check(place, child) for child in children(item) if shows(child))


def texts(item):
    """The names and descriptions of what shows, cells of tables aside."""
    found = [item.get_name(), item.get_description()]
    if item.get_role() != Atspi.Role.TABLE:
        for child in children(item):
            if shows(child):
                found += texts(child)
    return found


def look(program, place):
    window = front(program)
    count = check(place, window)
    print(f"{place}: {window.get_role_name()} \"{window.get_name().strip()}\", {count} controls")
    if count == 0:
        report(place, window, "nothing can have the focus")


def has(program, text):
    window = front(program)
    return window is not None and any(text in found for found in texts(window))


def screen(program, name, mark):
    """Waits until the window in front has a text that marks the screen, and looks at it."""
    wait_for(f"{name} doesn't come up", lambda: has(program, mark))
    look(program, name)


def question(program, text):
    wait_for(f"no message \"{text}\"", lambda: has(program, text))
    window = front(program)
    print(f"message: {window.get_role_name()} \"{window.get_name()}\"")
    if not any(text in found for found in texts(window)):
        report("message", window, "doesn't say what it asks")
    check("message", window)


def choose(menu, entry):
    """The entry of a menu, from 1: F10 opens the first menu with no entry chosen, Right the next one with its first."""
    keys("F10", *["Right"] * menu, *["Down"] * (entry - menu), "Return")


MOVEMENTS, EDITIONS = 0, 1


def press(program, name):
    """Presses a button as assistive software does."""

    def find(item):
        if item.get_name() == name and shows(item):
            return item
        return next(filter(None, map(find, children(item))), None)

    try:
        find(front(program)).do_action(0)
    except GLib.Error:  # the answer comes when the screen that it opens has closed
        pass


def leave(program, mark):
    keys("ctrl+w")
    wait_for(f"{mark} stays", lambda: front(program) is not None and not has(program, mark))


def open_practice(program):
    screen(program, "Main window", "Quitter")
    keys("F1")
    screen(program, "Guide", "Texte à chercher")
    keys("Escape", "ctrl+o")
    screen(program, "Explorer", "Code d'accès")
    write("2468")
    keys("Return")
    screen(program, "Main window, open", "Cabinet du Dr")


def visit_catalogue(program):
    choose(MOVEMENTS, 1)
    screen(program, "Services", "Monter la prestation")
    keys("F2")
    screen(program, "Services, entry", "Enregistrer la prestation")
    keys("Escape")
    leave(program, "Monter la prestation")
    choose(MOVEMENTS, 2)
    screen(program, "Rates", "Modifier le tarif choisi")
    keys("F2")
    screen(program, "Rates, entry", "Modification d'un tarif")
    keys("Escape")
    leave(program, "Modifier le tarif choisi")


def visit_patients(program):
    choose(MOVEMENTS, 3)
    screen(program, "Patient search", "Critères de recherche")
    keys("ctrl+Next")
    screen(program, "Patient search by name", "Début du nom")
    write("b")
    keys("Return", "Return")
    screen(program, "Patients found", "Changer les critères")
    leave(program, "Changer les critères")
    screen(program, "Patients", "Patients affichés")
    leave(program, "Patients affichés")


def visit_acts(program):
    keys("F6")
    screen(program, "Acts", "Actes par unité")
    keys("ctrl+Next")
    screen(program, "Acts, display", "Paramètres d'affichage")
    press(program, "Actualiser la visibilité des actes")
    screen(program, "Actualisation", "Lancer l'actualisation")
    keys("ctrl+w")
    question(program, "Modification annulée")
    keys("Return")
    wait_for("no screen comes back", lambda: has(program, "Paramètres d'affichage") or has(program, MAIN))
    if not has(program, MAIN):
        leave(program, "Paramètres d'affichage")


def visit_cash(program):
    wait_for("the main window doesn't come back", lambda: has(program, MAIN))
    keys("F7")
    screen(program, "Calendar", "Mois suivant")
    keys("Return")
    screen(program, "Cash, recapitulation", "Solde de la veille")
    for page in ("settled", "pending"):
        keys("ctrl+Next")
        look(program, f"Cash, {page}")
    keys("F2")
    screen(program, "Cash, correction", "Enregistrer la correction")
    keys("Escape", "ctrl+Next")
    look(program, "Cash, expenses")
    keys("ctrl+Prior", "ctrl+Prior", "ctrl+Prior", "ctrl+p")
    screen(program, "Preview", "Dernière page")
    keys("Escape")
    wait_for("the preview stays", lambda: has(program, "Solde de la veille"))
    leave(program, "Solde de la veille")


def visit_editions(program):
    choose(EDITIONS, 1)
    screen(program, "Planning", "Planning du jour par unité")
    keys("Return")
    if has(program, "Retour au planning"):
        look(program, "Planning, list")
        keys("Escape")
    else:
        question(program, "Aucune programmation pour cette unité")
        keys("Return")
    leave(program, "Planning du jour par unité")
    choose(EDITIONS, 2)
    screen(program, "Journal, dates", "Choix des dates")
    keys("Return")
    screen(program, "Journal", "Récapitulatif par unité")
    for page in ("codes", "detail"):
        keys("ctrl+Next")
        look(program, f"Journal, {page}")
    leave(program, "Récapitulatif par unité")
    choose(EDITIONS, 3)
    screen(program, "Monthly situation", "Actes du mois par unité")
    leave(program, "Actes du mois par unité")
    choose(EDITIONS, 4)
    screen(program, "Deleted acts", "Actes supprimés")
    keys("F4")
    screen(program, "Deleted acts, date", "Autre date")
    keys("Escape")
    leave(program, "Actes supprimés")
    choose(EDITIONS, 5)
    screen(program, "Expenses", "Total des dépenses")
    keys("Insert")
    screen(program, "Expenses, entry", "Enregistrer la dépense")
    keys("Escape")
    leave(program, "Total des dépenses")
    keys("F8")
    screen(program, "Pending, dates", "Choix des dates")
    keys("Return")
    screen(program, "Pending", "Total reçu")
    leave(program, "Total reçu")
    choose(EDITIONS, 8)
    screen(program, "Charges", "Enregistrer et quitter")
    leave(program, "Enregistrer et quitter")
    choose(EDITIONS, 9)
    screen(program, "Result, dates", "Choix des dates")
    keys("Return")
    screen(program, "Result", "Résultat net")
    leave(program, "Résultat net")


def main():
    program = wait_for("the program doesn't start", find_program)
    open_practice(program)
    visit_catalogue(program)
    visit_patients(program)
    visit_acts(program)
    visit_cash(program)
    visit_editions(program)
    keys("ctrl+q")
    question(program, "Veuiller Confirmer Fin de Travail")
    keys("alt+o")
    print(f"{len(faults)} faults, {len(EXCEPTIONS)} exceptions")
    sys.exit(1 if faults else 0)


main()
