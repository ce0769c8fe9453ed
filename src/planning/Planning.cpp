#include "planning/Planning.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "core/lists.h"
#include "core/windows.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/forms/KeyFilters.h"
#include "platform/host/Host.h"

#include <algorithm>

using namespace basic;
using namespace core;
using namespace forms;

namespace planning {

namespace {

constexpr int HourSlotCount = 10;
constexpr int CountTwips = 590;
constexpr int SlotTwips = 340;
constexpr int MonthNameWidth = 20;
constexpr int MonthHeadingWidth = 7; // characters of the month's name in the group heading

/// Friday and Saturday, the weekend in Algeria, as Weekday() numbers them.
constexpr int DaysOff[] = {6, 7};

bool IsDayOff(const QDate& date)
{
    return std::ranges::find(DaysOff, Weekday(date)) != std::end(DaysOff);
}

QList<Grid::Column> MonthColumns()
{
    QList<Grid::Column> columns{{"Dates", 1690}};
    for (int hour = 8; hour < 8 + HourSlotCount; ++hour)
        columns << Grid::Column{PlainText(hour), SlotTwips, Qt::AlignCenter};
    return columns;
}

bool IsYear(const QString& text)
{
    constexpr int digits = 4;
    return text.size() == digits && std::ranges::all_of(text, [](QChar each) { return IsDigit(each); }) &&
           IsDate("01/01/" + text);
}

Int16 CountIn(const Grid& grid, int row, int column)
{
    return RoundToInt(Val(grid.Text(row, column)));
}

} // namespace

Planning::Planning()
    : Form("Planning"), Grid1("Grid1", {{"Unité", 1920},
                                        {"Prog", CountTwips, Qt::AlignCenter},
                                        {"Réal", CountTwips, Qt::AlignCenter},
                                        {"Diff", CountTwips, Qt::AlignCenter}}),
      Grid3("Grid3", MonthColumns()), Grid2("Grid2", {{"N°", 600, Qt::AlignCenter},
                                                      {"Heure", 930, Qt::AlignCenter},
                                                      {"Nom", 2020},
                                                      {"Prénom", 2020},
                                                      {"Tél", 1530},
                                                      {"Ville", 1440},
                                                      {"N° Carte", 1430, Qt::AlignCenter}})
{
    BuildForm();
    Text5[0].SelectedOnFocus = DateLength;
    Text3.KeyPress = KeyFilterDigits;
    On(Grid1, &Grid::Click, *this, &Planning::Grid1_Click);
    On(Grid1, &Grid::DblClick, *this, &Planning::Grid1_DblClick);
    On(Grid1, &Grid::Entered, *this, &Planning::Grid1_DblClick);
    On(Grid2, &Grid::Click, *this, &Planning::Grid2_Click);
    On(Grid2, &Grid::DblClick, *this, &Planning::Grid2_DblClick);
    On(Grid2, &Grid::Entered, *this, &Planning::Grid2_DblClick);
    On(Grid3, &Grid::Click, *this, &Planning::Grid3_Click);
    OnEach(Image1, &Picture::clicked, *this, &Planning::Image1_Click);
    OnEach(Image2, &Picture::clicked, *this, &Planning::Image2_Click);
    OnEach(Image4, &Picture::clicked, *this, &Planning::Image4_Click);
    OnEach(Image5, &Picture::clicked, *this, &Planning::Image5_Click);
    OnEach(Image7, &Picture::clicked, *this, &Planning::Image7_Click);
    for (const int option : {CurrentUnit, AllUnits})
        On(SSOption1[option], &OptionButton::Entered, *this, [this] { Image4_Click(Print); });
    OfferCalendar(Text5[0]);
    On(Text5[0], &DateField::Entered, *this, [this] { Image5_Click(AcceptDay); });
    On(Text5[0], &DateField::DateRefused, *this, [this] { Text5[0].setFocus(); });
    On(Text3, &TextBox::Entered, *this, [this] { Image7_Click(AcceptMonth); });
    OnCommand(Command::Leave, [this] { Unload(); }); // the board's picture is disabled behind a panel
}

void Planning::Form_Load()
{
    setWindowTitle(" ");
    CenterForm(*this);
    Text5[0].setText(DateText(host::Today()));
    LoadPlanningLists();
    RefreshDay();
    Image7_Click(AcceptMonth);
    Grid1.setFocus();
}

// -- the board

void Planning::Image1_Click(int index)
{
    Image1[index].SetBorder(false);
    switch (index) {
    case ChooseDay:
        Text5[0].Tag = Text5[0].text();
        return OpenOverBoard(SSPanel3, Text5[0]);
    case OpenList:
        return ShowDayList();
    case ChooseMonth:
        return OpenOverBoard(SSPanel5, Combo1[UnitChoice]);
    default:
        Unload();
    }
}

void Planning::Image2_Click(int index)
{
    const int step = index == DayBefore ? -1 : 1;
    Text5[0].setText(DateText(AddDays(DateValue(Text5[0].text().trimmed()), step)));
    RefreshDay();
}

void Planning::Image5_Click(int index)
{
    Image5[index].SetBorder(false);
    if (index == CancelDay) {
        Text5[0].setText(Text5[0].Tag);
    } else {
        Image5[AcceptDay].setFocus(); // validates a date that is still being typed
        if (!RefreshDay())
            return Text5[0].setFocus();
    }
    CloseOverBoard(SSPanel3, Grid1);
}

void Planning::Image7_Click(int index)
{
    Image7[index].SetBorder(false);
    if (index == AcceptMonth) {
        if (!IsYear(Text3.text().trimmed())) {
            MsgBox("Année incorrecte", Icon::Critical, "ATTENTION");
            return Text3.setFocus();
        }
        ShowMonth();
    }
    CloseOverBoard(SSPanel5, Grid3);
}

void Planning::EscapePressed()
{
    if (SSPanel3.isVisibleTo(this))
        Image5_Click(CancelDay);
    else if (SSPanel5.isVisibleTo(this))
        Image7_Click(CancelMonth);
    else if (SSPanel6.isVisibleTo(this))
        Image4_Click(CancelPrint);
    else if (SSPanel1.isVisibleTo(this))
        Image4_Click(CloseList);
}

void Planning::Grid1_Click()
{
    Grid1.SelectRow(Grid1.Row());
}

void Planning::Grid1_DblClick()
{
    Grid1_Click();
    ShowDayList();
}

void Planning::Grid3_Click()
{
    Grid3.SelectRow(Grid3.Row());
}

void Planning::OpenOverBoard(QWidget& panel, QWidget& firstField)
{
    SSPanel4.setEnabled(false);
    FloatOver(panel, SSPanel4);
    firstField.setFocus();
}

void Planning::CloseOverBoard(QWidget& panel, QWidget& next)
{
    panel.hide();
    SSPanel4.setEnabled(true);
    next.setFocus();
}

void Planning::LoadPlanningLists()
{
    Combo1[UnitChoice].clear();
    List2.DropKeys();
    QueryText = "select * from Presta order by ordre";
    dao::Recordset units = TheDatabase.OpenRecordset(QueryText);
    for (; !units.IsEOF(); units.MoveNext()) {
        const QString name = " " + TextOrNothing(units["denom"]);
        Combo1[UnitChoice].addItem(name);
        Grid1.SetText(List2.Add(units["num"].Key()), Unit, name);
    }
    if (List2.Count() > 1)
        Combo1[UnitChoice].SetListIndex(1);

    for (const QString& month : MonthNames)
        Combo1[MonthOfYear].addItem(" " + FixedText(month.trimmed(), MonthNameWidth));
    List4 = HourSlots();
    const QString today = Text5[0].text().trimmed();
    Text3.setText(today.right(4));
    Combo1[MonthOfYear].SetListIndex(today.mid(3, 2).toInt() - 1);
}

// -- the day

bool Planning::RefreshDay()
{
    const auto day = TypedDay(Text5[0].text());
    if (!day) {
        MsgBox("Date incorrecte", Icon::Critical, "ATTENTION");
        return false;
    }
    if (Text5[0].text() != *day)
        Text5[0].setText(*day);
    DayDateUS = QueryDate(*day);
    DayHeading.setText("Journée du " + DayCaption(*day).trimmed());
    CountDayByUnit();
    return true;
}

void Planning::CountDayByUnit()
{
    for (int row = 0; row < Grid1.Rows(); ++row)
        for (const int column : {Programmed, Performed, Difference})
            Grid1.SetText(row, column, "");
    const dao::ReadTransaction oneState(TheDatabase);
    CountUnits(Programmed, "Plani where date");
    CountUnits(Performed, "Actes where date_Presta");
    Grid1.SetRow(0);
    TotalDayCounts();
    Grid1_Click();
}

void Planning::CountUnits(int column, const QString& dayOfTable)
{
    for (int row = 0; row < List2.Count(); ++row) {
        QueryText = "select count(num) as S1 from " + dayOfTable + " =#" + DayDateUS +
                    "# and num_presta = " + QString::number(List2.KeyOf(row));
        const int count = TheDatabase.OpenRecordset(QueryText)["S1"].Long();
        if (count > 0)
            Grid1.SetText(row, column, PlainText(count));
    }
}

void Planning::TotalDayCounts()
{
    Int16 programmedTotal, performedTotal, differenceTotal;
    for (int row = 0; row < Grid1.Rows(); ++row) {
        const Int16 programmed = CountIn(Grid1, row, Programmed);
        const Int16 performed = CountIn(Grid1, row, Performed);
        const Int16 difference = programmed - performed; // positive where acts are missing
        programmedTotal += programmed;
        performedTotal += performed;
        differenceTotal += difference;
        if (difference != 0)
            Grid1.SetText(row, Difference, PlainText(difference));
    }
    DayTotals[ProgrammedTotal].setText(programmedTotal > 0 ? PlainText(programmedTotal) : QString());
    DayTotals[PerformedTotal].setText(performedTotal > 0 ? PlainText(performedTotal) : QString());
    DayTotals[DifferenceTotal].setText(differenceTotal != 0 ? PlainText(differenceTotal) : QString());
}

// -- the month

void Planning::ShowMonth()
{
    PrepareMonthGrid();
    FillMonthCounts();
}

void Planning::PrepareMonthGrid()
{
    const int month = Combo1[MonthOfYear].currentIndex() + 1;
    SSPanel2.SetCaption("Unité --> " + Combo1[UnitChoice].currentText().trimmed());
    Grid3.SetHeading(Dates, Combo1[MonthOfYear].currentText().trimmed().left(MonthHeadingWidth) + " " +
                                Text3.text().trimmed());
    const int days = DaysInMonth(month, RoundToInt(Val(Text3.text())));
    Grid3.ClearToOneRow();
    Grid3.SetRows(days);
    Grid3.SetCol(Dates);
    for (int day = 1; day <= days; ++day) {
        const QString text = MonthDay(day);
        Grid3.SetText(day - 1, Dates, " " + LongDayName(text) + "  " + PlainText(day));
        const QDate date = DateValue(text);
        if (date == host::Today())
            Grid3.SetRowBackground(day - 1, Grid::Background::Today);
        else if (IsDayOff(date))
            Grid3.SetRowBackground(day - 1, Grid::Background::DayOff);
    }
}

/// A day of the chosen month as dd/mm/yyyy.
QString Planning::MonthDay(int day)
{
    return QStringLiteral("%1/%2/%3")
        .arg(day, 2, 10, QLatin1Char('0'))
        .arg(Combo1[MonthOfYear].currentIndex() + 1, 2, 10, QLatin1Char('0'))
        .arg(Text3.text().trimmed());
}

void Planning::FillMonthCounts()
{
    const int choice = Combo1[UnitChoice].currentIndex();
    const QString unit = QString::number(List2.Keys().value(choice));
    const dao::ReadTransaction oneState(TheDatabase);
    for (int row = 0; choice >= 0 && row < Grid3.Rows(); ++row) {
        const QString ofDay = "select count(num) as S1 from Plani where Num_Presta = " + unit + " and date =#" +
                              QueryDate(MonthDay(row + 1)) + "# and HH = ";
        for (int slot = 0; slot < HourSlotCount; ++slot) {
            QueryText = ofDay + QString::number(slot);
            const int count = TheDatabase.OpenRecordset(QueryText)["S1"].Long();
            if (count > 0)
                Grid3.SetText(row, FirstHour + slot, PlainText(count));
        }
    }
    Grid3.SetRow(0);
    Grid3_Click();
}

} // namespace planning
