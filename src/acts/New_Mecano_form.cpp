#include "acts/New_Mecano.h"

#include "platform/forms/Layout.h"

using namespace forms;

namespace acts {

namespace {

constexpr int DateWidth = 112;

/// A displayed value: bold, and wide enough for any value it may have.
void ShowAsValue(Label& label)
{
    QFont font = label.font();
    font.setBold(true);
    label.setFont(font);
    label.setMinimumWidth(DateWidth);
}

} // namespace

void New_Mecano::BuildForm()
{
    setAccessibleName("Actualisation");
    Dress(Image1[Run], "accept", "Lancer l'actualisation", Command::Accept);
    Dress(Image1[Cancel], "cancel", "Annuler", Command::Leave);
    Dress(Image1[CloseReminder], "back", "Fermer le rappel des dates");
    Dress(Image1[CloseEstimate], "back", "Fermer la durée approximative");
    Dress(Image2[FirstDay], "calendar", "Choisir le début sur le calendrier", Command::ChooseDate);
    Dress(Image2[LastDay], "calendar", "Choisir la fin sur le calendrier", Command::ChooseDate);
    Text1[FirstDay].setAccessibleName("Début de la période");
    Text1[LastDay].setAccessibleName("Fin de la période");
    for (const int bound : {FirstDay, LastDay}) {
        Text1[bound].setFixedWidth(DateWidth);
        Text1[bound].installEventFilter(this);
    }
    for (Label* value : {&VisibleShare, &FirstActDate, &LastActDate, &EstimatedDays, &EstimatedDuration})
        ShowAsValue(*value);

    BuildPanels();
    SetContent(Column{Item::Growing(SSPanel1), Item::Growing(SSPanel2), Item::Growing(SSPanel3)});
    SSPanel2.hide();
    SSPanel3.hide();
}

void New_Mecano::BuildPanels()
{
    SSPanel1.setAccessibleName("Actualisation");
    Inside(SSPanel1,
           Column{
               Row{NewLabel("Label4(19)", "Prestations visibles :"), VisibleShare, Item::Stretch()},
               Item::Gap(),
               Row{NewLabel("Label4(18)", "Pour  la  période  du :"), Text1[FirstDay], Image2[FirstDay], Item::Gap(2),
                   NewLabel("Label4(21)", "Au :"), Text1[LastDay], Image2[LastDay], Item::Stretch()},
               Item::Gap(),
               Item::Stretch(),
               Row{SSCommand1, SSCommand2, Item::Stretch(), Item::Gap(4), Image1[Run], Image1[Cancel]},
           });
    Inside(SSPanel2, Column{
                         Item::Stretch(),
                         Pairs{{&NewLabel("Label4(14)", "1 er acte"), &FirstActDate},
                               {&NewLabel("Label4(15)", "Dernier  acte"), &LastActDate}},
                         Item::Stretch(),
                         Row{Item::Stretch(), Image1[CloseReminder]},
                     });
    Inside(SSPanel3, Column{
                         Item::Stretch(),
                         Pairs{{&NewLabel("Label4(24)", "Nombre  de  jours"), &EstimatedDays},
                               {&NewLabel("Label4(25)", "Durée  approximative"), &EstimatedDuration}},
                         Item::Stretch(),
                         Row{Item::Stretch(), Image1[CloseEstimate]},
                     });
}

} // namespace acts
