#include "cash/Recettes.h"

#include "core/globals.h"
#include "core/lists.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace cash {

namespace {

constexpr int MostDetailRows = 16352;

void EmptyCells(Grid& grid, int row, int from, int to)
{
    for (int column = from; column <= to; ++column)
        grid.SetText(row, column, "");
}

void ShowAmount(FigureLabel& total, double dinars, const QString& mask)
{
    total.setText(dinars > 0 ? Format(dinars, mask) + " " : QString());
}

} // namespace

void Recettes::FillJournal()
{
    ClearJournal();
    OpenLookups(); // to find acts and patients added by other programs
    const dao::ReadTransaction oneState(TheDatabase);
    NameLookup patients(PatientLookup, {"nom", "Prenom"});
    QueryText = "Select * from Presta order by ordre";
    ServiceRecords = TheDatabase.OpenRecordset(QueryText);
    for (; !ServiceRecords.IsEOF(); ServiceRecords.MoveNext())
        AddService(patients);
    ShowTotals();
    Grid1.SetRow(0);
    Grid1_Click();
    ShowCodeCounts();
    Grid3.SetRow(0);
    Grid3_Click();
}

void Recettes::ClearJournal()
{
    Grid1.SetRows(1);
    EmptyCells(Grid1, 0, Unit, Received);
    Grid2.SetRows(1);
    EmptyCells(Grid2, 0, ActUnit, Amount);
    for (int row = 0; row < TariffCount; ++row)
        EmptyCells(Grid3, row, FirstCount, LastCount);
    for (int total = 0; total < LT.Size(); ++total)
        LT[total].setText("");
    CodeCounts.Clear();
    PeriodActs = 0;
    PeriodReceived = PeriodTheoretical = DetailReceived = DetailTheoretical = 0;
    List1.DropKeys();
    LRecap.DropKeys();
}

void Recettes::AddService(NameLookup& patients)
{
    QueryText = "select count(num) as S1, sum(montant) as S2 from Actes where date >=#" + FromDateUS +
                "# and date <=#" + ToDateUS + "# and num_presta = " + QString::number(ServiceRecords["num"].Key());
    ServiceTotals = TheDatabase.OpenRecordset(QueryText);
    PeriodActs += ServiceTotals["S1"].Long();
    if (!ServiceTotals["S2"].IsNull())
        PeriodReceived += ServiceTotals["S2"].Double();
    AddJournalDetail(patients);
    AddJournalRow();
    DetailReceived += ServiceReceived;
    DetailTheoretical += ServiceTheoretical;
    PeriodTheoretical += ServiceTheoretical;
}

QString Recettes::ActsOfUnit(dao::Key unit) const
{
    return "Select * from Actes  where date >=#" + FromDateUS + "# and date <=#" + ToDateUS +
           "# and num_presta = " + QString::number(unit) + " order by date";
}

void Recettes::AddJournalDetail(NameLookup& patients)
{
    ServiceReceived = ServiceTheoretical = 0;
    if (!FitsDetail(ServiceTotals["S1"].Long())) // refuses before reading them
        return;
    QueryText = ActsOfUnit(ServiceRecords["num"].Key());
    DetailActs = TheDatabase.OpenRecordset(QueryText);
    if (DetailActs.RecordCount() == 0)
        return;
    DetailActs.MoveLast(); // RecordCount is exact from here on
    if (!FitsDetail(DetailActs.RecordCount()))
        return DetailActs.Close();
    Grid2.SetRows(List1.Count() + DetailActs.RecordCount());
    const QString unit = " " + TextOrNothing(ServiceRecords["denom"]);
    for (DetailActs.MoveFirst(); !DetailActs.IsEOF(); DetailActs.MoveNext())
        AddDetailRow(unit, patients);
}

bool Recettes::FitsDetail(int acts) const
{
    if (List1.Count() + acts <= MostDetailRows)
        return true;
    MsgBox("Plage de dates trop grande ! ! !", Icon::Critical, "ATTENTION");
    return false;
}

void Recettes::AddDetailRow(const QString& unit, NameLookup& patients)
{
    const int row = List1.Add(DetailActs["num"].Key());
    Grid2.SetText(row, ActUnit, unit);
    Grid2.SetText(row, ReceptionDate, TextOrNothing(DetailActs["Date"]));
    Grid2.SetText(row, ReceptionTime, TextOrNothing(DetailActs["Heure"]));
    if (const auto& names = patients.Find(DetailActs["num_patient"]))
        Grid2.SetText(row, Patient, names->at(0).trimmed() + " " + names->at(1).trimmed());
    Grid2.SetText(row, ServiceDate, TextOrNothing(DetailActs["date_Presta"]));
    Grid2.SetText(row, ServiceHour, ListLine(List_HH, DetailActs["HH"].Long()));
    Grid2.SetText(row, Type, TextOrNothing(DetailActs["Type"]));
    const int state = DetailActs["flag_R"].Long();
    Grid2.SetText(row, Payment, ListLine(List_R, state));
    const double amount = DetailActs["montant"].Double();
    ServiceReceived += amount;
    Grid2.SetText(row, Amount, Format(amount, "### ###") + " ");
    const double value = Values.ValueOf(DetailActs);
    if (value != 0)
        Grid2.SetText(row, Value, Format(value, "### ###") + " ");
    ServiceTheoretical += value;
    CodeCounts.Add(state, Values.CodeIndex());
}

void Recettes::AddJournalRow()
{
    const int row = AppendService(LRecap, ServiceRecords, ServiceTotals);
    if (ServiceTheoretical != 0)
        Grid1.SetText(row, Theoretical, PlainText(ServiceTheoretical));
}

void Recettes::ShowTotals()
{
    ShowAmount(DetailReceivedTotal, DetailReceived, "### ###");
    ShowAmount(DetailTheoreticalTotal, DetailTheoretical, "### ###");
    ActsTotal.setText(PeriodActs < 1 ? QString() : PlainText(PeriodActs));
    ShowAmount(ReceivedTotal, PeriodReceived, "### ### ###");
    ShowAmount(TheoreticalTotal, PeriodTheoretical, "### ### ###");
}

void Recettes::ShowCodeCounts()
{
    CodeCounts.SumUp();
    for (int state = CodeTally::FirstState; state <= CodeTally::AllStates; ++state) {
        for (int code = 0; code < TariffCount; ++code)
            if (CodeCounts.At(state, code) > 0)
                Grid3.SetText(code, state, PlainText(CodeCounts.At(state, code)));
        if (CodeCounts.At(state, CodeTally::AllCodes) > 0)
            LT[state - 1].setText(PlainText(CodeCounts.At(state, CodeTally::AllCodes)));
    }
}

} // namespace cash
