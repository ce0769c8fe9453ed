#include "analysis/Chrges.h"
#include "support/ScreenTest.h"

#include <QClipboard>
#include <QGuiApplication>

using analysis::Chrges;
using forms::Icon;

namespace {

constexpr const char* AllCharges =
    "select Charge1, Charge2, Charge3, Charge4, Charge5, Charge6, Charge7, Charge8, Charge9 from Permn";

class RunningCharges : public tests::ScreenTest<Chrges> {
protected:
    static QStringList Texts(Chrges& screen) { return tests::TextsOf(screen.Text1); }

    /// By its picture or by a key with Ctrl.
    void Store(Chrges& screen, Qt::Key key = Qt::Key_unknown)
    {
        desk.ExpectMessage("Sauvegarde en cours", Icon::None, "");
        if (key == Qt::Key_unknown)
            Click(screen.Image1[Chrges::Store]);
        else
            Press(screen.Text1[Chrges::Rent], key, Qt::ControlModifier);
        EXPECT_FALSE(screen.isVisible());
    }

    QString Stored() { return tests::RowsOf(practice, AllCharges).join('\n'); }
};

} // namespace

TEST_F(RunningCharges, CreatesTheMissingRowWithItsRatesOnce)
{
    practice.Write("delete from Permn");
    auto& screen = OpenScreen();

    EXPECT_EQ(Texts(screen).join(""), "");
    EXPECT_EQ(tests::RowsOf(practice, "select Registre, Id_Fiscale, Article, Telephone, Fax, Compte, Charge1, Charge9, "
                                      "Taux_CNAS, Taux_PP, Taux_VF from Permn"),
              QStringList(" | | | | | |-|-|9|25.5|6"));
    core::PermnTable.MoveFirst(); // the handle shared by all screens
    EXPECT_EQ(core::PermnTable["Taux_PP"].Double(), 25.5);

    screen.Unload();
    desk.Open<Chrges>();
    EXPECT_EQ(practice.Ask("select count(Taux_PP) from Permn").Long(), 1);
}

TEST_F(RunningCharges, ShowsTheComputedSumInsteadOfTheStoredOne)
{
    practice.Write("Update Permn set Charge1 = 123456789.5, Charge2 = 0, Charge3 = -6789.125, Charge4 = 12, "
                   "Charge8 = 77, Charge9 = 4.5");
    auto& screen = OpenScreen();

    EXPECT_EQ(Texts(screen),
              QStringList({"123456789.50", ".00", "-6789.13", "12.00", "", "", "", "123 450 012.37", "4.50"}));
    EXPECT_TRUE(screen.Text1[Chrges::Salaries].hasFocus());
    for (const int total : {Chrges::MonthlyTotal, Chrges::DailyTotal}) { // can be copied, but not changed
        Type(screen.Text1[total], "1");
        Press(screen.Text1[total], Qt::Key_A, Qt::ControlModifier);
        Press(screen.Text1[total], Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), Texts(screen)[total - Chrges::Salaries]);
        EXPECT_NE(QGuiApplication::clipboard()->text(), "");
    }
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());

    const QString before = Stored();
    Click(screen.Image1[Chrges::Store]); // no message: nothing has changed, and the stale total stays
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(Stored(), before);
}

TEST_F(RunningCharges, SumsTheFieldsAndShowsOnlyPositiveTotals)
{
    auto& screen = OpenScreen();
    const struct {
        const char* typed[2];
        const char* total;
    } rows[] = {
        {{"30000", ""}, " 30 000.00"},
        {{"12 000.50", "0.25"}, " 12 000.75"},
        {{"1.5.5", "2-"}, "  3.50"},
        {{"100", "-100"}, ""},
        {{"-100", "40"}, ""},
        {{"0", "0"}, ""},
        {{"-", "."}, ""},
        {{".004", ""}, "  .00"},
        {{"--5", "7"}, "  7.00"},
        {{"123456789", ".5"}, "123 456 789.50"},
    };
    for (const auto& row : rows) {
        screen.Text1[Chrges::Rent].setText(row.typed[0]);
        screen.Text1[Chrges::Others].setText(row.typed[1]);
        EXPECT_EQ(screen.Text1[Chrges::MonthlyTotal].text(), row.total) << row.typed[0] << ' ' << row.typed[1];
        EXPECT_EQ(screen.Text1[Chrges::DailyTotal].text(), ""); // until it is stored
    }
}

TEST_F(RunningCharges, StoresAllNineFiguresAsShownAfterTheMessage)
{
    practice.Write("Update Permn set Charge3 = 10, Charge8 = 10, Charge9 = 10, Compte = '0040'");
    auto& screen = OpenScreen();
    Type(screen.Text1[Chrges::Salaries], "30000,5x");
    Press(screen.Text1[Chrges::Salaries], Qt::Key_Return);
    Type(screen.Text1[Chrges::Rent], "-0.125");
    QString duringTheBox;
    desk.Meanwhile = [&] { duringTheBox = Stored(); };
    Store(screen);

    EXPECT_EQ(duringTheBox, "-|-|10|-|-|-|-|10|10");
    // 30010.375 is shown as 30 010.38, and a thirtieth of that as 1000.35
    EXPECT_EQ(Stored(), "30000.5|-0.125|10|0|0|0|0|30010.38|1000.35");
    EXPECT_EQ(practice.Ask("select Compte from Permn").Text(), "0040");

    auto& again = desk.Open<Chrges>();
    EXPECT_EQ(Texts(again),
              QStringList({"30000.50", "-.13", "10.00", ".00", ".00", ".00", ".00", " 30 010.37", "1000.35"}));
    again.Text1[Chrges::Salaries].setText("-1");
    again.Text1[Chrges::Depreciation].setText("");
    Store(again);
    EXPECT_EQ(Stored(), "-1|-0.13|0|0|0|0|0|0|0");
}

TEST_F(RunningCharges, MovesBetweenTheEntriesByEnterAndArrows)
{
    auto& screen = OpenScreen();
    Press(screen.Text1[Chrges::Salaries], Qt::Key_Up);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Down, Qt::Key_Up}) {
        const bool up = key == Qt::Key_Up;
        const int last = up ? Chrges::Salaries : Chrges::Others;
        for (int charge = up ? Chrges::Others : Chrges::Salaries; charge != last; charge += up ? -1 : 1) {
            ASSERT_TRUE(screen.Text1[charge].hasFocus()) << key << charge;
            Press(screen.Text1[charge], key);
        }
        ASSERT_TRUE(screen.Text1[last].hasFocus());
        Press(screen.Text1[last], key); // only Enter wraps around
        EXPECT_TRUE(screen.Text1[key == Qt::Key_Return ? Chrges::Salaries : last].hasFocus()) << key;
    }
    Type(screen.Text1[Chrges::Taxes], "1,2.3-a4");
    EXPECT_EQ(screen.Text1[Chrges::Taxes].text(), "1.23-4");
    Press(screen.Text1[Chrges::Others], Qt::Key_Tab);
    EXPECT_TRUE(screen.Image1[Chrges::Store].hasFocus()); // the totals are skipped
}

TEST_F(RunningCharges, LeavesWithoutStoring)
{
    for (const bool byCloseBox : {false, true}) {
        auto& screen = OpenScreen();
        screen.Text1[Chrges::Rent].setText("5");
        Press(screen.Text1[Chrges::Rent], Qt::Key_Escape);
        EXPECT_TRUE(screen.isVisible());
        if (byCloseBox)
            screen.close();
        else
            Click(screen.Image1[Chrges::Leave]);
        EXPECT_FALSE(screen.isVisible());
    }
    EXPECT_EQ(Stored(), "-|-|-|-|-|-|-|-|-");
}

TEST_F(RunningCharges, StoresIntoTheCurrentRow)
{
    auto& screen = OpenScreen();
    screen.Text1[Chrges::Rent].setText("60");
    practice.Write("Update Permn set RC = 'OUI', Charge1 = 9"); // meanwhile, by another program
    Store(screen);
    EXPECT_EQ(Stored(), "0|60|0|0|0|0|0|60|2");
    EXPECT_EQ(practice.Ask("select RC from Permn").Text(), "OUI");

    for (const bool duringTheMessage : {false, true}) {
        auto& again = desk.Open<Chrges>();
        again.Text1[Chrges::Rent].setText(duringTheMessage ? "120" : "90");
        if (duringTheMessage)
            desk.Meanwhile = [&] { practice.Write("delete from Permn"); };
        else
            practice.Write("delete from Permn");
        Store(again, duringTheMessage ? Qt::Key_S : Qt::Key_W); // the entries aren't lost
        EXPECT_EQ(Stored(), duringTheMessage ? "0|120|0|0|0|0|0|120|4" : "0|90|0|0|0|0|0|90|3");
        EXPECT_EQ(practice.Ask("select Taux_CNAS from Permn").Long(), 9);
    }
    auto& others = desk.Open<Chrges>();
    others.Text1[Chrges::Rent].setText("-1");
    others.Text1[Chrges::Others].setText("-4"); // a negative sum is stored as none
    Store(others);
    EXPECT_EQ(Stored(), "0|-1|0|0|0|0|-4|0|0");
    auto& alone = desk.Open<Chrges>();
    alone.Text1[Chrges::Others].setText("-5"); // changes no total
    Store(alone);
    EXPECT_EQ(Stored(), "0|-1|0|0|0|0|-5|0|0");
}
