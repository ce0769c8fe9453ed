#include "core/globals.h"
#include "expenses/F_Dep.h"
#include "platform/forms/GridTotals.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace expenses {

void F_Dep::BuildForm()
{
    Dress(Crecettes[New], "add", "Nouveau", Command::New);
    Dress(Crecettes[Modify], "edit", "Modifier", Command::Modify);
    Dress(Crecettes[Remove], "delete", "Supprimer", Command::Delete);
    Dress(Crecettes[Select], "calendar", "Sélection", Command::ChooseDate);
    Dress(Crecettes[Quit], "quit", "Quitter", Command::Leave);
    const char* const arabic[] = {"جـديـد", "مـراجـعة", "حـذف", "Sélection", "مـغادرة"}; // "Sélection" has no Arabic
    for (int action = New; action <= Quit; ++action) {
        Bulle.Attach(Crecettes[action], [french = Crecettes[action].Action(), other = QString(arabic[action])] {
            return core::SpeaksFrench() ? french : other;
        });
        RetainSizeWhenHidden(Crecettes[action]);
    }
    Grid1.setAccessibleName("Dépenses");
    Grid1.SetNameColumn(Object);
    Grid1.SetUsualRows(20);
    Label5.setAccessibleName("Total des dépenses");

    SetContent(Column{
        Row{Item::Growing(SSPanel1), Crecettes[New], Crecettes[Modify], Crecettes[Remove], Crecettes[Select],
            Crecettes[Quit]},
        Item::Growing(WithTotals(Grid1, {{Caption("LTotal", "Total"), Under(Grid1, Amount, Label5)}})),
    });
    Dates.setParent(this);
    SSPanel3.setParent(this);
    SSPanel3.hide();
    Bulle.setParent(this);
}

} // namespace expenses
