#include "analysis/Result.h"

#include "core/NetResult.h"
#include "core/globals.h"
#include "core/printing.h"
#include "core/screens.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Guard.h"

#include <QStyle>

using namespace basic;
using namespace core;
using namespace forms;

namespace analysis {

namespace {

QList<Grid::Column> ResultColumns()
{
    constexpr int unitTwips = 1780;
    constexpr int actsTwips = 840;
    constexpr int amountTwips = 1150;
    return {{"Unité", unitTwips}, {"Actes", actsTwips, Qt::AlignCenter}, {"Montant", amountTwips, Qt::AlignRight}};
}

QString Title(const PeriodChooser::Period& period)
{
    if (SpeaksFrench())
        return "Resultat de l'activité du  " + period.first + (period.isDay ? QString() : " au " + period.last);
    if (period.isDay)
        return " نـتـيـجـة  الـنـشاط  الـمـسـجلة  لـيـوم " + DateToQueryText(period.first);
    return " نـتـيجة الـنشاط مـن " + DateToQueryText(period.first) + " إلى " + DateToQueryText(period.last);
}

QString ChargesTitle(const PeriodChooser::Period& period)
{
    if (period.isDay)
        return SpeaksFrench() ? "Charges pour une journée" : "تـكالـيف  يـوم  واحـد";
    const QString days = QString::number(period.Days());
    return SpeaksFrench() ? "Charges pour " + days + " jours" : " تـكالـيف " + days + "  يــومـا ";
}

} // namespace

Result::Result() : Form("Result", "Résultat"), Grid1("Grid1", ResultColumns())
{
    BuildForm();
    for (int field = PeriodChooser::Day; field <= PeriodChooser::Last; ++field)
        Dates.Text1[field].SelectedOnFocus = DateLength;
    OnEach(Image1, &Picture::clicked, *this, &Result::Image1_Click);
    On(Image3, &Picture::clicked, *this, OpenEvolution);
    OnEach(Dates.Image2, &Picture::clicked, *this, &Result::Image2_Click);
    OnEach(Dates.Text1, &DateField::DateRefused, *this, &Result::ReturnFocus);
}

void Result::Form_Load()
{
    setWindowTitle(" ");
    CenterForm(*this);
    DayCharge = ReadDayCharge();
    Dates.SetToday();
    SSPanel1.SetCaption("");
    ApplyArabicCaptions();
    ChooseDates();
}

void Result::Image1_Click(int index)
{
    switch (index) {
    case OtherDate:
        return ChooseDates();
    case Print:
        return PrintResult();
    default:
        Unload();
    }
}

void Result::Image2_Click(int index)
{
    if (PeriodChooser::IsAccept(index))
        ShowChosenDates(index);
    else
        Unload();
}

/// Returns the focus to the field whose invalid date was cleared, unless its page is hidden.
void Result::ReturnFocus(int field)
{
    if (Dates.Text1[field].isVisible())
        Dates.Text1[field].setFocus();
}

void Result::ChooseDates()
{
    ShowPictures(false);
    Dates.ShowOver(Grid1);
}

void Result::ShowChosenDates(int acceptPicture)
{
    const auto period = Dates.Read(acceptPicture);
    if (!period)
        return;
    DateFromUS = period->FirstUS();
    DateToUS = period->LastUS();
    SSPanel1.SetCaption(Title(*period)); // also of a period that is refused next
    const Int16 days = period->Days();
    if (!Dates.IsInOrder(*period))
        return;
    ShowCharges(days * DayCharge, ChargesTitle(*period));
    ShowResult();
}

void Result::ShowPeriod(const QString& first, const QString& last)
{
    Image3.hide();
    Dates.SSTab2.setCurrentIndex(PeriodChooser::PeriodPage);
    Dates.Text1[PeriodChooser::First].setText(first);
    Dates.Text1[PeriodChooser::Last].setText(last);
    ShowChosenDates(PeriodChooser::AcceptPeriod);
}

void Result::ShowCharges(double dinars, const QString& caption)
{
    Charges.setText(ShownIfAny(dinars));
    ChargesCaption.setText(caption);
}

void Result::ShowResult()
{
    ComputeResult();
    Dates.hide();
    ShowPictures(true);
    Grid1.setFocus();
}

void Result::ShowPictures(bool shown)
{
    for (int action = OtherDate; action <= Quit; ++action)
        Image1[action].setVisible(shown);
}

void Result::ComputeResult()
{
    Services.Clear();
    for (FigureLabel* figure : {&Net, &AmountSum, &ActsSum})
        figure->setText("");
    TotalActs = 0;
    TotalAmount = 0;
    const dao::ReadTransaction oneState(TheDatabase);
    QueryText = "Select * from Presta order by ordre";
    UnitRecords = TheDatabase.OpenRecordset(QueryText);
    const Hourglass pointer;
    for (; !UnitRecords.IsEOF(); UnitRecords.MoveNext()) {
        CountRecords = SumActs(DateFromUS, DateToUS, UnitRecords["num"].Key());
        TotalActs += CountRecords["S1"].Long();
        if (!CountRecords["S2"].IsNull())
            TotalAmount += CountRecords["S2"].Double();
        AppendService(Services, UnitRecords, CountRecords);
    }
    if (TotalActs >= 1)
        ActsSum.setText(PlainText(TotalActs));
    AmountSum.setText(ShownIfAny(TotalAmount));
    ShowNet();
}

void Result::ShowNet()
{
    const double net = NetOf(AmountSum.text(), Charges.text());
    if (net != 0)
        Net.setText(ShownAmount(net));
    Net.setProperty("loss", net < 0);
    Net.style()->unpolish(&Net);
    Net.style()->polish(&Net);
}

void Result::PrintResult()
{
    RunPrintStep(Report1, {.reportName = "ZEP_Rstt.RPT",
                           .headings = {{"ch5", SSPanel1.Caption()},
                                        {"ch6", ChargesCaption.text()},
                                        {"ch7", Charges.text()},
                                        {"ch8", Net.text()}},
                           .scratchTable = "Prov",
                           .fillRows = [this](ScratchRows& rows) { PrintServices(rows, Grid1); },
                           .proposedName = SSPanel1.Caption().simplified()});
}

} // namespace analysis
