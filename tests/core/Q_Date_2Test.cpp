#include "core/Q_Date_2.h"

#include "core/calendar.h"
#include "core/globals.h"
#include "support/Accessibility.h"
#include "support/ScriptedDesk.h"

#include <QAccessible>
#include <QTest>
#include <gtest/gtest.h>

using core::PickedDay;
using core::PickedMonth;
using core::PickedYear;
using core::Q_Date_2;

namespace {

class DatePicker : public testing::Test {
protected:
    DatePicker() { core::FillCalendarNames(); }

    Q_Date_2& Show(int day, int month, int year)
    {
        PickedDay = day;
        PickedMonth = month;
        PickedYear = year;
        return desk.Open<Q_Date_2>();
    }

    static int FirstCell(Q_Date_2& picker)
    {
        for (int cell = 1; cell <= Q_Date_2::Cells; ++cell)
            if (picker.SSCommand1[cell].isEnabled())
                return cell;
        return 0;
    }

    ScriptedDesk desk;
};

} // namespace

TEST_F(DatePicker, StartsItsWeeksOnSaturday)
{
    const struct {
        int month, year, firstCell, lastDay;
    } months[] = {
        {6, 2024, 1, 30}, // a Saturday
        {9, 2024, 2, 30}, // a Sunday
        {3, 2024, 7, 31}, // a Friday, cells 7 to 37
        {2, 2024, 6, 29}, {2, 2023, 5, 28},
    };
    for (const auto& month : months) {
        auto& picker = Show(1, month.month, month.year);
        EXPECT_EQ(FirstCell(picker), month.firstCell) << month.month;
        const int lastCell = month.firstCell + month.lastDay - 1;
        EXPECT_EQ(picker.SSCommand1[lastCell].text(), QString::number(month.lastDay));
        EXPECT_EQ(picker.Text2[lastCell].text(), " " + QString::number(month.lastDay));
        if (lastCell < Q_Date_2::Cells) {
            EXPECT_FALSE(picker.SSCommand1[lastCell + 1].isEnabled());
        }
        EXPECT_EQ(picker.Label2.text(), "1");
    }
}

TEST_F(DatePicker, ClampsTheDayAndHidesArrowsAtTheEnds)
{
    auto& picker = Show(31, 1, 2001);
    EXPECT_FALSE(picker.Image2[Q_Date_2::PreviousMonth].isVisible());
    EXPECT_FALSE(picker.Image2[Q_Date_2::PreviousYear].isVisible());
    Click(picker.Image2[Q_Date_2::NextMonth]);
    EXPECT_EQ(PickedDay, 28);
    Click(picker.Image2[Q_Date_2::NextMonth]);
    EXPECT_EQ(PickedMonth, 3);
    EXPECT_EQ(PickedDay, 28); // stays 28 in March
    Click(picker.Image2[Q_Date_2::PreviousMonth]);
    Click(picker.Image2[Q_Date_2::PreviousMonth]);
    EXPECT_EQ(PickedMonth, 1);

    picker.Combo1.SetListIndex(11);
    EXPECT_FALSE(picker.Image2[Q_Date_2::NextMonth].isVisible());
    Press(picker.SSCommand1[10], Qt::Key_PageDown); // no carry into the next year
    EXPECT_EQ(PickedMonth, 12);
    EXPECT_EQ(PickedYear, 2001);
    Click(picker.Image2[Q_Date_2::NextYear]);
    EXPECT_EQ(PickedYear, 2002);
    EXPECT_EQ(FirstCell(picker), 2); // 1 December 2002 is a Sunday
    picker.Combo2.SetListIndex(98);
    EXPECT_EQ(PickedYear, 2099);
    EXPECT_FALSE(picker.Image2[Q_Date_2::NextYear].isVisible());
}

TEST_F(DatePicker, ReturnsTheDateOnAcceptAndNothingOnCancel)
{
    auto& chosen = Show(17, 6, 2008);
    EXPECT_EQ(AccessibilityFaults(chosen), QStringList());
    const int cell = FirstCell(chosen) + 16;
    EXPECT_EQ(chosen.SSCommand1[cell].accessibleName(), "Mar  17/06/2008");
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(&chosen.Text2[cell])->state().invisible); // read once
    Press(chosen.SSCommand1[20], Qt::Key_Down);
    Press(chosen.SSCommand1[20], Qt::Key_Right);
    EXPECT_TRUE(chosen.SSCommand1[FirstCell(chosen) + 24].hasFocus());
    Press(chosen.SSCommand1[20], Qt::Key_Return);
    EXPECT_EQ(core::PickedDate, "25/06/2008");
    EXPECT_EQ(core::DialogResult, core::ResultDone);
    EXPECT_FALSE(chosen.isVisible());

    auto& clicked = Show(17, 6, 2008);
    Click(clicked.SSCommand1[FirstCell(clicked) + 8]);
    EXPECT_EQ(clicked.Label2.text(), "9");
    Click(clicked.Image2[Q_Date_2::AcceptDay]);
    EXPECT_EQ(core::PickedDate, "09/06/2008");

    for (const bool byKey : {true, false}) {
        auto& left = Show(17, 6, 2008);
        byKey ? Press(left, Qt::Key_Escape) : static_cast<void>(left.close());
        EXPECT_EQ(PickedDay, -1);
        EXPECT_EQ(core::PickedDate, "");
        EXPECT_EQ(core::DialogResult, core::ResultPickerCancelled);
    }
}

TEST_F(DatePicker, ClampsYearAndMonthToItsLists)
{
    const struct {
        int day, month, year;
        const char* accepted;
    } presets[] = {{4, 3, 1999, "04/03/2001"},
                   {31, 13, 2100, "31/12/2099"},
                   {31, 0, 2008, "31/01/2008"},
                   {0, 2, 2008, "01/02/2008"}};
    for (const auto& preset : presets) {
        auto& picker = Show(preset.day, preset.month, preset.year);
        Click(picker.Image2[Q_Date_2::AcceptDay]);
        EXPECT_EQ(core::PickedDate, preset.accepted);
    }
}

TEST_F(DatePicker, KeepsTheFocus)
{
    auto& picker = Show(17, 6, 2008);
    const int chosen = FirstCell(picker) + 16;
    EXPECT_TRUE(picker.SSCommand1[chosen].hasFocus());
    for (int step = 0; step < 3; ++step) // June, July, August: no day gets the focus
        Press(picker.Combo1, Qt::Key_Down);
    EXPECT_EQ(PickedMonth, 9);
    EXPECT_EQ(PickedDay, 17);
    EXPECT_TRUE(picker.Combo1.hasFocus());
    Press(picker.Image2[Q_Date_2::NextMonth], Qt::Key_Return);
    Press(picker.Image2[Q_Date_2::NextMonth], Qt::Key_Return);
    EXPECT_EQ(PickedMonth, 11);
    EXPECT_TRUE(picker.isVisible());

    // One tab stop; Enter accepts.
    QWidget* days = &picker.SSCommand1[FirstCell(picker) + 16];
    Press(picker.Combo2, Qt::Key_Tab);
    int stops = 0;
    for (int press = 0; press < 12; ++press) {
        stops += picker.focusWidget()->property("day").toBool() ? 1 : 0;
        if (picker.focusWidget() == days && stops == 1)
            Press(*days, Qt::Key_Up);
        Press(*picker.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(PickedDay, 10);
    EXPECT_LE(stops, 2); // once per round
    picker.SSCommand1[FirstCell(picker) + 9].setFocus();
    Press(*picker.focusWidget(), Qt::Key_PageDown);
    EXPECT_EQ(PickedMonth, 12);
    EXPECT_TRUE(picker.focusWidget()->property("day").toBool());
    Press(*picker.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(core::PickedDate, "10/12/2008");
}

TEST_F(DatePicker, AcceptsADoubleClickOnADayOnly)
{
    auto& picker = Show(17, 6, 2008);
    const int last = FirstCell(picker) + 29;
    QTest::mouseDClick(&picker.SSCommand1[last + 1], Qt::LeftButton);
    EXPECT_TRUE(picker.isVisible());
    Click(picker.SSCommand1[last]);
    QTest::mouseDClick(&picker.SSCommand1[last], Qt::LeftButton);
    EXPECT_FALSE(picker.isVisible());
    EXPECT_EQ(core::PickedDate, "30/06/2008");
}
