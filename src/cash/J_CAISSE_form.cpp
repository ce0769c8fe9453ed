#include "cash/J_CAISSE.h"

#include "core/globals.h"
#include "platform/forms/ColumnLabels.h"
#include "platform/forms/GridTotals.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace cash {

namespace {

/// A list with its total under the columns from `firstColumn` on.
Item ListWithTotal(Grid& grid, int firstColumn, FigureLabel& total)
{
    return Item::Growing(WithTotals(grid, {{Caption(total.objectName() + "-caption", "Total"),
                                            Under(grid, firstColumn, grid.Columns() - 1, total)}}));
}

} // namespace

void J_CAISSE::BuildForm()
{
    Dress(Image2[PrintSettled], "print", "Imprimer les actes réglés", Command::Print);
    Dress(Image2[PrintPending], "print", "Imprimer les instances", Command::Print);
    Dress(Image2[PrintExpenses], "print", "Imprimer les dépenses", Command::Print);
    Dress(Image2[PrintRecap], "print", "Imprimer le récapitulatif", Command::Print);
    Dress(Image2[Correct], "edit", "Corriger l'acte choisi", Command::Modify);
    Dress(Image1[OtherDate], "calendar", " Autre date ", Command::ChooseDate);
    Dress(Image1[Quit], "quit", " Quitter ", Command::Leave);
    Bulle.Attach(Image1[OtherDate], [] { return QString(core::SpeaksFrench() ? " Autre date " : "تـغـيير"); });
    Bulle.Attach(Image1[Quit], [] { return QString(core::SpeaksFrench() ? " Quitter " : "مـغادرة"); });
    Grid1.setAccessibleName("Récapitulatif par unité");
    Grid2.setAccessibleName("Actes réglés");
    Grid3.setAccessibleName("Actes en instance");
    Grid4.setAccessibleName("Dépenses");
    new ColumnLabels(Grid1, {"Label1(9)", "Label1(8)", "Label1(4)"});
    Grid2.SetGroupHeading(Code, Amount, "Reçu");
    Grid3.SetGroupHeading(Code, Amount, "Reçu");
    const char* const figures[] = {"Nombre d'actes",    "Solde de la veille", "Montant reçu",
                                   "Dépenses du jour",  "Nouveau solde",      "Total des actes réglés",
                                   "Total en instance", "Total des dépenses"};
    for (int figure = 0; figure < RCP.Size(); ++figure)
        RCP[figure].setAccessibleName(QString::fromUtf8(figures[figure]));

    SetContent(Column{
        Row{Item::Growing(SSPanel1), Image1[OtherDate], Image1[Quit]},
        Item::Growing(SSTab1),
    });
    BuildPages();
    Bulle.setParent(this);
    SSPanel2.setParent(this);
    SSPanel2.hide();
}

void J_CAISSE::BuildPages()
{
    RCP[NewBalance].setProperty("role", "balance");
    AddPage(
        SSTab1, "Récap",
        Column{Item::Growing(WithTotals(
                   Grid1,
                   {{Caption("LTotal", "Total"), Under(Grid1, Count, RCP[DayActs]),
                     Under(Grid1, Received, RCP[DayReceived])},
                    {Caption("Label1(6)", "Solde de la veille"), Under(Grid1, Count, Received, RCP[OpeningBalance])},
                    {Caption("Label1(7)", "Dépenses"), Under(Grid1, Count, Received, RCP[DaySpent])},
                    {Caption("Label1(10)", "Nouveau solde"), Under(Grid1, Count, Received, RCP[NewBalance])}})),
               Row{Item::Stretch(), Image2[PrintRecap]}});
    AddPage(SSTab1, "Actes Réglés",
            Column{ListWithTotal(Grid2, Code, RCP[SettledTotal]), Row{Item::Stretch(), Image2[PrintSettled]}});
    AddPage(SSTab1, "Instances",
            Column{ListWithTotal(Grid3, Code, RCP[PendingTotal]),
                   Row{Item::Stretch(), Image2[Correct], Image2[PrintPending]}});
    AddPage(SSTab1, "Dépenses",
            Column{ListWithTotal(Grid4, Spent, RCP[ExpensesTotal]), Row{Item::Stretch(), Image2[PrintExpenses]}});
}

} // namespace cash
