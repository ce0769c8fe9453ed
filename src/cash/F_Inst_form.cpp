#include "cash/F_Inst.h"

#include "platform/forms/GridTotals.h"
#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace cash {

F_Inst::F_Inst()
    : Form("F_Inst", "   Règlements en instance"), Grid3("Grid3", {{"N°", 600, Qt::AlignCenter},
                                                                   {"Nom", 1890},
                                                                   {"Prénom", 1890},
                                                                   {"Unité", 1780},
                                                                   {"Date", 1100, Qt::AlignCenter},
                                                                   {"Heure", 590, Qt::AlignCenter},
                                                                   {"R", 460, Qt::AlignCenter},
                                                                   {"Montant", 1100, Qt::AlignRight}})
{
    BuildForm();
    On(Grid3, &Grid::Click, *this, [this] { Grid3_Click(); });
    On(Grid3, &Grid::DblClick, *this, [this] { Grid3_DblClick(); });
    On(Grid3, &Grid::Entered, *this, [this] { Image1_Click(1); }); // the act that is highlighted
    for (int index = 0; index < Image1.Size(); ++index)
        On(Image1[index], &Picture::clicked, *this, [this, index] { Image1_Click(index); });
    for (int index = 2; index <= 5; ++index)
        On(Dates.Image2[index], &Picture::clicked, *this, [this, index] { Image2_Click(index); });
    for (int index = 0; index < SSPanel2.Image3.Size(); ++index)
        On(SSPanel2.Image3[index], &Picture::clicked, *this, [this, index] { Image3_Click(index); });
}

void F_Inst::BuildForm()
{
    struct {
        const char* icon;
        const char* action;
    } const pictures[] = {
        {"calendar", " Autre date "}, {"edit", " Corriger "}, {"print", " Imprimer "}, {"quit", " Quitter "}};
    int index = 0;
    for (const auto& [icon, action] : pictures) {
        Picture& picture = Image1[index++];
        picture.SetIcon(icon);
        Bulle.Serve(picture, [text = action] { return QString::fromUtf8(text); });
        KeepPlace(picture);
    }
    Grid3.setAccessibleName("Règlements en instance");
    Grid3.SetGroupHeading(4, 7, "Reçu");
    RCP.setAccessibleName("Total reçu");

    SetContent(Column{
        Row{Item::Growing(SSPanel1), Image1[0], Image1[1], Image1[2], Image1[3]},
        Item::Growing(Grid3),
        Row{Before(Grid3, 0, 5, "LTotal", "Total"), Under(Grid3, 6, 7, RCP), Item::Stretch()}.Spacing(0),
    });
    Dates.setParent(this);
    SSPanel2.setParent(this);
    SSPanel2.hide();
    Bulle.setParent(this);
}

} // namespace cash
