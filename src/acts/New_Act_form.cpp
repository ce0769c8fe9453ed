#include "acts/New_Act.h"

#include "platform/forms/GridTotals.h"
#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

#include <QShortcut>

using namespace forms;

namespace acts {

void New_Act::NamePictures()
{
    Dress(Image1[DayBefore], "previous", "Jour précédent", Command::Previous);
    Dress(Image1[DayAfter], "next", "Jour suivant", Command::Next);
    Dress(Image1[LeaveSheet], "quit", "Quitter", {Command::Leave, Command::Accept});
    Dress(Image1[LeaveDisplay], "quit", "Quitter", {Command::Leave, Command::Accept});
    Dress(Image1[Toggle], "archive", "Archiver ou remettre l'acte choisi (Entrée)");
    Dress(Image1[PickDay], "calendar", "Choisir une date", Command::ChooseDate);
    Image1[Toggle].SetCaption("Acte");
    Image1[PickDay].SetCaption("Date");
    Dress(Image2, "refresh", "Actualiser la visibilité des actes");
    Image2.SetCaption("Actualiser");
    auto* toggle = new QShortcut(Qt::Key_Space, &Grid2);
    toggle->setContext(Qt::WidgetShortcut);
    On(*toggle, &QShortcut::activated, *this, &New_Act::Grid2_DblClick);
}

void New_Act::BuildForm()
{
    NamePictures();
    setAccessibleName("Actes du jour");
    Grid1.setAccessibleName("Actes par unité");
    Grid2.setAccessibleName("Actes du jour");
    Grid1.SetGroupHeading(Recent, Total, "Actes");
    Grid2.SetGroupHeading(IsRecent, IsArchived, "Statut");
    Grid2.SetNameColumn(Patient);
    Grid2.SetUsualRows(20);
    const char* const sums[] = {"Récents", "Archivés", "Total"};
    for (int sum = RecentSum; sum <= WholeSum; ++sum) {
        Label4[sum].setAccessibleName(QStringLiteral("%1, toutes les unités").arg(sums[sum - RecentSum]));
        LT[sum].setAccessibleName(QStringLiteral("%1, actes affichés").arg(sums[sum - RecentSum]));
    }
    Text1.setAccessibleName("Date");
    QFont bold = DayLabel.font();
    bold.setBold(true);
    DayLabel.setFont(bold);
    OptionLabel.setFont(bold);
    const char* shares[] = {"5 sur 5", "1 sur 2", "1 sur 3", "1 sur 4", "1 sur 5"};
    for (int option = 0; option < Option1.Size(); ++option)
        Option1[option].setText(shares[option]);
    Option1[OneInTwo].setChecked(true);
    SSOption2[FullDisplay].setText("Affichage intégral");
    SSOption2[LimitedDisplay].setText("Affichage limité");
    SSOption2[FullDisplay].setChecked(true);
    BuildSheetPage();
    BuildDisplayPage();
    SetContent(Column{Item::Growing(SSTab1)});
}

void New_Act::BuildSheetPage()
{
    AddPage(SSTab1, "Actes du jour",
            Column{
                Row{Image1[DayBefore], Image1[DayAfter], Item::Gap(), NewLabel("Label1(2)", "Journée du :"), DayLabel,
                    Item::Gap(), Image1[PickDay], Image1[Toggle], Item::Stretch(), Image1[LeaveSheet]},
                Item::Growing(Row{
                    WithTotals(Grid1,
                               {{Caption("LTotal1", "Total"), Under(Grid1, Recent, Label4[RecentSum]),
                                 Under(Grid1, Archived, Label4[ArchivedSum]), Under(Grid1, Total, Label4[WholeSum])}}),
                    Item::Growing(
                        WithTotals(Grid2, {{Caption("LTotal2", "Total"), Under(Grid2, Hour, LT[WholeSum]),
                                            Caption("LTotal3", "dont", Type), Under(Grid2, IsRecent, LT[RecentSum]),
                                            Under(Grid2, IsArchived, LT[ArchivedSum])}})),
                }),
            });
}

void New_Act::BuildDisplayPage()
{
    Inside(SSPanel1, Column{SSOption2[FullDisplay], SSOption2[LimitedDisplay]});
    AddPage(SSTab1, "Affichage",
            Column{
                Titled("Paramètres d'affichage",
                       Column{
                           Row{Option1[AllActs], Option1[OneInTwo], Option1[OneInThree], Option1[OneInFour],
                               Option1[OneInFive], Item::Stretch()},
                           Row{NewLabel("Label1(12)", "Visibles"), OptionLabel, Item::Stretch(), Image2},
                       }),
                SSPanel1,
                Item::Stretch(),
                Row{NewLabel("Label1(4)", "Date"), Text1, Item::Stretch(), Image1[LeaveDisplay]},
            });
}

} // namespace acts
