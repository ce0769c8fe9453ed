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

namespace {

QList<Grid::Column> ActColumns()
{
    return {{"N°", 600, Qt::AlignCenter},
            {"Nom", 1890},
            {"Prénom", 1890},
            {"Unité", 1780},
            {"Heure", 590, Qt::AlignCenter},
            {"R", 460, Qt::AlignCenter, PayCodeTips()},
            {"Montant", 1100, Qt::AlignRight}};
}

} // namespace

J_CAISSE::J_CAISSE()
    : Form("J_CAISSE", "Caisse du Jour"),
      Grid1("Grid1", {{"Unité", 1780}, {"Nbre", 840, Qt::AlignCenter}, {"Montant", 1280, Qt::AlignRight}}),
      Grid2("Grid2", ActColumns()), Grid3("Grid3", ActColumns()),
      Grid4("Grid4", {{"N°", 600, Qt::AlignCenter}, {"Objet de la dépense", 5270}, {"Montant", 1300, Qt::AlignRight}})
{
    BuildForm();
    On(Grid3, &Grid::Click, *this, &J_CAISSE::Grid3_Click);
    On(Grid3, &Grid::DblClick, *this, &J_CAISSE::Grid3_DblClick);
    On(Grid3, &Grid::Entered, *this, &J_CAISSE::Grid3_DblClick);
    OnEach(Image1, &Picture::clicked, *this, &J_CAISSE::Image1_Click);
    OnEach(Image2, &Picture::clicked, *this, &J_CAISSE::Image2_Click);
    OnCommand(Command::Previous, [this] { MoveDay(-1); });
    OnCommand(Command::Next, [this] { MoveDay(1); });
    SSPanel2.Save = [this] { return SaveCorrection(); };
    SSPanel2.Left = [this] { CloseCorrection(); };
}

void J_CAISSE::Form_Load()
{
    CenterForm(*this);
    FillPayCodes(SSPanel2.Code);
    PatientLookup = TheDatabase.OpenRecordset("select * from Patients order by num");
    ServiceLookup = TheDatabase.OpenRecordset("select * from Presta order by num");
    ShowCashDay(PickedDate);
    SSTab1.setFocus();
}

void J_CAISSE::Image1_Click(int index)
{
    if (index == Quit)
        return Unload();
    const auto day = PickDateFromToday();
    if (!day)
        return;
    if (SSPanel2.isVisibleTo(this)) // the act being corrected belongs to the day that is replaced
        SSPanel2.Image3_Click(CorrectionPanel::Cancel);
    ShowCashDay(*day);
}

void J_CAISSE::Image2_Click(int index)
{
    switch (index) {
    case PrintSettled:
        return PrintOrRefuse(List2.Keys(), "ZEP_R2.RPT");
    case PrintPending:
        return PrintOrRefuse(List3.Keys(), "ZEP_R3.RPT");
    case PrintExpenses:
        return PrintOrRefuse(List4.Keys(), "ZEP_R4.RPT");
    case PrintRecap:
        return PrintCashRecap();
    default:
        OpenCorrection();
    }
}

void J_CAISSE::OpenCorrection()
{
    if (List3.IsEmpty() || !LoadCorrection())
        return;
    SSTab1.setEnabled(false);
    SSPanel2.ShowOver(SSTab1);
}

void J_CAISSE::CloseCorrection()
{
    SSTab1.setEnabled(true);
    Grid3.setFocus();
}

void J_CAISSE::EscapePressed()
{
    if (SSPanel2.isVisibleTo(this))
        SSPanel2.Image3_Click(CorrectionPanel::Cancel);
}

void J_CAISSE::Grid3_Click()
{
    Grid3.SelectRow(Grid3.Row());
}

void J_CAISSE::Grid3_DblClick()
{
    Grid3_Click();
    OpenCorrection();
}

void J_CAISSE::ShowCashDay(const QString& day)
{
    SSPanel1.Tag = day;
    SSPanel1.SetCaption("Mouvements de fonds du  " + LongDayName(day) + " " + day.trimmed());

    const Hourglass pointer;
    FillSettledActs();
    FillPendingActs();
    FillDayExpenses();
    FillCashRecap();
}

void J_CAISSE::MoveDay(int days)
{
    if (!SSPanel2.isVisibleTo(this))
        ShowCashDay(DateText(AddDays(DateValue(SSPanel1.Tag.trimmed()), days)));
}

QString J_CAISSE::CutCashDay()
{
    return QueryDate(SSPanel1.Tag.trimmed());
}

void J_CAISSE::FillCashRecap()
{
    CashDayUS = CutCashDay();
    for (int figure = DayActs; figure <= NewBalance; ++figure)
        RCP[figure].setText("");
    Services.Clear();
    SumServices();

    if (ActsTotal >= 1)
        RCP[DayActs].setText(PlainText(ActsTotal));
    if (ReceivedTotal > 0)
        RCP[DayReceived].setText(Format(ReceivedTotal, "### ###.00") + " ");

    RunningAmount = BalanceBefore();
    if (RunningAmount != 0)
        RCP[OpeningBalance].setText(Format(RunningAmount, AmountMask));

    QueryText = "select sum(montant) as S1 from Recettes where date =#" + CashDayUS + "#";
    const dao::Recordset expenses = TheDatabase.OpenRecordset(QueryText);
    if (!expenses["S1"].IsNull())
        RCP[DaySpent].setText(Format(expenses["S1"].Double(), AmountMask));

    // Read from the labels on purpose: the new balance is the sum of the figures shown, already rounded.
    RunningAmount = Val(RCP[OpeningBalance].text()) + Val(RCP[DayReceived].text()) - Val(RCP[DaySpent].text());
    if (RunningAmount != 0)
        RCP[NewBalance].setText(Format(RunningAmount, AmountMask));
}

void J_CAISSE::SumServices()
{
    ActsTotal = 0;
    ReceivedTotal = 0;
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
        AppendService(Services, ServiceRecords, ServiceTotals);
    }
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
    ClearList(List2, RCP[SettledTotal]);
    CashDayUS = CutCashDay();
    QueryText = "Select * from Actes where date =#" + CashDayUS + "# and Flag_R > 1 order by num";
    SettledActs = TheDatabase.OpenRecordset(QueryText);
    ListActs(SettledActs, List2, RCP[SettledTotal], true);
}

void J_CAISSE::FillPendingActs()
{
    ClearList(List3, RCP[PendingTotal]);
    CashDayUS = CutCashDay();
    QueryText = "Select * from Actes where date =#" + CashDayUS + "# and Flag_R < 2 order by num";
    PendingActs = TheDatabase.OpenRecordset(QueryText);
    if (PendingActs.RecordCount() == 0)
        return;
    ListActs(PendingActs, List3, RCP[PendingTotal], false);
    Grid3.SetRow(0);
    Grid3_Click();
}

void J_CAISSE::ListActs(dao::Recordset& acts, KeyedList& list, FigureLabel& total, bool showsZeroAmounts)
{
    RunningAmount = 0;
    NamesOfActs names(PatientLookup, ServiceLookup, NullName::AsBlank);
    for (; !acts.IsEOF(); acts.MoveNext()) {
        ListAct(acts, names, list, showsZeroAmounts);
        RunningAmount += acts["montant"].Double();
    }
    if (RunningAmount != 0)
        total.setText(Format(RunningAmount, AmountMask));
}

void J_CAISSE::ListAct(const dao::Recordset& act, NamesOfActs& names, KeyedList& list, bool showsZeroAmounts)
{
    Grid& grid = list.Grid();
    const int row = list.Add(act["num"].Key());
    grid.SetText(row, ActColumn::Number, PlainText(row + 1));
    names.Show(grid, row, act);
    grid.SetText(row, Hour, ListLine(List_HH, act["HH"].Long()));
    grid.SetText(row, Code, ListLine(List_R, act["flag_R"].Long()));
    const double amount = act["montant"].Double();
    if (amount != 0 || showsZeroAmounts)
        grid.SetText(row, Amount, PlainText(amount) + " ");
}

void J_CAISSE::FillDayExpenses()
{
    ClearList(List4, RCP[ExpensesTotal]);
    CashDayUS = CutCashDay();
    QueryText = "Select * from Recettes where date =#" + CashDayUS + "# order by num";
    DayExpenses = TheDatabase.OpenRecordset(QueryText);

    RunningAmount = 0;
    for (; !DayExpenses.IsEOF(); DayExpenses.MoveNext()) {
        const int row = List4.Add(DayExpenses["num"].Key());
        Grid4.SetText(row, ExpenseNumber, PlainText(row + 1));
        Grid4.SetText(row, Object, " " + TextOrNothing(DayExpenses["objet"]).trimmed());
        Grid4.SetText(row, Spent, PlainText(DayExpenses["montant"].Double()) + " ");
        RunningAmount += DayExpenses["montant"].Double();
    }
    if (RunningAmount != 0)
        RCP[ExpensesTotal].setText(Format(RunningAmount, AmountMask));
}

bool J_CAISSE::LoadCorrection()
{
    return SSPanel2.LoadAct(List3, Grid3.Row(), PendingActs);
}

bool J_CAISSE::SaveCorrection()
{
    const bool saved = SSPanel2.SaveAct();
    FillSettledActs();
    FillPendingActs();
    FillCashRecap();
    return saved;
}

} // namespace cash
