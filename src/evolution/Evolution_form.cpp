#include "evolution/Evolution.h"

#include "platform/forms/GridTotals.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace evolution {

void Evolution::BuildForm()
{
    constexpr int yearTwips = 900;
    setAccessibleName("Évolution");
    Label1.setBuddy(&Combo1);
    Combo1.setAccessibleName("Dernier mois");
    Combo1.setMaxVisibleItems(12);
    Combo1.setSizeAdjustPolicy(QComboBox::AdjustToContents);
    Combo1.setToolTip("Dernier mois (F4)");
    Text1.setAccessibleName("Année du dernier mois");
    Text1.setToolTip("Année\u00A0; Entrée pour l'afficher");
    Text1.setAlignment(Qt::AlignCenter);
    Text1.setFixedWidth(ScaledPixelsOf(yearTwips));
    Option1[Year].setText("12 mois");
    Option1[TwoYears].setText("24 mois");
    Dress(Image3[Previous], "previous", "Un mois plus tôt", Command::Previous);
    Dress(Image3[Next], "next", "Un mois plus tard", Command::Next);
    Dress(Image1[Print], "print", "Imprimer", Command::Print);
    Dress(Image1[Quit], "quit", "Quitter", Command::Leave);

    BuildPages();
    SetContent(Column{
        Row{Item::Growing(SSPanel1), Image1[Print], Image1[Quit]},
        Row{Label1, Combo1, Text1, Image3[Previous], Image3[Next], Item::Gap(2), Option1[Year], Option1[TwoYears],
            Item::Stretch()},
        Item::Growing(SSTab1),
    });
}

void Evolution::BuildPages()
{
    constexpr int usualRows = 8;
    for (Grid* grid : {&Grid1, &Grid2, &Grid3})
        grid->SetUsualRows(usualRows);
    Grid1.setAccessibleName("Chiffres des mois");
    Grid2.setAccessibleName("Chiffres des unités");
    Grid3.setAccessibleName("Mois de l'unité");
    const char* const totals[] = {"Recettes de tous les mois", "Charges de tous les mois", "Net de tous les mois",
                                  "Dépenses de tous les mois", "Net de l'année d'avant"};
    for (int column = Receipts; column <= NetYearBefore; ++column)
        Label3[column].setAccessibleName(QString::fromUtf8(totals[column - Receipts]));
    Label2.setAccessibleName("Mois montré");
    Label4.setAccessibleName("Unité ou mois montré");
    Label5.setAccessibleName("Total des unités");
    Dress(Image2, "back", "Toutes les unités (Échap)");
    Image2.SetCaption("Toutes les unités");

    AddPage(
        SSTab1, "Mois",
        Column{Item::Growing(Chart1, 3), Label2,
               Item::Growing(WithTotals(Grid1, {{Caption("LTotal", "Total"), Under(Grid1, Receipts, Label3[Receipts]),
                                                 Under(Grid1, Charges, Label3[Charges]), Under(Grid1, Net, Label3[Net]),
                                                 Under(Grid1, Expenses, Label3[Expenses]),
                                                 Under(Grid1, NetYearBefore, Label3[NetYearBefore])}}),
                             2)});
    AddPage(SSTab1, "Unités",
            Column{Row{Item::Growing(SSPanel2), Image2}, Item::Growing(Chart2, 2), Label4, Item::Growing(Grid2),
                   Item::Growing(Grid3), Label5});
}

} // namespace evolution
