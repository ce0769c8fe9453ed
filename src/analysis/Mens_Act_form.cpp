#include "analysis/Mens_Act.h"

#include "platform/forms/GridTotals.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace analysis {

void Mens_Act::BuildForm()
{
    constexpr int yearTwips = 900;
    setAccessibleName("Situation mensuelle");
    Label1[Month].setText("Mois");
    Label1[Year].setText("Année");
    Label1[Month].setBuddy(&Combo1);
    Label1[Year].setBuddy(&Text1);
    Combo1.setAccessibleName("Mois");
    Combo1.setMaxVisibleItems(12);
    Combo1.setSizeAdjustPolicy(QComboBox::AdjustToContents);
    Text1.setAccessibleName("Année");
    Text1.setAlignment(Qt::AlignCenter);
    Text1.setFixedWidth(ScaledPixelsOf(yearTwips));
    Dress(Image2[Unlock], "edit", "Choisir le mois et l'année", Command::ChooseDate);
    Dress(Image2[Apply], "accept", "Afficher ce mois", {Command::ChooseDate, Command::Accept});
    Dress(Image3[Previous], "previous", "Mois précédent", Command::Previous);
    Dress(Image3[Next], "next", "Mois suivant", Command::Next);
    Dress(Image4, "evolution", "Évolution des mois");
    Image4.SetCaption("Évolution");
    Dress(Image1, "quit", "Quitter", Command::Leave);
    RetainSizeWhenHidden(Image3[Previous]);
    RetainSizeWhenHidden(Image3[Next]);

    Grid1.setAccessibleName("Actes du mois par unité");
    Grid1.SetGroupHeading(Recent, All, "Actes");
    const char* const totals[] = {"Récents, toutes les unités", "Archivés, toutes les unités",
                                  "Total, toutes les unités"};
    for (int column = Recent; column <= All; ++column)
        Label4[column].setAccessibleName(QString::fromUtf8(totals[column - Recent]));

    SetContent(Column{
        Row{Item::Growing(SSPanel1), Image4, Image1},
        Row{Label1[Month], Combo1, Item::Gap(), Label1[Year], Text1, Image2[Unlock], Image2[Apply], Item::Gap(),
            Image3[Previous], Image3[Next], Item::Stretch()},
        Item::Growing(WithTotals(Grid1, {{Caption("LTotal", "Total"), Under(Grid1, Recent, Label4[Recent]),
                                          Under(Grid1, Archived, Label4[Archived]), Under(Grid1, All, Label4[All])}})),
    });
}

} // namespace analysis
