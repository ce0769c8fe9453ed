#include "acts/New_Mecano.h"

#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace acts {

namespace {

constexpr int DateWidth = 112;

/// A value that the screen tells, bold and wide enough for what it may become.
void ShowAsValue(Label& label)
{
    QFont font = label.font();
    font.setBold(true);
    label.setFont(font);
    label.setMinimumWidth(DateWidth);
}

} // namespace

New_Mecano::New_Mecano() : Form("New_Mecano")
{
    BuildForm();
    for (int index = 0; index < Image1.Size(); ++index)
        On(Image1[index], &Picture::clicked, *this, [this, index] { Image1_Click(index); });
    for (int index = 1; index <= Image2.Size(); ++index)
        On(Image2[index], &Picture::clicked, *this, [this, index] { Image2_Click(index); });
    On(SSCommand1, &Button::clicked, *this, [this] { SSCommand1_Click(); });
    On(SSCommand2, &Button::clicked, *this, [this] { SSCommand2_Click(); });
    On(Text1[1], &DateField::Entered, *this, [this] { Text1[2].setFocus(); });
    On(Text1[2], &DateField::Entered, *this, [this] { Image1_Click(0); });
}

void New_Mecano::BuildForm()
{
    struct {
        int index;
        const char* icon;
        const char* action;
    } const pictures[] = {
        {0, "accept", "Lancer l'actualisation"},
        {1, "cancel", "Annuler"},
        {2, "back", "Fermer le rappel des dates"},
        {3, "back", "Fermer la durée approximative"},
    };
    for (const auto& picture : pictures) {
        Image1[picture.index].SetIcon(picture.icon);
        Image1[picture.index].SetAction(QString::fromUtf8(picture.action));
    }
    Text1[1].setAccessibleName("Début de la période");
    Text1[2].setAccessibleName("Fin de la période");
    Image2[1].SetAction("Choisir le début sur le calendrier");
    Image2[2].SetAction("Choisir la fin sur le calendrier");
    for (int field = 1; field <= Text1.Size(); ++field) {
        Image2[field].SetIcon("calendar");
        Text1[field].setFixedWidth(DateWidth);
        Text1[field].installEventFilter(this);
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
    Inside(SSPanel1, Column{
                         Row{NewLabel("Label4(19)", "Prestations visibles :"), VisibleShare, Item::Stretch()},
                         Item::Gap(),
                         Row{NewLabel("Label4(18)", "Pour  la  période  du :"), Text1[1], Image2[1], Item::Gap(2),
                             NewLabel("Label4(21)", "Au :"), Text1[2], Image2[2], Item::Stretch()},
                         Item::Gap(),
                         Item::Stretch(),
                         Row{SSCommand1, SSCommand2, Item::Stretch(), Item::Gap(4), Image1[0], Image1[1]},
                     });
    Inside(SSPanel2, Column{
                         Item::Stretch(),
                         Pairs{{&NewLabel("Label4(14)", "1 er acte"), &FirstActDate},
                               {&NewLabel("Label4(15)", "Dernier  acte"), &LastActDate}},
                         Item::Stretch(),
                         Row{Item::Stretch(), Image1[2]},
                     });
    Inside(SSPanel3, Column{
                         Item::Stretch(),
                         Pairs{{&NewLabel("Label4(24)", "Nombre  de  jours"), &EstimatedDays},
                               {&NewLabel("Label4(25)", "Durée  approximative"), &EstimatedDuration}},
                         Item::Stretch(),
                         Row{Item::Stretch(), Image1[3]},
                     });
}

} // namespace acts
