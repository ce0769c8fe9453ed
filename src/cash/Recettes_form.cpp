#include "cash/Recettes.h"

#include "data/PaymentCode.h"
#include "platform/forms/GridTotals.h"
#include "platform/forms/Guard.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace cash {

void Recettes::BuildForm()
{
    Dress(Image1[OtherDates], "calendar", " Autres dates ", Command::ChooseDate);
    Dress(Image1[Quit], "quit", " Quitter ", Command::Leave);
    Dress(Image3[PrintRecap], "print", "Imprimer le récapitulatif par unité", Command::Print);
    Dress(Image3[PrintDetail], "list", "Imprimer le détail des actes");
    Dress(Image3[PrintCodes], "print", "Imprimer le récapitulatif par code", Command::Print);
    for (const int action : {OtherDates, Quit}) {
        Bulle.Attach(Image1[action]);
        RetainSizeWhenHidden(Image1[action]);
    }
    const char* const legends[] = {"Récap", "Détail", "Récap"};
    for (int button = PrintRecap; button <= PrintCodes; ++button) {
        Label& legend = Label5[button];
        legend.setText(QString::fromUtf8(legends[button]));
        RetainSizeWhenHidden(legend);
        legend.hide();
        On(Image3[button], &Picture::MouseOver, legend, &Label::show);
        On(Image3[button], &Picture::MouseLeft, legend, &Label::hide);
    }
    SetContent(Column{
        Row{SSPanel2, Item::Growing(SSPanel1), Image1[OtherDates], Image1[Quit]},
        Item::Growing(SSTab1),
    });
    BuildPages();
    BuildScopePanel();
    Dates.setParent(this);
    Bulle.setParent(this);
}

void Recettes::BuildPages()
{
    for (Grid* grid : {&Grid1, &Grid2, &Grid3})
        grid->SetUsualRows(20);
    Grid1.setAccessibleName("Récapitulatif par unité");
    Grid1.SetGroupHeading(Received, Theoretical, "Montant");
    Grid3.setAccessibleName("Nombre d'actes par code et par règlement");
    Grid3.SetNameColumn(Code);
    Grid2.setAccessibleName("Détail des actes");
    Grid2.SetGroupHeading(ReceptionDate, Patient, "Reçu");
    Grid2.SetGroupHeading(ServiceDate, ServiceHour, "Acte");
    Grid2.SetGroupHeading(Amount, Value, "Montant");
    Grid2.SetNameColumn(Patient);
    ActsTotal.setAccessibleName("Nombre d'actes");
    ReceivedTotal.setAccessibleName("Total perçu");
    TheoreticalTotal.setAccessibleName("Total théorique");
    DetailReceivedTotal.setAccessibleName("Total perçu des actes listés");
    DetailTheoreticalTotal.setAccessibleName("Total théorique des actes listés");
    const QStringList codes = data::PaymentCodes();
    for (int total = 0; total < LT.Size(); ++total)
        LT[total].setAccessibleName(total < LT.LastIndex() ? "Total " + codes[total].trimmed() : "Total des actes");

    AddPage(SSTab1, "Récap 1",
            Column{
                Item::Growing(WithTotals(
                    Grid1, {{Caption("LTotal1", "Total"), Under(Grid1, Count, ActsTotal),
                             Under(Grid1, Received, ReceivedTotal), Under(Grid1, Theoretical, TheoreticalTotal)}})),
                Row{Item::Stretch(), Label5[PrintDetail], Image3[PrintDetail], Item::Gap(), Label5[PrintRecap],
                    Image3[PrintRecap]},
            });
    const auto count = [this](int state) { return Under(Grid3, FirstCount + state, LT[state]); };
    AddPage(SSTab1, "Récap 2",
            Column{
                Item::Growing(WithTotals(Grid3, {{Caption("LTotal2", "Total"), count(0), count(1), count(2), count(3),
                                                  count(4), count(5), count(6)}})),
                Row{Item::Stretch(), Label5[PrintCodes], Image3[PrintCodes]},
            });
    AddPage(SSTab1, "Détail",
            WithTotals(Grid2, {{Caption("LTotal3", "Total"), Under(Grid2, Amount, DetailReceivedTotal),
                                Under(Grid2, Value, DetailTheoreticalTotal)}}));
}

void Recettes::BuildScopePanel()
{
    SSPanel3.setProperty("floating", true);
    SSOption1[AllUnits].setText("Ensemble des unités");
    SSOption1[CurrentUnit].setText("unité actuelle");
    SSOption1[CurrentUnit].setAccessibleDescription("Unité actuelle");
    SSOption1[Nothing].setText("Rien");
    Dress(Image4[Cancel], "cancel", "Annuler");
    Dress(Image4[Accept], "accept", "Imprimer", {Command::Accept, Command::Print});
    Inside(SSPanel3, Column{
                         SSOption1[AllUnits],
                         SSOption1[CurrentUnit],
                         SSOption1[Nothing],
                         Row{Item::Stretch(), Image4[Accept], Image4[Cancel]},
                     });
    SSPanel3.setMinimumWidth(280);
    SSPanel3.setParent(this);
    SSPanel3.hide();
}

} // namespace cash
