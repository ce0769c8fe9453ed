#include "core/Form1.h"
#include "core/screens.h"
#include "platform/forms/Guard.h"

#include <algorithm>
#include <utility>

namespace core {

namespace {

struct Task {
    std::string_view control;
    const char* icon;
};

constexpr Task Tasks[] = {
    {"mnu_aprpos", "folder"},   {"mnu_Prest", "services"},  {"mnu_tarif", "tariff"},    {"NPatients", "patients"},
    {"NActes", "acts"},         {"mnu_Recap", "calendar"},  {"mnu_recette", "journal"}, {"mnu_mens", "month"},
    {"mnu_asuppr", "delete"},   {"mnu_Deep", "expenses"},   {"mnu_Inst", "pending"},    {"mnu_Caisse", "cash"},
    {"mnu_Charges", "charges"}, {"mnu_resultat", "result"},
};

} // namespace

/// The menus' separators start new groups there too. "Quitter" has its own picture; "Évolution" is in no menu.
void Form1::BuildGreeting()
{
    QString heading;
    bool startsGroup = true;
    for (const MenuEntry& entry : MenuTable()) {
        const auto* const task = std::ranges::find(Tasks, entry.control, &Task::control);
        if (entry.isSubmenu)
            heading = Entry(entry.control)->text().remove('&');
        startsGroup = startsGroup || task == std::end(Tasks);
        if (task == std::end(Tasks))
            continue;
        if (std::exchange(startsGroup, false))
            greeting.AddGroup(*Entry(entry.parent), std::exchange(heading, {}));
        greeting.AddTask(*Entry(entry.control), task->icon);
    }
    auto* const evolution = new QAction("Évolution", this);
    evolution->setObjectName("Evolution");
    forms::On(*evolution, &QAction::triggered, *this, OpenEvolution);
    greeting.AddTask(*evolution, "evolution");
}

} // namespace core
