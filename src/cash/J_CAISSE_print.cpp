#include "cash/J_CAISSE.h"

#include "core/printing.h"
#include "platform/forms/Desk.h"

namespace cash {

void J_CAISSE::PrintOrRefuse(const dao::KeyList& list, const QString& templateName)
{
    if (list.isEmpty())
        forms::MsgBox("Aucun enregistrement", forms::Icon::Information, "ZEP Lumo");
    else
        PrintDayList(list, templateName);
}

void J_CAISSE::PrintCashRecap()
{
    core::RunPrintStep(Report1, {.reportName = "ZEP_R1.RPT",
                                 .headings = {{"ch5", SSPanel1.Caption()},
                                              {"ch6", RCP[DayActs].text()},
                                              {"ch7", RCP[OpeningBalance].text()},
                                              {"ch8", RCP[DayReceived].text()},
                                              {"ch9", RCP[DaySpent].text()},
                                              {"ch10", RCP[NewBalance].text()}},
                                 .scratchTable = "Prov",
                                 .fillRows =
                                     [this](core::ScratchRows& rows) {
                                         core::PrintServices(rows, Grid1);
                                         // Leaves the grid on its last cell.
                                         Grid1.SetRow(Grid1.Rows() - 1);
                                         Grid1.SetCol(Grid1.Columns() - 1);
                                     },
                                 .proposedName = windowTitle() + " " + SSPanel1.Tag});
}

void J_CAISSE::PrintDayList(const dao::KeyList& list, const QString& templateName)
{
    core::RunPrintStep(Report1, {.reportName = templateName,
                                 .headings = {{"ch4", SSPanel1.Caption()}},
                                 .scratchTable = "Prov",
                                 .fillRows = core::KeyRows(list),
                                 .proposedName = SSTab1.tabText(SSTab1.currentIndex()) + " " + SSPanel1.Tag});
}

} // namespace cash
