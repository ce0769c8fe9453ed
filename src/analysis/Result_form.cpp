#include "analysis/Result.h"

#include "core/globals.h"
#include "platform/forms/GridTotals.h"
#include "platform/forms/Layout.h"

using namespace forms;

namespace analysis {

void Result::BuildForm()
{
    constexpr int titleTwips = 6300; // title of a period
    setAccessibleName("Résultat");
    Dress(Image1[OtherDate], "calendar", " Autre date ", Command::ChooseDate);
    Dress(Image1[Print], "print", " Imprimer ", Command::Print);
    Dress(Image1[Quit], "quit", " Quitter ", Command::Leave);
    const char* const french[] = {" Autre date ", " Imprimer ", " Quitter "};
    const char* const arabic[] = {"تغيير الـمدة", "طـباعـة", "مـغادرة"};
    for (int action = OtherDate; action <= Quit; ++action) {
        Bulle.Attach(Image1[action], [french = french[action], arabic = arabic[action]] {
            return QString::fromUtf8(core::SpeaksFrench() ? french : arabic);
        });
        RetainSizeWhenHidden(Image1[action]);
    }
    Dress(Image3, "evolution", "Évolution des mois");
    Image3.SetCaption("Évolution");
    for (const int leave : {core::PeriodChooser::CancelDay, core::PeriodChooser::CancelPeriod})
        Dress(Dates.Image2[leave], "quit", "Quitter", Command::Leave);

    Grid1.setAccessibleName("Résultat par unité");
    ActsSum.setAccessibleName("Nombre d'actes");
    AmountSum.setAccessibleName("Montant");
    Charges.setAccessibleName("Charges");
    Net.setAccessibleName("Résultat net");
    Net.setProperty("role", "balance");
    SSPanel1.setMinimumWidth(ScaledPixelsOf(titleTwips));

    // Right-align captions with their figures, whatever the text direction.
    for (Label* caption : {&ChargesCaption, &NetCaption})
        caption->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);

    SetContent(Column{
        Row{Item::Growing(SSPanel1), Image3, Image1[OtherDate], Image1[Print], Image1[Quit]},
        Item::Growing(WithTotals(
            Grid1, {{Caption("LTotal", "Total"), Under(Grid1, Acts, ActsSum), Under(Grid1, Amount, AmountSum)},
                    {{&ChargesCaption, Unit, Unit}, Under(Grid1, Acts, Amount, Charges)},
                    {{&NetCaption, Unit, Unit}, Under(Grid1, Acts, Amount, Net)}})),
    });
    Dates.setParent(this);
    Bulle.setParent(this);
}

/// The captions of the alternative language.
void Result::ApplyArabicCaptions()
{
    if (core::SpeaksFrench())
        return;
    ActsSum.setText(" الـبضاعـة"); // until there is a result
    ChargesCaption.setText("الــتــكـالــيـف");
    NetCaption.setText("الـنـاتـج  الـصـافـي");
    Dates.DayLabel.setText("الـتاريـخ");
    Dates.FirstLabel.setText("مـن");
    Dates.LastLabel.setText("إلـى");
    Dates.SSTab2.setTabText(core::PeriodChooser::DayPage, "في يـوم");
    Dates.SSTab2.setTabText(core::PeriodChooser::PeriodPage, "في مـدة");
}

} // namespace analysis
