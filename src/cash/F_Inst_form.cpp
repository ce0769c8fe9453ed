#include "cash/F_Inst.h"

#include "platform/forms/GridTotals.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace cash {

void F_Inst::BuildForm()
{
    Dress(Image1[OtherDate], "calendar", " Autre date ", Command::ChooseDate);
    Dress(Image1[Correct], "edit", " Corriger ", Command::Modify);
    Dress(Image1[Print], "print", " Imprimer ", Command::Print);
    Dress(Image1[Quit], "quit", " Quitter ", Command::Leave);
    for (int action = OtherDate; action <= Quit; ++action) {
        Bulle.Attach(Image1[action]);
        RetainSizeWhenHidden(Image1[action]);
    }
    Grid3.setAccessibleName("Règlements en instance");
    Grid3.SetGroupHeading(Date, Amount, "Reçu");
    Grid3.SetUsualRows(20);
    RCP.setAccessibleName("Total reçu");

    SetContent(Column{
        Row{Item::Growing(SSPanel1), Image1[OtherDate], Image1[Correct], Image1[Print], Image1[Quit]},
        Item::Growing(WithTotals(Grid3, {{Caption("LTotal", "Total"), Under(Grid3, Code, Amount, RCP)}})),
    });
    Dates.setParent(this);
    SSPanel2.setParent(this);
    SSPanel2.hide();
    Bulle.setParent(this);
}

} // namespace cash
