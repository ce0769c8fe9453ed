#include "planning/Planning.h"

#include "core/NameLookup.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/printing.h"
#include "core/windows.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace planning {

void Planning::Image4_Click(int index)
{
    Image4[index].SetBorder(false);
    switch (index) {
    case OpenPrint:
        FloatOver(SSPanel6, SSPanel4);
        return SSOption1[SSOption1[AllUnits].isChecked() ? AllUnits : CurrentUnit].setFocus();
    case CloseList:
        return CloseOverBoard(SSPanel1, Grid1);
    case Print:
        return PrintPlanning();
    default:
        SSPanel6.hide();
        if (SSPanel1.isVisibleTo(this))
            Grid2.setFocus();
    }
}

void Planning::Grid2_Click()
{
    Grid2.SelectRow(Grid2.Row());
}

void Planning::Grid2_DblClick()
{
    Grid2_Click();
    Image4_Click(OpenPrint);
}

void Planning::ShowDayList()
{
    Grid1.SetCol(Programmed);
    if (Val(Grid1.Text(Grid1.Row(), Programmed).trimmed()) < 1) {
        MsgBox("Aucune programmation pour cette unité");
        return;
    }
    LoadDayAppointments();
    OpenOverBoard(SSPanel1, Grid2);
    if (SSPanel6.isVisibleTo(this)) // left open by the previous list
        SSPanel6.raise();
}

dao::Key Planning::CurrentUnitKey() const
{
    return List2.Keys().value(Grid1.Row());
}

void Planning::LoadDayAppointments()
{
    List1.Clear();
    Grid1.SetCol(Unit);
    UnitLine.setText("Unité : " + Grid1.Text(Grid1.Row(), Unit).trimmed());
    DayLine.setText(DayHeading.text());
    const dao::ReadTransaction oneLock(TheDatabase);
    NameLookup patients(TheDatabase.OpenRecordset("select * from Patients order by num"),
                        {"nom", "Prenom", "tel", "ville", "N_carte"});
    QueryText = "Select * from Plani where Num_Presta = " + QString::number(CurrentUnitKey()) + " and date = #" +
                DayDateUS + "# order by HH";
    dao::Recordset appointments = TheDatabase.OpenRecordset(QueryText);
    for (; !appointments.IsEOF(); appointments.MoveNext()) {
        const int row = List1.Add(appointments["num"].Key());
        Grid2.SetText(row, Number, PlainText(row + 1));
        if (!appointments["HH"].IsNull())
            Grid2.SetText(row, Hour, List4.value(appointments["HH"].Long()));
        if (const auto& patient = patients.Find(appointments["num_patient"]))
            ShowPatient(row, *patient);
    }
    if (!List1.IsEmpty()) {
        Grid2.SetRow(0);
        Grid2_Click();
    }
}

void Planning::ShowPatient(int row, const QStringList& patient)
{
    for (int column = LastName; column <= Card; ++column)
        if (const QString& text = patient[column - LastName]; !text.isNull())
            Grid2.SetText(row, column, " " + text);
}

void Planning::PrintPlanning()
{
    // While a date is being typed, the board's date is the one saved for a cancel.
    const QString day = (SSPanel3.isVisibleTo(this) ? Text5[0].Tag : Text5[0].text()).trimmed();
    QString formula = "{Plani.date} = date(" + day.right(4) + "," + day.mid(3, 2) + "," + day.left(2) + ")";
    if (SSOption1[CurrentUnit].isChecked())
        formula += " and {Plani.Num_Presta} = " + QString::number(CurrentUnitKey());
    RunPrintStep(Report1, {.reportName = "Planning.RPT",
                           .headings = {{"ch4", "Planning de la " + DayHeading.text().trimmed()}},
                           .selectionFormula = formula,
                           .proposedName = "Planning " + day});
}

} // namespace planning
