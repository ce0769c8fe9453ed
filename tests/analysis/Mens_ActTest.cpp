#include "analysis/Mens_Act.h"
#include "platform/host/Host.h"
#include "support/Accessibility.h"
#include "support/Cells.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/ScriptedDesk.h"

using analysis::Mens_Act;
using forms::Icon;
using tests::RowOf;

namespace {

class MonthlySituation : public testing::Test {
protected:
    Mens_Act& OpenScreen()
    {
        practice.Open();
        return desk.Open<Mens_Act>();
    }

    /// An act whose month and year fields differ from its date.
    void ActOf(int month, int year, const dao::Value& Flag_H = 0, int service = 1)
    {
        practice.Add(
            "Actes",
            {{"Date", "03/01/1999"}, {"MM", month}, {"AA", year}, {"num_presta", service}, {"Flag_H", Flag_H}});
    }

    static QStringList Totals(Mens_Act& screen)
    {
        return {screen.Label4[Mens_Act::Recent].text(), screen.Label4[Mens_Act::Archived].text(),
                screen.Label4[Mens_Act::All].text()};
    }

    static QString MonthShown(Mens_Act& screen)
    {
        return QString("%1 %2").arg(screen.Combo1.currentText(), screen.Text1.text());
    }

    static bool IsLocked(Mens_Act& screen)
    {
        const bool locked = screen.Image2[Mens_Act::Unlock].isVisible();
        EXPECT_EQ(screen.Image2[Mens_Act::Apply].isVisible(), !locked);
        EXPECT_EQ(screen.Image3[Mens_Act::Previous].isVisible(), locked);
        EXPECT_EQ(screen.Image3[Mens_Act::Next].isVisible(), locked);
        EXPECT_EQ(screen.Combo1.isEnabled(), !locked);
        EXPECT_EQ(screen.Text1.isEnabled(), !locked);
        return locked;
    }

    static void Choose(Mens_Act& screen, int month, const QString& year)
    {
        if (IsLocked(screen))
            Click(screen.Image2[Mens_Act::Unlock]);
        screen.Combo1.SetListIndex(month - 1);
        screen.Text1.setText(year);
        Click(screen.Image2[Mens_Act::Apply]);
    }

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(MonthlySituation, CountsActsByMonthFieldsNotByDate)
{
    practice.Service("Radio", -1);
    practice.Add("Presta", {{"Ordre", 2}});
    for (const dao::Value& status :
         {dao::Value(0), dao::Value(0), dao::Value(1), dao::Value(2), dao::Value(-1), dao::Value()})
        ActOf(6, 2008, status);
    ActOf(6, 2008, 1, 2);
    ActOf(6, 2007);
    ActOf(5, 2008);
    practice.Add("Actes", {{"Date", "17/06/2008"}, {"MM", 7}, {"AA", 2008}, {"num_presta", 1}});

    auto& screen = OpenScreen();

    EXPECT_EQ(MonthShown(screen), "Juin 2008");
    EXPECT_EQ(screen.Label1[0].Tag, "17/06/2008");
    ASSERT_EQ(screen.Grid1.Rows(), 4);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({" Radio", "", "", ""}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" Consultation", "2", "4", "6"}));
    EXPECT_EQ(RowOf(screen.Grid1, 2), QStringList({" ECG", "", "1", "1"}));
    EXPECT_EQ(RowOf(screen.Grid1, 3), QStringList({" ", "", "", ""}));
    EXPECT_EQ(Totals(screen), QStringList({"2", "5", "7"}));
    EXPECT_EQ(screen.Grid1.selectionModel()->selectedRows().value(0).row(), 0);
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());

    Click(screen.Image3[Mens_Act::Next]);
    EXPECT_EQ(MonthShown(screen), "Juillet 2008");
    EXPECT_EQ(Totals(screen), QStringList({"1", "", "1"}));
    Click(screen.Image3[Mens_Act::Next]); // an empty month clears the figures
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({" Consultation", "", "", ""}));
    EXPECT_EQ(Totals(screen), QStringList({"", "", ""}));
}

TEST_F(MonthlySituation, ChangesTheMonthOnlyWhenAFourCharacterYearIsApplied)
{
    ActOf(6, 2008);
    ActOf(2, 1987, 1);
    auto& screen = OpenScreen();
    ASSERT_TRUE(IsLocked(screen));
    Press(screen.Grid1, Qt::Key_Escape);
    EXPECT_EQ(MonthShown(screen), "Juin 2008");

    Press(screen.Grid1, Qt::Key_F4);
    ASSERT_FALSE(IsLocked(screen));
    ASSERT_TRUE(screen.Combo1.hasFocus());
    Press(screen.Combo1, Qt::Key_Home);
    Press(screen.Combo1, Qt::Key_Down);
    EXPECT_EQ(Totals(screen), QStringList({"1", "", "1"})); // nothing is applied yet
    for (const char* year : {"20", "", "19870"}) {
        screen.Text1.setText(year);
        desk.ExpectMessage("Année incorrecte", Icon::Critical, "ATTENTION");
        Press(screen.Text1, Qt::Key_Return);
        EXPECT_FALSE(IsLocked(screen)) << year;
        EXPECT_EQ(Totals(screen), QStringList({"1", "", "1"}));
    }
    screen.Text1.selectAll();
    Type(screen.Text1, "a19x87");
    EXPECT_EQ(screen.Text1.text(), "1987");
    Press(screen.Text1, Qt::Key_Return);
    EXPECT_TRUE(IsLocked(screen));
    EXPECT_EQ(MonthShown(screen), "Février 1987");
    EXPECT_EQ(Totals(screen), QStringList({"", "1", "1"}));

    Press(screen.Grid1, Qt::Key_F4);
    Press(screen.Combo1, Qt::Key_End);
    Press(screen.Combo1, Qt::Key_Return); // Enter applies from month and year
    EXPECT_EQ(MonthShown(screen), "Décembre 1987");
    EXPECT_TRUE(screen.Grid1.hasFocus());

    Choose(screen, 6, "0000");
    EXPECT_TRUE(IsLocked(screen));
    EXPECT_EQ(Totals(screen), QStringList({"", "", ""}));
    Choose(screen, 6, " 2008 "); // four characters within blanks
    EXPECT_EQ(Totals(screen), QStringList({"1", "", "1"}));

    Click(screen.Image2[Mens_Act::Unlock]);
    screen.Combo1.SetListIndex(0);
    screen.Text1.setText("1");
    Press(screen.Text1, Qt::Key_Escape); // discards the choice
    EXPECT_TRUE(IsLocked(screen));
    EXPECT_EQ(MonthShown(screen), "Juin  2008 ");
    Press(screen.Grid1, Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    Press(screen.Grid1, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(MonthlySituation, OpensWithItsTotalsUnderTheirColumnsEvenIfEmpty)
{
    auto& screen = OpenScreen();
    for (int column = Mens_Act::Recent; column <= Mens_Act::All; ++column) {
        const QRect cell = screen.Grid1.visualRect(screen.Grid1.model()->index(0, column));
        const int left = screen.Grid1.viewport()->mapTo(&screen, cell.topLeft()).x();
        EXPECT_LE(screen.Label4[column].x(), left) << column;
        EXPECT_GE(screen.Label4[column].geometry().right(), left + cell.width() - 1) << column;
        EXPECT_LT(screen.Label4[column].width(), 2 * cell.width()) << column;
    }
}

TEST_F(MonthlySituation, StepsAcrossTheYearEnd)
{
    ActOf(12, 2009);
    ActOf(1, 2010, 1);
    auto& screen = OpenScreen();

    Choose(screen, 1, "2010");
    EXPECT_EQ(Totals(screen), QStringList({"", "1", "1"}));
    Press(screen.Grid1, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(MonthShown(screen), "Décembre 2009");
    EXPECT_EQ(Totals(screen), QStringList({"1", "", "1"}));
    Press(screen.Grid1, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(MonthShown(screen), "Janvier 2010");
    EXPECT_EQ(Totals(screen), QStringList({"", "1", "1"}));

    Choose(screen, 2, "2009"); // the first year whose January can't be left backwards
    Click(screen.Image3[Mens_Act::Previous]);
    EXPECT_EQ(MonthShown(screen), "Janvier 2009");
    Click(screen.Image3[Mens_Act::Previous]);
    EXPECT_EQ(MonthShown(screen), "Janvier 2009");

    Choose(screen, 12, "9999");
    Click(screen.Image3[Mens_Act::Next]);
    EXPECT_EQ(MonthShown(screen), "Janvier 10000");
}

TEST_F(MonthlySituation, EndsTheProgramPastSixteenBits)
{
    practice.Open();
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    const auto addActs = [&](int count) {
        other.Run(QStringLiteral("insert into Actes (MM, AA, num_presta, Flag_H) with recursive each(n) as "
                                 "(select 1 union all select n + 1 from each where n < %1) "
                                 "select 6, 2008, 1 + n % 2, 1 from each")
                      .arg(count)
                      .toUtf8()
                      .constData());
    };
    addActs(32767);
    auto& screen = desk.Open<Mens_Act>();
    EXPECT_EQ(Totals(screen), QStringList({"", "32767", "32767"}));

    addActs(1);
    EXPECT_EQ(ErrorOf([&] { screen.RefreshMonth(); }), Error::Overflow);
}
