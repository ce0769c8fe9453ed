#include "planning/Planning.h"

#include "platform/forms/ColumnLabels.h"
#include "platform/forms/GridTotals.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace planning {

void Planning::BuildForm()
{
    setAccessibleName("Planning");
    DressPictures();
    BuildBoard();
    BuildChoices();
    BuildList();
    SetContent(Column{Item::Growing(SSPanel4)});
    for (Panel* panel : {&SSPanel3, &SSPanel5, &SSPanel1, &SSPanel6}) {
        panel->setProperty("floating", true);
        panel->setParent(this);
        panel->hide();
    }
    // Wide enough for the widest panel where the screen has room.
    constexpr int windowMargins = 32;
    SSPanel4.setMinimumWidth(qMin(SSPanel1.sizeHint().width(), RoomOnScreen().width() - windowMargins));
}

void Planning::DressPictures()
{
    Dress(Image2[DayBefore], "previous", "Jour précédent", Command::Previous);
    Dress(Image2[DayAfter], "next", "Jour suivant", Command::Next);
    Dress(Image1[ChooseDay], "calendar", "Choisir une journée", Command::ChooseDate);
    Dress(Image1[OpenList], "list", "Rendez-vous de l'unité choisie (Entrée)");
    Dress(Image1[ChooseMonth], "month", "Choisir l'unité et le mois du programme");
    Dress(Image1[Quit], "quit", "Quitter", Command::Leave);
    Dress(Image5[AcceptDay], "accept", "Valider", Command::Accept);
    Dress(Image5[CancelDay], "cancel", "Annuler");
    Dress(Image7[AcceptMonth], "accept", "Valider", Command::Accept);
    Dress(Image7[CancelMonth], "cancel", "Annuler");
    Dress(Image4[OpenPrint], "print", "Imprimer ...", Command::Print);
    Dress(Image4[CloseList], "back", "Retour au planning");
    Dress(Image4[Print], "print", "Imprimer", Command::Print);
    Dress(Image4[CancelPrint], "cancel", "Annuler");
}

void Planning::BuildBoard()
{
    Label& title = NewLabel("Label1(18)", "Planning");
    title.setProperty("role", "title");
    QFont bold = DayHeading.font();
    bold.setBold(true);
    DayHeading.setFont(bold);

    Grid1.setAccessibleName("Planning du jour par unité");
    Grid1.SetUsualRows(20);
    new ColumnLabels(Grid1, {"Label1(0)", "Label1(1)", "Label1(2)", "Label1(3)"});
    DayTotals[ProgrammedTotal].setAccessibleName("Total programmé");
    DayTotals[PerformedTotal].setAccessibleName("Total réalisé");
    DayTotals[DifferenceTotal].setAccessibleName("Différence totale");
    Grid3.setAccessibleName("Programme du mois");
    Grid3.SetUsualRows(31);
    Grid3.SetRowPadding(2); // a whole month fits on a small screen
    new ColumnLabels(Grid3, {"Label1(32)", "HH(0)", "HH(1)", "HH(2)", "HH(3)", "HH(4)", "HH(5)", "HH(6)", "HH(7)",
                             "HH(8)", "HH(9)"});

    Inside(SSPanel2, Column{Item::Growing(Grid3)});
    Inside(SSPanel4,
           Column{
               Row{title, Item::Stretch(), Image1[ChooseDay], Image1[OpenList], Image1[ChooseMonth], Image1[Quit]},
               Item::Growing(Row{
                   Item::Growing(
                       Column{
                           Row{DayHeading, Item::Stretch(), Image2[DayBefore], Image2[DayAfter]},
                           Item::Growing(WithTotals(Grid1, {{Caption("LTotal", "Total"),
                                                             Under(Grid1, Programmed, DayTotals[ProgrammedTotal]),
                                                             Under(Grid1, Performed, DayTotals[PerformedTotal]),
                                                             Under(Grid1, Difference, DayTotals[DifferenceTotal])}})),
                       },
                       2),
                   Item::Growing(SSPanel2, 3),
               }),
           });
}

void Planning::BuildChoices()
{
    Text5[0].setAccessibleName("Journée");
    Inside(SSPanel3, Column{
                         Row{Text5[0], Item::Stretch()},
                         Row{Item::Stretch(), Image5[AcceptDay], Image5[CancelDay]},
                     });
    Combo1[UnitChoice].setAccessibleName("Unité");
    Combo1[MonthOfYear].setAccessibleName("Mois");
    Combo1[MonthOfYear].setMaxVisibleItems(12);
    Text3.setAccessibleName("Année");
    Text3.setText("2008");
    Inside(SSPanel5, Column{
                         Pairs{{&NewLabel("Label2(0)", "Unité"), &Combo1[UnitChoice]},
                               {&NewLabel("Label2(1)", "Mois"), &Combo1[MonthOfYear]},
                               {&NewLabel("Label2(2)", "Année"), &Text3}},
                         Row{Item::Stretch(), Image7[AcceptMonth], Image7[CancelMonth]},
                     });
}

void Planning::BuildList()
{
    SSPanel1.setAccessibleName("Rendez-vous de l'unité");
    for (Label* line : {&UnitLine, &DayLine})
        line->setProperty("role", "caption");
    Grid2.setAccessibleName("Rendez-vous");
    Grid2.SetNameColumn(LastName);
    new ColumnLabels(Grid2,
                     {"Label1(11)", "Label1(10)", "Label1(15)", "Label1(12)", "Label1(16)", "Label1(14)", "Label1(8)"});
    Inside(SSPanel1, Column{
                         Row{UnitLine, Item::Growing(NewLabel("Label1(13)", "")), DayLine,
                             Item::Growing(NewLabel("Label1(50)", "")), Image4[OpenPrint], Image4[CloseList]},
                         Item::Growing(Grid2),
                     });
    SSOption1[CurrentUnit].setText("Unité actuelle");
    SSOption1[AllUnits].setText("Ensemble des Unités");
    SSOption1[CurrentUnit].setChecked(true);
    Inside(SSPanel6, Column{
                         SSOption1[CurrentUnit],
                         SSOption1[AllUnits],
                         Row{Item::Stretch(), Image4[Print], Image4[CancelPrint]},
                     });
}

} // namespace planning
