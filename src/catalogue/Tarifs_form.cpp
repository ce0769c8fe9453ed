#include "catalogue/Tarifs.h"

#include "platform/forms/Layout.h"

using namespace forms;

namespace catalogue {

void Tarifs::BuildForm()
{
    setAccessibleName("Tarifs");
    Dress(Image2[Modify], "edit", "Modifier le tarif choisi", Command::Modify);
    Dress(Image2[StoreAndQuit], "save", "Enregistrer les tarifs et quitter", {Command::Accept, Command::Leave});
    Dress(Image2[AcceptEntry], "accept", "Valider", Command::Accept);
    Dress(Image2[CancelEntry], "cancel", "Annuler");
    Grid1.setAccessibleName("Tarifs des actes");
    Grid1.SetNameColumn(Code);
    Grid1.SetUsualRows(core::TariffCount);
    Label& heading = NewLabel("Label1(0)", "Tarifs des actes");
    heading.setProperty("role", "title");

    QFont bold = Label3.font();
    bold.setBold(true);
    Label3.setFont(bold);
    RateField.setAccessibleName("Tarif");
    RateField.setAlignment(Qt::AlignRight);
    RateField.setToolTip("En dinars entiers, 32 767 au plus");
    SSPanel3.setProperty("floating", true);
    SSPanel3.setAccessibleName("Modification d'un tarif");
    Inside(SSPanel3,
           Column{
               SSPanel2,
               Pairs{{&NewLabel("Label2(0)", "Code"), &Label3}, {&NewLabel("Label2(1)", "Tarif"), &RateField}},
               Row{Item::Stretch(), Image2[AcceptEntry], Image2[CancelEntry]},
           });

    SetContent(Column{
        Row{heading, Item::Stretch(), Image2[Modify], Image2[StoreAndQuit]},
        Item::Growing(Grid1),
    });
    SSPanel3.setParent(this);
    SSPanel3.hide();
}

} // namespace catalogue
