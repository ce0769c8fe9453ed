#include "planning/Planning.h"

#include "platform/forms/Colours.h"
#include "platform/host/Host.h"
#include "support/ScreenTest.h"

using planning::Planning;
using tests::RowOf;

namespace {

/// The units are "ECG" (2), "Radio" (3) and "Consultation" (1), in this order.
class Board : public tests::ScreenTest<Planning> {
protected:
    Board()
    {
        practice.Service("Radio", 1);
        practice.Write("Update Presta set Ordre = (num + 1) % 3");
    }

    void Appointment(const QString& day, int unit, const dao::Value& slot = 0)
    {
        practice.Add("Plani", {{"date", day}, {"Num_Presta", unit}, {"HH", slot}, {"num_patient", 1}});
    }

    /// Opens the panel and types a day.
    static void ChooseDay(Planning& board, const QString& day)
    {
        Click(board.Image1[Planning::ChooseDay]);
        board.Text5[0].setText(day);
        Click(board.Image5[Planning::AcceptDay]);
    }

    static void ChooseMonth(Planning& board, int unit, int month, const QString& year)
    {
        Click(board.Image1[Planning::ChooseMonth]);
        board.Combo1[Planning::UnitChoice].SetListIndex(unit);
        board.Combo1[Planning::MonthOfYear].SetListIndex(month - 1);
        board.Text3.setText(year);
        Click(board.Image7[Planning::AcceptMonth]);
    }

    static QStringList Totals(Planning& board) { return tests::TextsOf(board.DayTotals); }

    static QString LabelText(Planning& board, const char* name)
    {
        const auto* label = board.findChild<forms::Label*>(QLatin1String(name));
        return label != nullptr && label->isVisible() ? label->text() : QString("(none)");
    }

    /// The cells of the month that hold a count, as "day/slot=count".
    static QStringList Counts(const Planning& board)
    {
        QStringList counts;
        for (int row = 0; row < board.Grid3.Rows(); ++row)
            for (int column = 1; column < board.Grid3.Columns(); ++column)
                if (const QString text = board.Grid3.Text(row, column); !text.isEmpty())
                    counts << QString("%1/%2=%3").arg(row + 1).arg(column - 1).arg(text);
        return counts;
    }

    static bool IsBoardAlone(Planning& board)
    {
        const bool alone = board.SSPanel4.isEnabled();
        EXPECT_EQ(board.SSPanel3.isVisible() + board.SSPanel5.isVisible() + board.SSPanel1.isVisible(), alone ? 0 : 1);
        return alone;
    }
};

} // namespace

TEST_F(Board, ComparesTheDaysAppointmentsWithItsActs)
{
    for (const int slot : {0, 9})
        Appointment("17/06/2008", 3, slot);
    Appointment("17/06/2008", 1, 4);
    Appointment("16/06/2008", 1, 4);
    for (int act = 0; act < 3; ++act)
        practice.Act({.flag_R = act, .num_presta = 3, .Flag_H = act % 2}); // in any payment state, archived or not
    practice.Add("Actes", {{"Date", "12/06/2008"}, {"date_Presta", "17/06/2008"}, {"num_presta", 1}});
    practice.Add("Actes", {{"Date", "17/06/2008"}, {"date_Presta", "12/06/2008"}, {"num_presta", 1}});
    practice.Act({.num_presta = 77}); // of no unit

    auto& board = OpenScreen();

    EXPECT_EQ(board.DayHeading.text(), "Journée du Mar  17/06/2008");
    ASSERT_EQ(board.Grid1.Rows(), 3);
    EXPECT_EQ(RowOf(board.Grid1, 0), QStringList({" ECG", "", "", ""}));
    EXPECT_EQ(RowOf(board.Grid1, 1), QStringList({" Radio", "2", "3", "-1"}));
    EXPECT_EQ(RowOf(board.Grid1, 2), QStringList({" Consultation", "1", "1", ""}));
    EXPECT_EQ(Totals(board), QStringList({"3", "4", "-1"}));
    for (int total = Planning::ProgrammedTotal; total <= Planning::DifferenceTotal; ++total)
        EXPECT_TRUE(tests::IsUnder(board.DayTotals[total], board.Grid1,
                                   total - Planning::ProgrammedTotal + Planning::Programmed));
    EXPECT_EQ(tests::HighlightedRow(board.Grid1), 0);
    EXPECT_TRUE(board.Grid1.hasFocus());
    EXPECT_TRUE(IsBoardAlone(board));
    EXPECT_EQ(board.windowTitle(), " ");
    EXPECT_EQ(LabelText(board, "Label1(18)"), "Planning");
    EXPECT_EQ(LabelText(board, "Label1(3)"), "Diff");
    EXPECT_EQ(AccessibilityFaults(board), QStringList());
}

TEST_F(Board, StepsAcrossTheEndsOfMonthsAndYears)
{
    for (int each = 0; each < 2; ++each) {
        Appointment("29/02/2008", 2);
        practice.Act({.day = "29/02/2008"});
    }
    auto& board = OpenScreen();
    const QString month = LabelText(board, "Label1(32)");
    const QStringList monthCounts = Counts(board);
    ChooseDay(board, "28/02/2008");
    Press(board.Grid1, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(board.Text5[0].text(), "29/02/2008");
    EXPECT_EQ(board.DayHeading.text(), "Journée du Ven  29/02/2008");
    EXPECT_EQ(RowOf(board.Grid1, 0), QStringList({" ECG", "2", "", "2"}));
    EXPECT_EQ(RowOf(board.Grid1, 2), QStringList({" Consultation", "", "2", "-2"}));
    EXPECT_EQ(Totals(board), QStringList({"2", "2", ""}));
    Click(board.Grid1, 1);
    Press(board.Grid1, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(board.DayHeading.text(), "Journée du Sam  01/03/2008");
    EXPECT_EQ(RowOf(board.Grid1, 0), QStringList({" ECG", "", "", ""})); // cleared from the day before
    EXPECT_EQ(Totals(board), QStringList({"", "", ""}));
    EXPECT_EQ(board.Grid1.Row(), 0);

    ChooseDay(board, "01/01/2008");
    Press(board.Grid1, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(board.DayHeading.text(), "Journée du Lun  31/12/2007");
    EXPECT_EQ(LabelText(board, "Label1(32)"), month); // the month is independent
    EXPECT_EQ(Counts(board), monthCounts);

    ChooseDay(board, "28-02//2100");
    Click(board.Image2[Planning::DayAfter]);
    EXPECT_EQ(board.Text5[0].text(), "01/03/2100");
    ChooseDay(board, "29/02/2100"); // accepted as a date, without rows
    EXPECT_EQ(board.DayHeading.text(), "Journée du Lun  29/02/2100");
}

TEST_F(Board, RefusesInvalidDatesAndKeepsTheDay)
{
    auto& board = OpenScreen();
    for (const char* typed : {"", "17/06/200", "31/06/2008", "1x/06/2008"}) {
        ExpectRefusal("Date incorrecte");
        ChooseDay(board, typed);
        EXPECT_FALSE(IsBoardAlone(board)) << typed;
        EXPECT_TRUE(board.Text5[0].hasFocus());
        Click(board.Image5[Planning::CancelDay]);
        EXPECT_TRUE(IsBoardAlone(board));
        EXPECT_EQ(board.Text5[0].text(), "17/06/2008");
        EXPECT_EQ(board.DayHeading.text(), "Journée du Mar  17/06/2008");
    }
}

TEST_F(Board, AcceptsADayFromTheKeyboard)
{
    Appointment("20/06/2008", 1);
    auto& board = OpenScreen();
    Press(board.Grid1, Qt::Key_F4);
    EXPECT_FALSE(IsBoardAlone(board));
    EXPECT_EQ(board.SSPanel3.Caption(), "  Journée du :");
    ASSERT_TRUE(board.Text5[0].hasFocus());
    EXPECT_EQ(board.Text5[0].selectedText(), "17/06/2008");
    Type(board.Text5[0], "31062008");
    Press(board.Text5[0], Qt::Key_Tab); // on leaving: validated, cleared and focused again
    EXPECT_EQ(desk.BeepCount(), 1);
    EXPECT_EQ(board.Text5[0].text(), "");
    EXPECT_TRUE(board.Text5[0].hasFocus());
    Type(board.Text5[0], "20062008");
    Press(board.Text5[0], Qt::Key_Return);
    EXPECT_TRUE(IsBoardAlone(board));
    EXPECT_TRUE(board.Grid1.hasFocus());
    EXPECT_EQ(Totals(board), QStringList({"1", "", "1"}));

    Press(board.Grid1, Qt::Key_F4);
    Type(board.Text5[0], "21062008"); // a valid one, cancelled
    Press(board.Text5[0], Qt::Key_Escape);
    EXPECT_TRUE(IsBoardAlone(board));
    EXPECT_EQ(board.Text5[0].text(), "20/06/2008");
    Press(board.Grid1, Qt::Key_Escape);
    EXPECT_TRUE(board.isVisible());
    Press(board.Grid1, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(board.isVisible());
}

TEST_F(Board, CountsTheMonthOfTheSecondUnitBySlot)
{
    for (const int slot : {0, 9, 9, -1, 10})
        Appointment("01/06/2008", 3, slot);
    Appointment("30/06/2008", 3, 4);
    Appointment("30/06/2008", 3, dao::Value());
    Appointment("31/05/2008", 3, 4);
    Appointment("01/07/2008", 3, 4);
    Appointment("15/06/2008", 1, 4);
    Appointment("14/06/2008", 2, 4);
    Appointment("17/06/2008", 1, 10);
    auto& board = OpenScreen();

    EXPECT_EQ(board.Combo1[Planning::UnitChoice].currentIndex(), 1);
    EXPECT_EQ(board.Combo1[Planning::MonthOfYear].currentText(), " Juin                ");
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> Radio");
    EXPECT_EQ(LabelText(board, "Label1(32)"), "Juin 2008");
    EXPECT_EQ(LabelText(board, "HH(0)"), "8");
    EXPECT_EQ(LabelText(board, "HH(9)"), "17");
    const QStringList radio{"1/0=1", "1/9=2", "30/4=1"};
    EXPECT_EQ(Counts(board), radio);
    EXPECT_EQ(tests::HighlightedRow(board.Grid3), 0);
    EXPECT_EQ(Totals(board), QStringList({"1", "", "1"})); // no slot, but counted as programmed

    Click(board.Grid1, 2); // the day's unit doesn't affect the month, nor does another order
    practice.Write("Update Presta set Ordre = 9 where num = 3");
    Click(board.Image2[Planning::DayBefore]);
    ChooseMonth(board, 1, 6, "2008");
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> Radio");
    EXPECT_EQ(Counts(board), radio);
    ChooseMonth(board, 2, 6, "2008");
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> Consultation");
    EXPECT_EQ(Counts(board), QStringList({"15/4=1"}));
    ASSERT_TRUE(board.Grid3.hasFocus()); // the keys move in the table that was chosen
    Press(board.Grid3, Qt::Key_Down);
    EXPECT_EQ(tests::HighlightedRow(board.Grid3), 1);
    DoubleClick(board.Grid3, 14);
    EXPECT_TRUE(IsBoardAlone(board));
    EXPECT_EQ(board.Grid3.Row(), 14);
    ChooseDay(board, "15/06/2008");
    ASSERT_TRUE(board.Grid1.hasFocus());
    Press(board.Grid1, Qt::Key_Down);
    EXPECT_EQ(tests::HighlightedRow(board.Grid1), 1);
}

TEST_F(Board, LaysOutEveryMonthWithItsDays)
{
    auto& board = OpenScreen();
    // Every fourth year has a 29 February; if the calendar has none, it gets the weekday after the 28th.
    const struct {
        int month;
        const char *year, *heading, *lastDay;
    } months[] = {{1, "2008", "Janvier", " Jeudi  31"},     {2, "2008", "Février", " Vendredi  29"},
                  {3, "2008", "Mars", " Lundi  31"},        {4, "2008", "Avril", " Mercredi  30"},
                  {5, "2008", "Mai", " Samedi  31"},        {6, "2008", "Juin", " Lundi  30"},
                  {7, "2008", "Juillet", " Jeudi  31"},     {8, "2008", "Août", " Dimanche  31"},
                  {9, "2008", "Septemb", " Mardi  30"},     {10, "2008", "Octobre", " Vendredi  31"},
                  {11, "2008", "Novembr", " Dimanche  30"}, {12, "2008", "Décembr", " Mercredi  31"},
                  {2, "1900", "Février", " Jeudi  29"},     {2, "2000", "Février", " Mardi  29"},
                  {2, "2100", "Février", " Lundi  29"},     {2, "2007", "Février", " Mercredi  28"}};
    for (const auto& each : months) {
        ChooseMonth(board, 1, each.month, each.year);
        EXPECT_EQ(LabelText(board, "Label1(32)"), QString(each.heading) + " " + each.year);
        ASSERT_EQ(board.Grid3.Rows(), QString(each.lastDay).last(2).toInt()) << each.heading << each.year;
        EXPECT_EQ(board.Grid3.Text(board.Grid3.Rows() - 1, Planning::Dates), each.lastDay);
    }
    EXPECT_EQ(board.Grid3.Text(0, Planning::Dates), " Jeudi  1");
}

TEST_F(Board, MarksDaysOffAndTodayEvenIfItIsOne)
{
    const forms::Colours& colours = forms::TheColours();
    for (const int today : {17, 20}) { // a Tuesday, a Friday
        host::FixToday(QDate(2008, 6, today));
        auto& board = OpenScreen();
        const auto backgroundOf = [&](int day) {
            return board.Grid3.model()->index(day - 1, 0).data(Qt::BackgroundRole).value<QColor>();
        };
        EXPECT_EQ(backgroundOf(today), colours.today);
        EXPECT_EQ(backgroundOf(19), QColor()); // Thursday
        EXPECT_EQ(backgroundOf(13), colours.weekend);
        EXPECT_EQ(backgroundOf(21), colours.weekend);
        EXPECT_EQ(backgroundOf(22), QColor());
        ChooseMonth(board, 1, 7, "2008");
        EXPECT_EQ(backgroundOf(17), QColor());
        EXPECT_EQ(backgroundOf(18), colours.weekend);
    }
}

TEST_F(Board, RequiresAYearOfFourDigits)
{
    auto& board = OpenScreen();
    for (const char* year : {"", "208", "20080", "2 08", "0000"}) {
        ExpectRefusal("Année incorrecte");
        ChooseMonth(board, 0, 1, year);
        EXPECT_FALSE(IsBoardAlone(board)) << year;
        EXPECT_TRUE(board.Text3.hasFocus());
        Press(board.Text3, Qt::Key_Escape);
        EXPECT_TRUE(IsBoardAlone(board));
    }
    EXPECT_EQ(LabelText(board, "Label1(32)"), "Juin 2008");
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> Radio");
    Click(board.Image1[Planning::ChooseMonth]); // the choice is kept, unapplied
    EXPECT_EQ(board.Combo1[Planning::UnitChoice].currentIndex(), 0);
    EXPECT_EQ(board.Text3.text(), "0000");
    Type(board.Text3, "-2x009 ");
    Press(board.Text3, Qt::Key_Return);
    EXPECT_EQ(LabelText(board, "Label1(32)"), "Janvier 2009");
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> ECG");
}

TEST_F(Board, SelectsNoUnitIfThereIsOneOrNone)
{
    practice.Remove("Presta", 2);
    practice.Remove("Presta", 3);
    Appointment("17/06/2008", 1);
    practice.Add("Plani", {{"date", "17/06/2008"}, {"Num_Presta", 0}, {"HH", 2}}); // of no unit at all
    {
        auto& board = OpenScreen();
        EXPECT_EQ(board.Combo1[Planning::UnitChoice].currentIndex(), -1);
        EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> ");
        EXPECT_EQ(board.Grid3.Rows(), 30);
        EXPECT_EQ(Counts(board), QStringList());
        ChooseMonth(board, 0, 6, "2008");
        EXPECT_EQ(Counts(board), QStringList({"17/0=1"}));
        board.close();
    }
    practice.Remove("Presta", 1);
    auto& board = desk.Open<Planning>();
    EXPECT_EQ(board.Grid1.Rows(), 1);
    EXPECT_EQ(RowOf(board.Grid1, 0), QStringList({"", "", "", ""}));
    EXPECT_EQ(board.Grid3.Rows(), 30);
    Click(board.Image2[Planning::DayAfter]);
    desk.ExpectMessage("Aucune programmation pour cette unité", forms::Icon::None, "");
    Click(board.Image1[Planning::OpenList]);
    ChooseMonth(board, -1, 2, "2009");
    EXPECT_EQ(board.Grid3.Rows(), 28);
}
