#include "cash/F_Inst.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/printing.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace cash {

void F_Inst::Form_Load()
{
    CenterForm(*this);
    setMaximumWidth(width()); // the columns of the list have their widths
    FillPayLists(List_R, List_HH, &SSPanel2.Code);
    PatientLookup = TheDatabase.OpenRecordset("select * from Patients order by num");
    ServiceLookup = TheDatabase.OpenRecordset("select * from Presta order by num");
    Dates.SetToday();
    ChooseDates();
}

void F_Inst::Image1_Click(int index)
{
    switch (index) {
    case 0:
        return ChooseDates();
    case 1:
        return Correct();
    case 2:
        return PrintPendingList();
    default:
        Unload();
    }
}

void F_Inst::Image2_Click(int index)
{
    switch (index) {
    case 2:
        return ChooseDay();
    case 4:
        return ChoosePeriod();
    default:
        Browse();
    }
}

void F_Inst::Image3_Click(int index)
{
    if (index == 0) {
        SaveCorrection();
        MsgBox("Correction enregistrée", Icon::Information, "ZEP Lumo");
    }
    Browse();
}

void F_Inst::EscapePressed()
{
    if (SSPanel2.isVisibleTo(this))
        Image3_Click(1);
    else if (Dates.isVisibleTo(this))
        Image2_Click(3);
}

void F_Inst::Grid3_Click()
{
    PendingRow = Grid3.Row();
    Grid3.SelectRow(PendingRow);
}

void F_Inst::Grid3_DblClick()
{
    Grid3_Click();
    Image1_Click(1);
}

void F_Inst::ChooseDates()
{
    ShowPictures(false);
    Dates.ShowOver(Grid3);
}

void F_Inst::ChooseDay()
{
    const auto day = Dates.ReadDay();
    if (!day)
        return;
    FromDateUS = ToDateUS = QueryDate(*day);
    SSPanel1.SetCaption("Journée du " + DayCaption(*day).trimmed());
    FillPendingList();
    Browse();
}

void F_Inst::ChoosePeriod()
{
    const auto period = Dates.ReadPeriod();
    if (!period)
        return;
    FromDateUS = QueryDate(period->first);
    ToDateUS = QueryDate(period->last);
    // The heading tells the period that was asked for, also when it is refused next.
    SSPanel1.SetCaption("Période du  " + DayCaption(period->first).trimmed() + " au " +
                        DayCaption(period->last).trimmed());
    if (!PeriodChooser::IsInOrder(*period))
        return;
    FillPendingList();
    Browse();
}

void F_Inst::Correct()
{
    if (List3.isEmpty())
        return;
    LoadCorrection();
    Dates.hide();
    ShowPictures(false);
    SSPanel2.ShowOver(Grid3);
}

void F_Inst::Browse()
{
    Dates.hide();
    SSPanel2.hide();
    ShowPictures(true);
    Grid3.setEnabled(true);
    Grid3.setFocus();
}

void F_Inst::ShowPictures(bool shown)
{
    for (int picture = 0; picture <= 2; ++picture)
        Image1[picture].setVisible(shown);
}

void F_Inst::FillPendingList()
{
    ClearList(Grid3, RCP, List3);
    QueryText = "Select * from Actes where date >=#" + FromDateUS + "# and date <=#" + ToDateUS + "#" +
                " and Flag_R < 2 order by num";
    PendingActs = TheDatabase.OpenRecordset(QueryText);
    if (PendingActs.RecordCount() == 0)
        return;

    const Hourglass pointer;
    ListRow = 0;
    RunningAmount = 0;
    NamesOfActs names(PatientLookup, ServiceLookup, NullName::AsNothing);
    for (; !PendingActs.IsEOF(); PendingActs.MoveNext())
        ListAct(names);
    if (RunningAmount != 0)
        RCP.setText(Format(RunningAmount, AmountMask));
    Grid3.setEnabled(true);
    Grid3.SetRow(0);
    Grid3_Click();
}

void F_Inst::ListAct(NamesOfActs& names)
{
    const int row = TakeRow(Grid3, ListRow);
    Grid3.SetText(row, 0, PlainText(ListRow));
    names.Show(Grid3, row, PendingActs);
    Grid3.SetText(row, 4, TextOrNothing(PendingActs["date_Presta"]));
    Grid3.SetText(row, 5, TextOrNothing(PendingActs["Heure"]));
    Grid3.SetText(row, 6, ListLine(List_R, PendingActs["flag_R"].Long()));
    if (!PendingActs["montant"].IsNull()) {
        const double amount = PendingActs["montant"].Double();
        if (amount != 0)
            Grid3.SetText(row, 7, PlainText(amount) + " ");
        RunningAmount += amount;
    }
    List3 << PendingActs["num"].Key();
}

void F_Inst::LoadCorrection()
{
    Grid3.SelectRow(PendingRow); // where a totalling has left another row current
    CorrectedRow = PendingRow;
    SSPanel2.LoadAct(Grid3, CorrectedRow, PendingActs, List3[CorrectedRow]);
}

void F_Inst::SaveCorrection()
{
    SSPanel2.SaveAct(PendingActs);
    Grid3.SetText(CorrectedRow, 6, ListLine(List_R, SSPanel2.Code.currentIndex()));
    Grid3.SetText(CorrectedRow, 7, SSPanel2.Amount.text().trimmed() + " ");
    ShowPlainTotal();
}

void F_Inst::ShowPlainTotal()
{
    RCP.setText("");
    RunningAmount = 0;
    for (int row = 0; row < Grid3.Rows(); ++row)
        RunningAmount += Val(Grid3.Text(row, 7));
    if (RunningAmount != 0)
        RCP.setText(PlainText(RunningAmount));
    // The totalling walks the grid down to its last row; the act in hand stays PendingRow's.
    Grid3.SetRow(Grid3.Rows() - 1);
}

void F_Inst::PrintPendingList()
{
    RunPrintStep(
        Report1,
        {.reportName = "ZEP_DTAL.RPT",
         .headings = {{"ch4", "Règlements en instance"}, {"ch5", SSPanel1.Caption()}, {"ch6", ""}, {"ch7", ""}},
         .scratchTable = "Prov",
         .fillRows = KeyRows(List3),
         .proposedName = "Règlements en instance " + SSPanel1.Caption().simplified()});
}

} // namespace cash
