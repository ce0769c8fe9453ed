#include "cash/J_CAISSE.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace cash {

void J_CAISSE::Form_Load()
{
    CenterForm(*this);
    FillPayLists(List_R, List_HH, &SSPanel2.Code);
    PatientLookup = TheDatabase.OpenRecordset("select * from Patients order by num");
    ServiceLookup = TheDatabase.OpenRecordset("select * from Presta order by num");
    ShowCashDay();
}

void J_CAISSE::Image1_Click(int index)
{
    if (index == 2)
        return Unload();
    if (PickDateFromToday())
        ShowCashDay();
}

void J_CAISSE::Image2_Click(int index)
{
    switch (index) {
    case 0:
        return PrintOrRefuse(List2, "ZEP_R2.RPT");
    case 1:
        return PrintOrRefuse(List3, "ZEP_R3.RPT");
    case 2:
        return PrintOrRefuse(List4, "ZEP_R4.RPT");
    case 3:
        return PrintCashRecap();
    default:
        OpenCorrection();
    }
}

void J_CAISSE::OpenCorrection()
{
    if (List3.isEmpty())
        return;
    LoadCorrection();
    SSTab1.setEnabled(false);
    SSPanel2.ShowOver(SSTab1);
}

void J_CAISSE::Image3_Click(int index)
{
    if (index == 0) {
        SaveCorrection();
        MsgBox("Correction enregistrée", Icon::Information, "ZEP Lumo");
    }
    CloseCorrection();
}

void J_CAISSE::CloseCorrection()
{
    SSPanel2.hide();
    SSTab1.setEnabled(true);
    Grid3.setFocus();
}

void J_CAISSE::EscapePressed()
{
    if (SSPanel2.isVisibleTo(this))
        Image3_Click(1);
}

void J_CAISSE::Grid3_Click()
{
    PendingRow = Grid3.Row();
    Grid3.SelectRow(PendingRow);
}

void J_CAISSE::Grid3_DblClick()
{
    Grid3_Click();
    Image2_Click(4);
}

void J_CAISSE::ShowCashDay()
{
    SSPanel1.Tag = PickedDate;
    CashDayName = LongDayName(SSPanel1.Tag);
    SSPanel1.SetCaption("Mouvements de fonds du  " + CashDayName + " " + SSPanel1.Tag.trimmed());

    const Hourglass pointer;
    FillSettledActs();
    FillPendingActs();
    FillDayExpenses();
    FillCashRecap();
}

QString J_CAISSE::CutCashDay()
{
    return QueryDate(SSPanel1.Tag.trimmed());
}

void J_CAISSE::FillCashRecap()
{
    CashDayUS = CutCashDay();
    for (int figure = 0; figure <= 4; ++figure)
        RCP[figure].setText("");
    Grid1.ClearToOneRow();
    SumServices();

    if (ActsTotal >= 1)
        RCP[0].setText(PlainText(ActsTotal));
    if (ReceivedTotal > 0)
        RCP[2].setText(Format(ReceivedTotal, "### ###.00") + " ");

    RunningAmount = BalanceBefore();
    if (RunningAmount != 0)
        RCP[1].setText(Format(RunningAmount, AmountMask));

    QueryText = "select sum(montant) as S1 from Recettes where date =#" + CashDayUS + "#";
    const dao::Recordset expenses = TheDatabase.OpenRecordset(QueryText);
    if (!expenses["S1"].IsNull())
        RCP[3].setText(Format(expenses["S1"].Double(), AmountMask));

    // The captions are read back on purpose: the new balance is the sum of the figures on the screen, already rounded.
    RunningAmount = Val(RCP[1].text()) + Val(RCP[2].text()) - Val(RCP[3].text());
    if (RunningAmount != 0)
        RCP[4].setText(Format(RunningAmount, AmountMask));
}

void J_CAISSE::SumServices()
{
    ActsTotal = 0;
    ReceivedTotal = 0;
    RecapRow = 0;
    QueryText = "Select * from Presta order by ordre";
    ServiceRecords = TheDatabase.OpenRecordset(QueryText);
    for (; !ServiceRecords.IsEOF(); ServiceRecords.MoveNext()) {
        QueryText = "select count(num) as S1, sum(montant) as S2 from Actes where date =#" + CashDayUS +
                    "# and num_presta = " + QString::number(ServiceRecords["num"].Key());
        ServiceTotals = TheDatabase.OpenRecordset(QueryText);
        if (ServiceTotals["S1"].IsNull())
            continue;
        ActsTotal += ServiceTotals["S1"].Long();
        if (!ServiceTotals["S2"].IsNull())
            ReceivedTotal += ServiceTotals["S2"].Double();
        AddRecapRow();
    }
}

void J_CAISSE::AddRecapRow()
{
    const int row = TakeRow(Grid1, RecapRow);
    Grid1.SetText(row, 0, " " + TextOrNothing(ServiceRecords["denom"]));
    if (ServiceTotals["S1"].Long() > 0)
        Grid1.SetText(row, 1, PlainText(ServiceTotals["S1"].Long()));
    if (!ServiceTotals["S2"].IsNull() && ServiceTotals["S2"].Double() > 0)
        Grid1.SetText(row, 2, PlainText(ServiceTotals["S2"].Double()) + " ");
}

double J_CAISSE::BalanceBefore()
{
    double balance = 0;
    QueryText = "select sum(montant) as S1 from Actes where date <#" + CashDayUS + "#";
    const dao::Recordset received = TheDatabase.OpenRecordset(QueryText);
    if (!received["S1"].IsNull())
        balance = received["S1"].Double();
    QueryText = "select sum(montant) as S1 from Recettes where date <#" + CashDayUS + "#";
    const dao::Recordset spent = TheDatabase.OpenRecordset(QueryText);
    if (!spent["S1"].IsNull())
        balance -= spent["S1"].Double();
    return balance;
}

void J_CAISSE::FillSettledActs()
{
    ClearList(Grid2, RCP[5], List2);
    CashDayUS = CutCashDay();
    QueryText = "Select * from Actes where date =#" + CashDayUS + "# and Flag_R > 1 order by num";
    SettledActs = TheDatabase.OpenRecordset(QueryText);
    ListActs(SettledActs, Grid2, RCP[5], List2, true);
}

void J_CAISSE::FillPendingActs()
{
    ClearList(Grid3, RCP[6], List3);
    CashDayUS = CutCashDay();
    QueryText = "Select * from Actes where date =#" + CashDayUS + "# and Flag_R < 2 order by num";
    PendingActs = TheDatabase.OpenRecordset(QueryText);
    if (PendingActs.RecordCount() == 0)
        return;
    ListActs(PendingActs, Grid3, RCP[6], List3, false);
    Grid3.SetRow(0);
    Grid3_Click();
}

void J_CAISSE::ListActs(dao::Recordset& acts, Grid& grid, FigureLabel& total, dao::KeyList& keys, bool showsZeroAmounts)
{
    ListRow = 0;
    RunningAmount = 0;
    NamesOfActs names(PatientLookup, ServiceLookup, NullName::AsBlank);
    for (; !acts.IsEOF(); acts.MoveNext()) {
        ListAct(acts, names, grid, showsZeroAmounts);
        RunningAmount += acts["montant"].Double();
        keys << acts["num"].Key();
    }
    if (RunningAmount != 0)
        total.setText(Format(RunningAmount, AmountMask));
}

void J_CAISSE::ListAct(const dao::Recordset& act, NamesOfActs& names, Grid& grid, bool showsZeroAmounts)
{
    const int row = TakeRow(grid, ListRow);
    grid.SetText(row, 0, PlainText(ListRow));
    names.Show(grid, row, act);
    grid.SetText(row, 4, ListLine(List_HH, act["HH"].Long()));
    grid.SetText(row, 5, ListLine(List_R, act["flag_R"].Long()));
    const double amount = act["montant"].Double();
    if (amount != 0 || showsZeroAmounts)
        grid.SetText(row, 6, PlainText(amount) + " ");
}

void J_CAISSE::FillDayExpenses()
{
    ClearList(Grid4, RCP[7], List4);
    CashDayUS = CutCashDay();
    QueryText = "Select * from Recettes where date =#" + CashDayUS + "# order by num";
    DayExpenses = TheDatabase.OpenRecordset(QueryText);

    ListRow = 0;
    RunningAmount = 0;
    for (; !DayExpenses.IsEOF(); DayExpenses.MoveNext()) {
        const int row = TakeRow(Grid4, ListRow);
        Grid4.SetText(row, 0, PlainText(ListRow));
        Grid4.SetText(row, 1, " " + TextOrNothing(DayExpenses["objet"]).trimmed());
        Grid4.SetText(row, 2, PlainText(DayExpenses["montant"].Double()) + " ");
        RunningAmount += DayExpenses["montant"].Double();
        List4 << DayExpenses["num"].Key();
    }
    if (RunningAmount != 0)
        RCP[7].setText(Format(RunningAmount, AmountMask));
}

void J_CAISSE::LoadCorrection()
{
    SSPanel2.LoadAct(Grid3, PendingRow, PendingActs, List3[PendingRow]);
}

void J_CAISSE::SaveCorrection()
{
    SSPanel2.SaveAct(PendingActs);
    FillSettledActs();
    FillPendingActs();
    FillCashRecap();
}

} // namespace cash
