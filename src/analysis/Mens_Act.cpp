#include "analysis/Mens_Act.h"

#include "core/globals.h"
#include "core/lists.h"
#include "core/screens.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/host/Host.h"

using namespace basic;
using namespace core;
using namespace forms;

namespace analysis {

namespace {

constexpr int January = 1;
constexpr int December = 12;
constexpr int YearLength = 4;
constexpr int FirstYearWithStepBack = 2010; ///< in January of an earlier year, stepping back does nothing

constexpr int UnitTwips = 1780;
constexpr int CountTwips = 840;

} // namespace

Mens_Act::Mens_Act()
    : Form("Mens_Act", "Situation mensuelle"), Grid1("Grid1", {{"Unité", UnitTwips},
                                                               {"Réc.", CountTwips, Qt::AlignCenter},
                                                               {"Arch.", CountTwips, Qt::AlignCenter},
                                                               {"Total", CountTwips, Qt::AlignCenter}})
{
    BuildForm();
    constexpr int selectedOnFocus = 10;
    Text1.SelectedOnFocus = selectedOnFocus;
    On(Grid1, &Grid::Click, *this, &Mens_Act::Grid1_Click);
    OnEach(Image2, &Picture::clicked, *this, &Mens_Act::Image2_Click);
    OnEach(Image3, &Picture::clicked, *this, &Mens_Act::Image3_Click);
    On(Image4, &Picture::clicked, *this, OpenEvolution);
    On(Image1, &Picture::clicked, *this, &Mens_Act::Unload);
    On(Text1, &TextBox::Entered, *this, [this] { Image2_Click(Apply); });
    On(Combo1, &ComboBox::Entered, *this, [this] { Image2_Click(Apply); });
}

void Mens_Act::Form_Load()
{
    CenterForm(*this);
    setWindowTitle(" ");
    for (const QString& name : MonthNames)
        Combo1.addItem(name.trimmed());
    const QDate today = host::Today();
    Label1[Month].Tag = DateText(today); // for automation: nothing in the program reads it
    MonthNumber = today.month();
    Combo1.SetListIndex(MonthNumber - 1);
    YearNumber = today.year();
    Text1.setText(PlainText(YearNumber));
    SetChoiceOpen(false);
    RefreshMonth();
    Grid1.setFocus();
}

void Mens_Act::Image2_Click(int index)
{
    if (index == Apply)
        return ApplyChoice();
    Text1.Tag = Text1.text();
    SetChoiceOpen(true);
    Combo1.setFocus();
}

void Mens_Act::Image3_Click(int index)
{
    if (index == Previous)
        ShowMonthBefore();
    else
        ShowMonthAfter();
}

void Mens_Act::Grid1_Click()
{
    Grid1.SelectRow(Grid1.Row());
}

/// Discards a choice that wasn't applied.
void Mens_Act::EscapePressed()
{
    if (!Text1.isEnabled())
        return;
    Combo1.SetListIndex(MonthNumber - 1);
    Text1.setText(Text1.Tag);
    SetChoiceOpen(false);
    Grid1.setFocus();
}

void Mens_Act::SetChoiceOpen(bool open)
{
    Combo1.setEnabled(open);
    Text1.setEnabled(open);
    Image2[Unlock].setVisible(!open);
    Image2[Apply].setVisible(open);
    Image3[Previous].setVisible(!open);
    Image3[Next].setVisible(!open);
}

void Mens_Act::ApplyChoice()
{
    if (Text1.text().trimmed().size() != YearLength) {
        MsgBox("Année incorrecte", Icon::Critical, "ATTENTION");
        Text1.setFocus();
        return;
    }
    SetChoiceOpen(false);
    MonthNumber = Combo1.currentIndex() + 1;
    YearNumber = RoundToInt(Val(Text1.text()));
    RefreshMonth();
    Grid1.setFocus();
}

void Mens_Act::ShowMonthBefore()
{
    if (MonthNumber > January) {
        --MonthNumber;
    } else {
        if (Val(Text1.text()) < FirstYearWithStepBack)
            return;
        MonthNumber = December;
        --YearNumber;
        Text1.setText(PlainText(YearNumber));
    }
    Combo1.SetListIndex(MonthNumber - 1);
    RefreshMonth();
}

void Mens_Act::ShowMonthAfter()
{
    if (MonthNumber < December) {
        ++MonthNumber;
    } else {
        MonthNumber = January;
        ++YearNumber;
        Text1.setText(PlainText(YearNumber));
    }
    Combo1.SetListIndex(MonthNumber - 1);
    RefreshMonth();
}

void Mens_Act::ClearMonth()
{
    Services.Clear();
    for (int column = Recent; column <= All; ++column)
        Label4[column].setText("");
    TotalRecent = TotalArchived = TotalAll = 0;
}

void Mens_Act::RefreshMonth()
{
    ClearMonth();
    const dao::ReadTransaction oneState(TheDatabase);
    QueryText = "Select * from Presta order by ordre";
    UnitRecords = TheDatabase.OpenRecordset(QueryText);
    const Hourglass pointer;
    for (; !UnitRecords.IsEOF(); UnitRecords.MoveNext())
        FillUnitRow();
    Grid1.SetRow(0);
    Grid1_Click();
    ShowTotals();
}

void Mens_Act::FillUnitRow()
{
    const int row = Services.Add(UnitRecords["num"].Key());
    Grid1.SetText(row, Unit, " " + TextOrNothing(UnitRecords["denom"]));
    if (const int all = CountActs(""); all > 0)
        Grid1.SetText(row, All, PlainText(all));
    if (const int recent = CountActs(" and flag_H = 0"); recent > 0)
        Grid1.SetText(row, Recent, PlainText(recent));
}

/// The acts of the month and the current unit that meet a further condition.
int Mens_Act::CountActs(const QString& condition)
{
    QueryText = QStringLiteral("select count(num) as S1 from Actes where MM =%1 and AA = %2%3 and num_presta = %4")
                    .arg(MonthNumber)
                    .arg(YearNumber)
                    .arg(condition)
                    .arg(UnitRecords["num"].Key());
    CountRecords = TheDatabase.OpenRecordset(QueryText);
    return CountRecords["S1"].Long();
}

void Mens_Act::ShowTotals()
{
    // Summed from the grid, where an empty cell counts as 0.
    for (int row = 0; row < Services.Count(); ++row) {
        const Int16 all = RoundToInt(Val(Grid1.Text(row, All)));
        const Int16 recent = RoundToInt(Val(Grid1.Text(row, Recent)));
        TotalAll += all;
        TotalRecent += recent;
        if (all > recent)
            Grid1.SetText(row, Archived, PlainText(all - recent));
    }
    TotalArchived = TotalAll - TotalRecent;
    const struct {
        CountColumn column;
        Int16 total;
    } totals[] = {{Recent, TotalRecent}, {Archived, TotalArchived}, {All, TotalAll}};
    for (const auto& [column, total] : totals)
        if (total > 0)
            Label4[column].setText(PlainText(total));
}

} // namespace analysis
