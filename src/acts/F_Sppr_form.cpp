#include "acts/F_Sppr.h"

#include "platform/forms/Layout.h"

using namespace forms;

namespace acts {

void F_Sppr::BuildForm()
{
    setAccessibleName("Actes supprimés");
    Dress(Image1[OtherDate], "calendar", " Autre date ", Command::ChooseDate);
    Dress(Image1[Remove], "delete", " Supprimer ", Command::Delete);
    Dress(Image1[Print], "print", " Imprimer ", Command::Print);
    Dress(Image1[Quit], "quit", " Quitter ", Command::Leave);
    for (int action = OtherDate; action <= Quit; ++action)
        Bulle.Attach(Image1[action]);
    Grid1.setAccessibleName("Actes supprimés");
    Grid1.SetGroupHeading(ActDate, FirstName, "Acte");
    Grid1.SetGroupHeading(RemovalDate, RemovalTime, "Suppression");
    Grid1.SetNameColumn(LastName);
    Grid1.SetUsualRows(20);
    Combo1.setAccessibleName("Règlement");
    Text1.setAccessibleName("Autre date");
    Dress(Image2[Accept], "accept", "Valider", Command::Accept);
    Dress(Image2[Cancel], "cancel", "Annuler");

    Inside(SSFrame1, Column{
                         Row{Item::Growing(SSPanel1), Image1[OtherDate], Image1[Remove], Image1[Print], Image1[Quit]},
                         Item::Growing(Grid1),
                     });
    SetContent(Column{Item::Growing(SSFrame1)});

    SSPanel2.setProperty("floating", true);
    Inside(SSPanel2, Column{Text1, Row{Item::Stretch(), Image2[Accept], Image2[Cancel]}});
    SSPanel2.setParent(this);
    SSPanel2.hide();
    Combo1.setParent(this);
    Combo1.hide();
    Bulle.setParent(this);
}

} // namespace acts
