#include "cash/Recettes.h"

#include "core/globals.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace cash {

std::vector<PrintStep::Heading> Recettes::JournalHeadings() const
{
    return {{"ch4", SSPanel2.Caption()},
            {"ch5", SSPanel1.Caption()},
            {"ch6", ActsTotal.text()},
            {"ch7", ReceivedTotal.text()}};
}

void Recettes::PrintJournalRecap()
{
    // Grid1 keeps its current row: the scope panel offers the service selected there.
    Print({.reportName = "ZEP_RCAP.RPT",
           .headings = JournalHeadings(),
           .scratchTable = "Prov",
           .fillRows = [this](ScratchRows& rows) { PrintServices(rows, Grid1); },
           .proposedName = windowTitle() + " " + SSPanel1.Caption().simplified()});
}

void Recettes::PrintCodeMatrix()
{
    RunPrintStep(Report1, {.reportName = "ZEP_RCP2.RPT",
                           .headings = {{"ch4", SSPanel1.Caption()}},
                           .scratchTable = "RCP2",
                           .fillRows =
                               [this](ScratchRows& rows) {
                                   for (int row = 0; row < TariffCount; ++row) {
                                       Grid3.SetRow(row);
                                       const auto count = [&](int state) {
                                           return Val(Grid3.Text(row, FirstCount + state));
                                       };
                                       rows.Add({{"denom", Grid3.Text(row, Code).trimmed()},
                                                 {"C1", count(0)},
                                                 {"C2", count(1)},
                                                 {"C3", count(2)},
                                                 {"C4", count(3)},
                                                 {"C5", count(4)},
                                                 {"C6", count(5)},
                                                 {"C7", count(6)}});
                                   }
                                   Grid3_Click();
                               },
                           .proposedName = windowTitle() + " par code " + SSPanel1.Caption().simplified()});
}

void Recettes::PrintUnitDetail()
{
    Grid1.SetCol(Count);
    if (Val(Grid1.Text(Grid1.Row(), Count).trimmed()) < 1) {
        MsgBox("Aucune activité dans cette unité", Icon::Critical, "ATTENTION");
        Pointer.reset();
        return;
    }
    PrintActs(" " + Grid1.Text(Grid1.Row(), Unit).trimmed(), [this] {
        QueryText = ActsOfUnit(LRecap.KeyOf(Grid1.Row()));
        return ValueActs(TheDatabase.OpenRecordset(QueryText), Rates);
    });
}

void Recettes::PrintAllDetail()
{
    PrintActs({}, [this] { return ValueActs(List1.Keys(), ActsByNum, Rates); });
}

/// Prints acts with their values. Reads all of them before writing the first row: reads interleaved with writes would
/// look up every row again.
void Recettes::PrintActs(const QString& what, std::function<QList<ValuedAct>()> acts)
{
    Print({.reportName = "ZEP_DTAL.RPT",
           .headings = JournalHeadings(),
           .scratchTable = "Prov",
           .fillRows = [acts = std::move(acts)](ScratchRows& rows) { AddRows(rows, acts()); },
           .proposedName = "Détail" + what + " " + SSPanel1.Caption().simplified()});
}

/// Runs a print step; once the rows are written, removes an hourglass left by a refused period.
void Recettes::Print(PrintStep step)
{
    step.fillRows = [this, fill = std::move(step.fillRows)](ScratchRows& rows) {
        fill(rows);
        Pointer.reset();
    };
    RunPrintStep(Report1, step);
}

} // namespace cash
