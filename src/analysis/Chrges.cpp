#include "analysis/Chrges.h"

#include "core/globals.h"
#include "core/windows.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"

#include <QKeyEvent>

using namespace basic;
using namespace core;
using namespace forms;

namespace analysis {

namespace {

constexpr int DaysOfMonth = 30;

QString FieldOf(int charge)
{
    return QStringLiteral("Charge%1").arg(charge);
}

void AddPermanentData()
{
    constexpr int blankFields = 6;
    PermnTable.AddNew();
    for (int position = 0; position < blankFields; ++position)
        PermnTable.Fields(position) = " ";
    PermnTable["Taux_CNAS"] = 9;
    PermnTable["Taux_PP"] = 25.5;
    PermnTable["Taux_VF"] = 6;
    PermnTable.Update();
    dao::DBEngine.Idle(dao::RefreshCache);
}

/// Moves to the one row of permanent data, adding it if missing. Reopens the table to see rows that another program has
/// added or removed since the start.
void FindPermanentData()
{
    PermnTable = TheDatabase.OpenRecordset("Permn");
    if (PermnTable.RecordCount() == 0)
        AddPermanentData();
    PermnTable.MoveFirst();
}

} // namespace

Chrges::Chrges() : Form("Chrges", "Charges courantes mensuelles")
{
    BuildForm();
    constexpr int selectedOnFocus = 20;
    for (int charge = Salaries; charge <= DailyTotal; ++charge) {
        Text1[charge].SelectedOnFocus = selectedOnFocus;
        On(Text1[charge], &QLineEdit::textChanged, *this, &Chrges::RecomputeMonthly);
    }
    for (int charge = Salaries; charge <= Others; ++charge)
        On(Text1[charge], &TextBox::Entered, *this,
           [this, charge] { Text1[charge == Others ? Salaries : charge + 1].setFocus(); });
    OnEach(Image1, &Picture::clicked, *this, &Chrges::Image1_Click);
}

void Chrges::Form_Load()
{
    setWindowTitle(" ");
    CenterForm(*this);
    LoadCharges();
    Text1[Salaries].setFocus();
}

void Chrges::Image1_Click(int index)
{
    if (index == Store && IsChanged())
        StoreCharges();
    Unload();
}

int Chrges::FocusedEntry()
{
    for (int charge = Salaries; charge <= Others; ++charge)
        if (Text1[charge].hasFocus())
            return charge;
    return 0;
}

void Chrges::keyPressEvent(QKeyEvent* event)
{
    const int charge = FocusedEntry();
    if (charge > Salaries && event->key() == Qt::Key_Up)
        Text1[charge - 1].setFocus();
    else if (charge != 0 && charge < Others && event->key() == Qt::Key_Down)
        Text1[charge + 1].setFocus();
    else
        Form::keyPressEvent(event);
}

void Chrges::LoadCharges()
{
    FindPermanentData();
    for (int charge = Salaries; charge <= DailyTotal; ++charge) {
        const dao::Field stored = PermnTable.Collect(FieldOf(charge));
        Text1[charge].setText(stored.IsNull() ? QString() : Format(stored.Double(), "########.00"));
    }
    for (int charge = Salaries; charge <= DailyTotal; ++charge)
        Text1[charge].Tag = Text1[charge].text();
}

void Chrges::RecomputeMonthly()
{
    double sum = 0;
    for (int charge = Salaries; charge <= Others; ++charge)
        sum += Val(Text1[charge].text());
    Text1[MonthlyTotal].setText(sum > 0 ? Format(sum, "### ### ###.00") : QString());
}

bool Chrges::IsChanged()
{
    for (int charge = Salaries; charge <= MonthlyTotal; ++charge)
        if (Text1[charge].text() != Text1[charge].Tag)
            return true;
    return false;
}

void Chrges::StoreCharges()
{
    Text1[DailyTotal].setText(Format(Val(Text1[MonthlyTotal].text()) / DaysOfMonth, "#########.00"));
    SaveCharges();
}

void Chrges::SaveCharges()
{
    MsgBox("Sauvegarde en cours");
    FindPermanentData();
    PermnTable.LockEdits(true);
    PermnTable.Edit();
    for (int charge = Salaries; charge <= DailyTotal; ++charge)
        PermnTable.Collect(FieldOf(charge)) = Val(Text1[charge].text());
    PermnTable.Update();
    dao::DBEngine.Idle(dao::RefreshCache);
}

} // namespace analysis
