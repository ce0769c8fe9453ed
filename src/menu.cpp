#include "menu.h"

#include "acts/New_Act.h"
#include "cash/F_Inst.h"
#include "cash/J_CAISSE.h"
#include "catalogue/J_PROD.h"
#include "catalogue/Tarifs.h"
#include "planning/Planning.h"
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
        {"NActes", Show<acts::New_Act>},        {"mnu_Caisse", Show<cash::J_CAISSE>},
        {"mnu_Inst", Show<cash::F_Inst>},       {"mnu_Prest", Show<catalogue::J_PROD>},
        {"mnu_tarif", Show<catalogue::Tarifs>}, {"mnu_Recap", Show<planning::Planning>},
    };
}
