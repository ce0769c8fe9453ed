#include "analysis/Chrges.h"

#include "platform/forms/Layout.h"

using namespace forms;

namespace analysis {

void Chrges::BuildForm()
{
    constexpr int amountTwips = 2400;
    setAccessibleName("Charges courantes mensuelles");
    for (int charge = Salaries; charge <= DailyTotal; ++charge)
        Text1[charge].setFixedWidth(ScaledPixelsOf(amountTwips));
    for (const int total : {MonthlyTotal, DailyTotal}) {
        Text1[total].setReadOnly(true);
        Text1[total].setFocusPolicy(Qt::ClickFocus); // can be copied but is skipped by Tab
    }
    Dress(Image1[Store], "save", "Enregistrer et quitter", {Command::Accept, Command::Leave});
    Dress(Image1[Leave], "quit", "Quitter sans enregistrer");

    const auto line = [this](int charge, const char* caption) {
        return std::pair<QWidget*, QWidget*>(
            &NewLabel(QStringLiteral("Label1(%1)").arg(charge), QString::fromUtf8(caption)), &Text1[charge]);
    };
    SetContent(Column{
        SSPanel1,
        Titled("Charges du mois",
               Pairs{line(Salaries, " Salaires"), line(Rent, " Loyer"), line(Depreciation, " Amortissement"),
                     line(Utilities, " Gaz / Electricité / Eau"), line(Telephone, " Téléphone"),
                     line(Taxes, " Impôts et Taxes"), line(Others, " Autres Charges")}),
        Titled("Totaux", Pairs{line(MonthlyTotal, " Total mensuel"), line(DailyTotal, " Total par Jour")}),
        Item::Stretch(),
        Row{Item::Stretch(), Image1[Store], Image1[Leave]},
    });
}

} // namespace analysis
