#include "cash/J_CAISSE.h"

#include "core/globals.h"
#include "platform/forms/GridTotals.h"
#include "platform/forms/Layout.h"

#include <QHeaderView>

using namespace forms;

namespace cash {

namespace {

Label& Heading(const char* name, const char* text, int widthTwips, Qt::Alignment alignment)
{
    Label& heading = NewLabel(QLatin1String(name), QString::fromUtf8(text));
    heading.setProperty("heading", true);
    heading.setAlignment(alignment | Qt::AlignVCenter);
    heading.setFixedWidth(ScaledPixelsOf(widthTwips));
    return heading;
}

/// A list's total under its columns from `firstColumn` on.
Layout TotalLine(Grid& grid, int firstColumn, FigureLabel& total)
{
    return Totals(
        grid, {Caption(total.objectName() + "-caption", "Total"), Under(grid, firstColumn, grid.Columns() - 1, total)});
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
    Grid1.horizontalHeader()->hide();
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
    constexpr int balanceWidth = 168;
    RCP[NewBalance].setProperty("role", "balance");
    for (const int figure : {DaySpent, NewBalance})
        RCP[figure].setMinimumWidth(balanceWidth);
    AddPage(SSTab1, "Récap",
            Row{
                Column{
                    Row{NewLabel("Label1(6)", "Solde de la veille"), Item::Stretch(), RCP[OpeningBalance]},
                    Item::Growing(Column{
                        Row{Heading("Label1(9)", "Unité", 1780, Qt::AlignLeft),
                            Heading("Label1(8)", "Nbre", 840, Qt::AlignCenter),
                            Heading("Label1(4)", "Montant", 1280, Qt::AlignRight), Item::Stretch()}
                            .Spacing(0),
                        Item::Growing(Grid1),
                    }
                                      .Spacing(0)),
                    Totals(Grid1, {Caption("LTotal", "Total"), Under(Grid1, Count, RCP[DayActs]),
                                   Under(Grid1, Received, RCP[DayReceived])}),
                },
                Item::Gap(3),
                Column{
                    Pairs{{&NewLabel("Label1(7)", "Dépenses"), &RCP[DaySpent]},
                          {&NewLabel("Label1(10)", "Nouveau solde"), &RCP[NewBalance]}},
                    Item::Stretch(),
                    Row{Item::Stretch(), Image2[PrintRecap]},
                },
                Item::Stretch(),
            });
    AddPage(SSTab1, "Actes Réglés",
            Column{Item::Growing(Grid2), TotalLine(Grid2, Code, RCP[SettledTotal]),
                   Row{Image2[PrintSettled], Item::Stretch()}});
    AddPage(SSTab1, "Instances",
            Column{Item::Growing(Grid3), TotalLine(Grid3, Code, RCP[PendingTotal]),
                   Row{Image2[Correct], Image2[PrintPending], Item::Stretch()}});
    AddPage(SSTab1, "Dépenses",
            Column{Item::Growing(Grid4), TotalLine(Grid4, Spent, RCP[ExpensesTotal]),
                   Row{Image2[PrintExpenses], Item::Stretch()}});
}

} // namespace cash
