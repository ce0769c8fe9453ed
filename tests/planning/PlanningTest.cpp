#include "planning/Planning.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "platform/forms/Colours.h"
#include "support/Accessibility.h"
#include "support/Cells.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Reports.h"
#include "support/ScriptedDesk.h"

#include <gtest/gtest.h>

using forms::Icon;
using planning::Planning;
using tests::RowOf;

namespace {

class Board : public testing::Test {
protected:
    Planning& OpenScreen()
    {
        practice.Open();
        return desk.Open<Planning>();
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

    static QStringList Totals(Planning& board)
    {
        return {board.DayTotals[Planning::ProgrammedTotal].text(), board.DayTotals[Planning::PerformedTotal].text(),
                board.DayTotals[Planning::DifferenceTotal].text()};
    }

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

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(Board, ComparesTheDaysAppointmentsWithItsActs)
{
    practice.Service("Pansement", -1); // first in the lists: unit 3
    practice.Service("Visite", 7);     // unit 4
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
    ASSERT_EQ(board.Grid1.Rows(), 4);
    EXPECT_EQ(RowOf(board.Grid1, 0), QStringList({" Pansement", "2", "3", "-1"}));
    EXPECT_EQ(RowOf(board.Grid1, 1), QStringList({" Consultation", "1", "1", ""}));
    EXPECT_EQ(RowOf(board.Grid1, 2), QStringList({" ECG", "", "", ""}));
    EXPECT_EQ(Totals(board), QStringList({"3", "4", "-1"}));
    EXPECT_EQ(board.Grid1.Row(), 0);
    EXPECT_TRUE(board.Grid1.hasFocus());
    EXPECT_TRUE(IsBoardAlone(board));
    EXPECT_EQ(board.windowTitle(), " ");
    EXPECT_EQ(LabelText(board, "Label1(18)"), "Planning");
    EXPECT_EQ(LabelText(board, "Label1(3)"), "Diff");
    EXPECT_EQ(AccessibilityFaults(board), QStringList());
}

TEST_F(Board, LeavesZeroTotalsBlank)
{
    auto& board = OpenScreen();
    EXPECT_EQ(Totals(board), QStringList({"", "", ""}));

    Appointment("18/06/2008", 1);
    practice.Act({.day = "18/06/2008", .num_presta = 2});
    Click(board.Image2[Planning::DayAfter]);
    EXPECT_EQ(RowOf(board.Grid1, 0), QStringList({" Consultation", "1", "", "1"}));
    EXPECT_EQ(RowOf(board.Grid1, 1), QStringList({" ECG", "", "1", "-1"}));
    EXPECT_EQ(Totals(board), QStringList({"1", "1", ""}));

    Click(board.Image2[Planning::DayBefore]); // cleared from the following day
    EXPECT_EQ(RowOf(board.Grid1, 1), QStringList({" ECG", "", "", ""}));
    EXPECT_EQ(Totals(board), QStringList({"", "", ""}));
}

TEST_F(Board, StepsAcrossTheEndsOfMonthsAndYears)
{
    Appointment("29/02/2008", 2);
    Appointment("29/02/2008", 2);
    auto& board = OpenScreen();
    const QString month = LabelText(board, "Label1(32)");
    const QStringList monthCounts = Counts(board);
    ChooseDay(board, "28/02/2008");
    Press(board.Grid1, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(board.Text5[0].text(), "29/02/2008");
    EXPECT_EQ(board.DayHeading.text(), "Journée du Ven  29/02/2008");
    EXPECT_EQ(Totals(board), QStringList({"2", "", "2"}));
    Click(board.Grid1, 1);
    Press(board.Grid1, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(board.DayHeading.text(), "Journée du Sam  01/03/2008");
    EXPECT_EQ(board.Grid1.Row(), 0);

    ChooseDay(board, "01/01/2008");
    Press(board.Grid1, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(board.DayHeading.text(), "Journée du Lun  31/12/2007");
    EXPECT_EQ(LabelText(board, "Label1(32)"), month); // the month is independent
    EXPECT_EQ(Counts(board), monthCounts);

    ChooseDay(board, "28/02/2100");
    Click(board.Image2[Planning::DayAfter]);
    EXPECT_EQ(board.Text5[0].text(), "01/03/2100");
    ChooseDay(board, "29/02/2100"); // accepted as a date, without rows
    EXPECT_EQ(board.DayHeading.text(), "Journée du Lun  29/02/2100");
    EXPECT_EQ(Totals(board), QStringList({"", "", ""}));
}

TEST_F(Board, RefusesInvalidDatesAndKeepsTheDay)
{
    Appointment("17/06/2008", 1);
    auto& board = OpenScreen();
    for (const char* typed : {"", "17/06", "17/06/200", "31/06/2008", "17/0612008", "17/06//2008"}) {
        SCOPED_TRACE(typed);
        desk.ExpectMessage("Date incorrecte", Icon::Critical, "ATTENTION");
        ChooseDay(board, typed);
        EXPECT_FALSE(IsBoardAlone(board));
        EXPECT_TRUE(board.Text5[0].hasFocus());
        EXPECT_EQ(board.DayHeading.text(), "Journée du Mar  17/06/2008");
        Click(board.Image5[Planning::CancelDay]);
        EXPECT_TRUE(IsBoardAlone(board));
        EXPECT_EQ(board.Text5[0].text(), "17/06/2008");
        EXPECT_EQ(Totals(board), QStringList({"1", "", "1"}));
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
        Appointment("01/06/2008", 2, slot);
    Appointment("30/06/2008", 2, 4);
    Appointment("30/06/2008", 2, dao::Value());
    Appointment("31/05/2008", 2, 4);
    Appointment("01/07/2008", 2, 4);
    Appointment("15/06/2008", 1, 4);
    Appointment("17/06/2008", 1, 10);
    auto& board = OpenScreen();

    EXPECT_EQ(board.Combo1[Planning::UnitChoice].currentIndex(), 1);
    EXPECT_EQ(board.Combo1[Planning::MonthOfYear].currentText(), " Juin                ");
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> ECG");
    EXPECT_EQ(LabelText(board, "Label1(32)"), "Juin 2008");
    EXPECT_EQ(LabelText(board, "HH(0)"), "8");
    EXPECT_EQ(LabelText(board, "HH(9)"), "17");
    EXPECT_EQ(Counts(board), QStringList({"1/0=1", "1/9=2", "30/4=1"}));
    EXPECT_EQ(board.Grid3.Row(), 0);
    EXPECT_EQ(Totals(board), QStringList({"1", "", "1"})); // no slot, but counted as programmed

    Click(board.Grid1, 0); // the day's unit doesn't affect the month
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> ECG");
    ChooseMonth(board, 0, 6, "2008");
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> Consultation");
    EXPECT_EQ(Counts(board), QStringList({"15/4=1"}));
    DoubleClick(board.Grid3, 14);
    EXPECT_TRUE(IsBoardAlone(board));
    EXPECT_EQ(board.Grid3.Row(), 14);
}

TEST_F(Board, LaysOutEveryMonthWithItsDays)
{
    auto& board = OpenScreen();
    const struct {
        int month;
        const char* heading;
        int days;
        const char* lastDay;
    } months[] = {{1, "Janvier 2008", 31, " Jeudi  31"},     {2, "Février 2008", 29, " Vendredi  29"},
                  {3, "Mars 2008", 31, " Lundi  31"},        {4, "Avril 2008", 30, " Mercredi  30"},
                  {5, "Mai 2008", 31, " Samedi  31"},        {6, "Juin 2008", 30, " Lundi  30"},
                  {7, "Juillet 2008", 31, " Jeudi  31"},     {8, "Août 2008", 31, " Dimanche  31"},
                  {9, "Septemb 2008", 30, " Mardi  30"},     {10, "Octobre 2008", 31, " Vendredi  31"},
                  {11, "Novembr 2008", 30, " Dimanche  30"}, {12, "Décembr 2008", 31, " Mercredi  31"}};
    for (const auto& each : months) {
        ChooseMonth(board, 1, each.month, "2008");
        EXPECT_EQ(LabelText(board, "Label1(32)"), each.heading);
        ASSERT_EQ(board.Grid3.Rows(), each.days) << each.heading;
        EXPECT_EQ(board.Grid3.Text(each.days - 1, 0), each.lastDay);
    }
    EXPECT_EQ(board.Grid3.Text(0, Planning::Dates), " Lundi  1");

    // Every fourth year has a 29 February; if the calendar has none, it gets the weekday after the 28th.
    const struct {
        const char* year;
        int days;
        const char* lastDay;
    } februaries[] = {{"1900", 29, " Jeudi  29"},
                      {"2000", 29, " Mardi  29"},
                      {"2100", 29, " Lundi  29"},
                      {"2007", 28, " Mercredi  28"}};
    for (const auto& each : februaries) {
        ChooseMonth(board, 1, 2, each.year);
        ASSERT_EQ(board.Grid3.Rows(), each.days) << each.year;
        EXPECT_EQ(board.Grid3.Text(each.days - 1, 0), each.lastDay);
    }
}

TEST_F(Board, MarksDaysOffAndToday)
{
    auto& board = OpenScreen();
    const auto backgroundOf = [&](int day) {
        return board.Grid3.model()->index(day - 1, 0).data(Qt::BackgroundRole).value<QColor>();
    };
    const QColor none;
    EXPECT_EQ(backgroundOf(17), forms::TheColours().today);
    EXPECT_EQ(backgroundOf(19), none); // Thursday
    EXPECT_EQ(backgroundOf(20), forms::TheColours().weekend);
    EXPECT_EQ(backgroundOf(21), forms::TheColours().weekend);
    EXPECT_EQ(backgroundOf(22), none);
    ChooseMonth(board, 1, 7, "2008");
    EXPECT_EQ(backgroundOf(17), none);
    EXPECT_EQ(backgroundOf(18), forms::TheColours().weekend);
}

TEST_F(Board, RequiresAYearOfFourDigits)
{
    auto& board = OpenScreen();
    for (const char* year : {"", "208", "20080", "2 08", "0000"}) {
        desk.ExpectMessage("Année incorrecte", Icon::Critical, "ATTENTION");
        ChooseMonth(board, 0, 1, year);
        EXPECT_FALSE(IsBoardAlone(board)) << year;
        EXPECT_TRUE(board.Text3.hasFocus());
        Press(board.Text3, Qt::Key_Escape);
        EXPECT_TRUE(IsBoardAlone(board));
    }
    EXPECT_EQ(LabelText(board, "Label1(32)"), "Juin 2008");
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> ECG");
    Click(board.Image1[Planning::ChooseMonth]); // the choice is kept, unapplied
    EXPECT_EQ(board.Combo1[Planning::UnitChoice].currentIndex(), 0);
    EXPECT_EQ(board.Text3.text(), "0000");
    Type(board.Text3, "-2x009 ");
    Press(board.Text3, Qt::Key_Return);
    EXPECT_EQ(LabelText(board, "Label1(32)"), "Janvier 2009");
    EXPECT_EQ(board.SSPanel2.Caption(), "Unité --> Consultation");
}

TEST_F(Board, SelectsNoUnitIfThereIsOneOrNone)
{
    practice.Remove("Presta", 2);
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
    desk.ExpectMessage("Aucune programmation pour cette unité", Icon::None, "");
    Click(board.Image1[Planning::OpenList]);
    ChooseMonth(board, -1, 2, "2009");
    EXPECT_EQ(board.Grid3.Rows(), 28);
}

TEST_F(Board, EndsTheProgramPastSixteenBits)
{
    practice.Open();
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    EXPECT_EQ(other.Run("with recursive n(i) as (select 1 union all select i + 1 from n where i < 32767) "
                        "insert into Plani (date, Num_Presta, HH) select '2008-06-17', 1, 3 from n"),
              SQLITE_OK);
    auto& board = desk.Open<Planning>();
    EXPECT_EQ(Totals(board), QStringList({"32767", "", "32767"}));
    Appointment("17/06/2008", 2);
    desk.ExpectMessage("Erreur d'exécution '6' :\nDépassement de capacité", Icon::Critical, "ZEP Lumo");
    Click(board.Image2[Planning::DayAfter]);
    Click(board.Image2[Planning::DayBefore]);
    EXPECT_TRUE(desk.EndCode().has_value());
}
