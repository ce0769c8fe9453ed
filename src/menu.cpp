#include "menu.h"

#include "acts/F_Sppr.h"
#include "acts/New_Act.h"
#include "analysis/Chrges.h"
#include "analysis/Mens_Act.h"
#include "analysis/Result.h"
#include "cash/F_Inst.h"
#include "cash/J_CAISSE.h"
#include "cash/Recettes.h"
#include "acts/j_Client.h"
#include "cash/F_Inst.h"
#include "cash/J_CAISSE.h"
#include "expenses/F_Dep.h"
#include "platform/forms/Desk.h"

namespace {

template <class Screen>
void Show()
{
    Screen screen;
    forms::TheDesk().ShowModal(screen);
}

} // namespace

core::ScreenOpeners MenuScreens()
{
    return {
        {"NActes", Show<acts::New_Act>},
        {"mnu_Caisse", Show<cash::J_CAISSE>},
        {"mnu_Charges", Show<analysis::Chrges>},
        {"mnu_Inst", Show<cash::F_Inst>},
        {"mnu_mens", Show<analysis::Mens_Act>},
        {"mnu_resultat", Show<analysis::Result>},
        {"mnu_recette", Show<cash::Recettes>},
        {"NActes", Show<acts::New_Act>},     {"NPatients", Show<acts::j_Client>}, {"mnu_Caisse", Show<cash::J_CAISSE>},
        {"mnu_Deep", Show<expenses::F_Dep>}, {"mnu_Inst", Show<cash::F_Inst>},    {"mnu_asuppr", Show<acts::F_Sppr>},
    };
}
