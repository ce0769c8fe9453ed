#include "cash/F_Inst.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/printing.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Guard.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace cash {

F_Inst::F_Inst()
    : Form("F_Inst", "   Règlements en instance"), Grid3("Grid3", {{"N°", 600, Qt::AlignCenter},
                                                                   {"Nom", 1890},
                                                                   {"Prénom", 1890},
                                                                   {"Unité", 1780},
                                                                   {"Date", 1100, Qt::AlignCenter},
                                                                   {"Heure", 590, Qt::AlignCenter},
                                                                   {"R", 460, Qt::AlignCenter, PayCodeTips()},
                                                                   {"Montant", 1100, Qt::AlignRight}})
{
    BuildForm();
    On(Grid3, &Grid::Click, *this, &F_Inst::Grid3_Click);
    On(Grid3, &Grid::DblClick, *this, &F_Inst::Grid3_DblClick);
    On(Grid3, &Grid::Entered, *this, &F_Inst::OpenCorrection); // acts on the highlighted row
    OnEach(Image1, &Picture::clicked, *this, &F_Inst::Image1_Click);
    OnEach(Dates.Image2, &Picture::clicked, *this, &F_Inst::Image2_Click);
    SSPanel2.Save = [this] { return SaveCorrection(); };
    SSPanel2.Left = [this] { Browse(); };
}

void F_Inst::Form_Load()
{
    CenterForm(*this);
    FillPayCodes(SSPanel2.Code);
    PatientLookup = TheDatabase.OpenRecordset("select * from Patients order by num");
    ServiceLookup = TheDatabase.OpenRecordset("select * from Presta order by num");
    Dates.SetToday();
    ChooseDates();
}

void F_Inst::Image1_Click(int index)
{
    switch (index) {
    case OtherDate:
        return ChooseDates();
    case Correct:
        return OpenCorrection();
    case Print:
        return PrintPendingList();
    default:
        Unload();
    }
}

void F_Inst::Image2_Click(int index)
{
    if (PeriodChooser::IsAccept(index))
        ListChosenDates(index);
    else
        Browse();
}

void F_Inst::EscapePressed()
{
    if (SSPanel2.isVisibleTo(this))
        SSPanel2.Image3_Click(CorrectionPanel::Cancel);
    else if (Dates.isVisibleTo(this))
        Image2_Click(PeriodChooser::CancelDay);
}

void F_Inst::Grid3_Click()
{
    Grid3.SelectRow(Grid3.Row());
}

void F_Inst::Grid3_DblClick()
{
    Grid3_Click();
    OpenCorrection();
}

void F_Inst::ChooseDates()
{
    ShowPictures(false);
    Dates.ShowOver(Grid3);
}

void F_Inst::ListChosenDates(int acceptPicture)
{
    const auto period = Dates.Read(acceptPicture);
    if (!period)
        return;
    FromDateUS = period->FirstUS();
    ToDateUS = period->LastUS();
    SSPanel1.SetCaption(period->Heading()); // also of a period that is refused next
    if (!Dates.IsInOrder(*period))
        return;
    FillPendingList();
    Browse();
}

void F_Inst::OpenCorrection()
{
    if (List3.IsEmpty() || !LoadCorrection())
        return;
    Dates.hide();
    ShowPictures(false);
    Grid3.setEnabled(false); // the highlighted act is the one that is saved
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
    for (const int picture : {OtherDate, Correct, Print})
        Image1[picture].setVisible(shown);
}

void F_Inst::FillPendingList()
{
    ClearList(List3, RCP);
    QueryText = "Select * from Actes where date >=#" + FromDateUS + "# and date <=#" + ToDateUS + "#" +
                " and Flag_R < 2 order by num";
    PendingActs = TheDatabase.OpenRecordset(QueryText);
    if (PendingActs.RecordCount() == 0)
        return;

    const Hourglass pointer;
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
    const int row = List3.Add(PendingActs["num"].Key());
    Grid3.SetText(row, ActColumn::Number, PlainText(row + 1));
    names.Show(Grid3, row, PendingActs);
    Grid3.SetText(row, Date, TextOrNothing(PendingActs["date_Presta"]));
    Grid3.SetText(row, Time, TextOrNothing(PendingActs["Heure"]));
    Grid3.SetText(row, Code, ListLine(List_R, PendingActs["flag_R"].Long()));
    if (!PendingActs["montant"].IsNull()) {
        const double amount = PendingActs["montant"].Double();
        if (amount != 0)
            Grid3.SetText(row, Amount, PlainText(amount) + " ");
        RunningAmount += amount;
    }
}

bool F_Inst::LoadCorrection()
{
    CorrectedRow = Grid3.Row();
    return SSPanel2.LoadAct(List3, CorrectedRow, PendingActs);
}

bool F_Inst::SaveCorrection()
{
    if (!SSPanel2.SaveAct())
        return false;
    Grid3.SetText(CorrectedRow, Code, ListLine(List_R, SSPanel2.Code.currentIndex()));
    Grid3.SetText(CorrectedRow, Amount, SSPanel2.Amount.text().trimmed() + " ");
    ShowPlainTotal();
    return true;
}

void F_Inst::ShowPlainTotal()
{
    RCP.setText("");
    RunningAmount = 0;
    for (int row = 0; row < Grid3.Rows(); ++row)
        RunningAmount += Val(Grid3.Text(row, Amount));
    if (RunningAmount != 0)
        RCP.setText(PlainText(RunningAmount));
}

void F_Inst::PrintPendingList()
{
    RunPrintStep(
        Report1,
        {.reportName = "ZEP_DTAL.RPT",
         .headings = {{"ch4", "Règlements en instance"}, {"ch5", SSPanel1.Caption()}, {"ch6", ""}, {"ch7", ""}},
         .scratchTable = "Prov",
         .fillRows = KeyRows(List3.Keys()),
         .proposedName = "Règlements en instance " + SSPanel1.Caption().simplified()});
}

} // namespace cash
