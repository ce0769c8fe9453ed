#include "menu.h"

#include "acts/F_Sppr.h"
#include "acts/New_Act.h"
#include "acts/j_Client.h"
#include "analysis/Chrges.h"
#include "analysis/Mens_Act.h"
#include "analysis/Result.h"
#include "cash/F_Inst.h"
#include "cash/J_CAISSE.h"
#include "cash/Recettes.h"
#include "catalogue/J_PROD.h"
#include "catalogue/Tarifs.h"
#include "core/screens.h"
#include "evolution/Evolution.h"
#include "expenses/F_Dep.h"
#include "planning/Planning.h"
#include "platform/forms/Desk.h"

namespace {

template <class Screen>
void Show()
{
    Screen screen;
    forms::TheDesk().ShowModal(screen);
}

void ShowResult(const QString& first, const QString& last)
{
    analysis::Result screen;
    screen.Load();
    screen.ShowPeriod(first, last);
    forms::TheDesk().ShowModal(screen);
}

} // namespace

core::ScreenOpeners MenuScreens()
{
    core::LinkScreens({.evolution = Show<evolution::Evolution>, .result = ShowResult});
    return {
        {"NActes", Show<acts::New_Act>},          {"NPatients", Show<acts::j_Client>},
        {"mnu_Caisse", Show<cash::J_CAISSE>},     {"mnu_Deep", Show<expenses::F_Dep>},
        {"mnu_Inst", Show<cash::F_Inst>},         {"mnu_asuppr", Show<acts::F_Sppr>},
        {"mnu_Charges", Show<analysis::Chrges>},  {"mnu_mens", Show<analysis::Mens_Act>},
        {"mnu_resultat", Show<analysis::Result>}, {"mnu_recette", Show<cash::Recettes>},
        {"mnu_Prest", Show<catalogue::J_PROD>},   {"mnu_tarif", Show<catalogue::Tarifs>},
        {"mnu_Recap", Show<planning::Planning>},
    };
}
