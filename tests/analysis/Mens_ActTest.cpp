#include "analysis/Mens_Act.h"
#include "support/ScreenTest.h"
#include "support/Statements.h"

using analysis::Mens_Act;
using tests::RowOf;

namespace {

class MonthlySituation : public tests::ScreenTest<Mens_Act> {
protected:
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
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), 0);
    EXPECT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    for (int column = Mens_Act::Recent; column <= Mens_Act::All; ++column)
        EXPECT_TRUE(tests::IsUnder(screen.Label4[column], screen.Grid1, column)) << column;

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
        ExpectRefusal("Année incorrecte");
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

TEST_F(MonthlySituation, IsCountedInOneStateWhileAnotherProgramArchives)
{
    for (const int service : {1, 1, 2})
        ActOf(6, 2008, 0, service);
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    int counts = 0;
    const tests::BeforeStatements archiving([&](const QString& statement) {
        if (statement.contains("count(") && statement.contains("flag_H", Qt::CaseInsensitive) &&
            ++counts == 1) // between the acts of a service and its recent ones
            other.Run("update Actes set Flag_H = 1");
    });
    auto& screen = OpenScreen();
    EXPECT_EQ(counts, 2);
    EXPECT_EQ(Totals(screen), QStringList({"3", "", "3"}));
    screen.RefreshMonth();
    EXPECT_EQ(Totals(screen), QStringList({"", "3", "3"}));
}
