#include "catalogue/Tarifs.h"

#include "support/ScreenTest.h"

using catalogue::Tarifs;
using tests::RowOf;

namespace {

class Rates : public tests::ScreenTest<Tarifs> {
protected:
    static void SetRate(Tarifs& screen, int row, const QString& typed)
    {
        DoubleClick(screen.Grid1, row);
        screen.RateField.clear();
        Type(screen.RateField, typed);
        Click(screen.Image2[Tarifs::AcceptEntry]);
    }

    static void Quit(Tarifs& screen) { Click(screen.Image2[Tarifs::StoreAndQuit]); }

    /// The stored rates; "-" for Null.
    QStringList Stored()
    {
        const QStringList rows = tests::RowsOf(practice, "select * from Tarif");
        EXPECT_EQ(rows.size(), 1);
        return rows.value(0).split('|');
    }
};

} // namespace

TEST_F(Rates, AddTheRowOfAnEmptyTable)
{
    auto& screen = OpenScreen();
    EXPECT_EQ(Stored().size(), 32);
    EXPECT_EQ(Stored().count("-"), 32);
    ASSERT_EQ(screen.Grid1.Rows(), 32);
    EXPECT_EQ(RowOf(screen.Grid1, 0), QStringList({"1", "C", "0"}));
    EXPECT_EQ(RowOf(screen.Grid1, 1), QStringList({"2", "K0", "0"}));
    EXPECT_EQ(RowOf(screen.Grid1, 31), QStringList({"32", "K30", "0"}));
    EXPECT_FALSE(screen.SSPanel3.isVisible());
    EXPECT_TRUE(screen.SSPanel3.property("floating").toBool());
    EXPECT_EQ(tests::HighlightedRow(screen.Grid1), 0);
    EXPECT_EQ(screen.windowTitle(), " ");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    Type(screen.Grid1, "k2");
    EXPECT_EQ(screen.Grid1.Text(screen.Grid1.Row(), Tarifs::Code), "K2"); // a typed code is jumped to
    screen.close();
    EXPECT_EQ(Stored().count("-"), 32);

    Quit(desk.Open<Tarifs>()); // writes even if unchanged, and adds no second row
    EXPECT_EQ(Stored().count("0"), 32);
}

TEST_F(Rates, AreReadByPositionAndRoundedHalfToEven)
{
    practice.Open();
    practice.Write("insert into Tarif (C, K0, K4, K29, K30) values (1500, 200, -7, 32767, -32768)");
    tests::OtherProgram other(practice.File("ZEP_ONE.MDB"));
    EXPECT_EQ(other.Run("update Tarif set K1 = 2.5, K2 = 3.5, K3 = 2.500001"), SQLITE_OK);
    auto& screen = desk.Open<Tarifs>();
    const QStringList rates = tests::ColumnOf(screen.Grid1, Tarifs::Rate);
    EXPECT_EQ(rates.first(6) + rates.last(2), QStringList({"1500", "200", "2", "4", "3", "-7", "32767", "-32768"}));
    screen.close();

    EXPECT_EQ(other.Run("update Tarif set K5 = 32768"), SQLITE_OK);
    EXPECT_EQ(ErrorOf([&] { Tarifs().Load(); }), Error::Overflow);
}

TEST_F(Rates, AreTypedInTheEntryPanelAndStoredOnLeaving)
{
    auto& screen = OpenScreen();
    Press(screen.Grid1, Qt::Key_Down);
    Press(screen.Grid1, Qt::Key_Down);
    Press(screen.Grid1, Qt::Key_F2);
    EXPECT_FALSE(screen.Grid1.isEnabled());
    EXPECT_EQ(screen.SSPanel2.Caption(), "Modification");
    EXPECT_EQ(screen.Label3.text(), "K1");
    EXPECT_EQ(screen.RateField.text(), "0");
    ASSERT_TRUE(screen.RateField.hasFocus());
    Type(screen.RateField, "-4.5x0"); // digits only
    EXPECT_EQ(screen.RateField.text(), "450");
    Press(screen.RateField, Qt::Key_Return);
    EXPECT_FALSE(screen.SSPanel3.isVisible());
    ASSERT_TRUE(screen.Grid1.hasFocus());
    EXPECT_EQ(screen.Grid1.Text(2, Tarifs::Rate), "450");

    SetRate(screen, 0, "32767");
    SetRate(screen, 31, "007");
    SetRate(screen, 2, "");                                // nothing is 0
    EXPECT_EQ(screen.Grid1.Text(31, Tarifs::Rate), "007"); // as typed
    EXPECT_EQ(screen.Grid1.Text(2, Tarifs::Rate), "");
    EXPECT_EQ(Stored().count("-"), 32); // in memory until the end
    Press(screen.Grid1, Qt::Key_W, Qt::ControlModifier);

    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(Stored().value(0), "32767");
    EXPECT_EQ(Stored().value(2), "0");
    EXPECT_EQ(Stored().value(31), "7");
    EXPECT_EQ(Stored().count("0"), 30);
}

TEST_F(Rates, AreUnchangedAfterACancelAndTheCloseBox)
{
    auto& screen = OpenScreen();
    SetRate(screen, 3, "100");
    DoubleClick(screen.Grid1, 0);
    EXPECT_EQ(screen.Label3.text(), "C");
    Type(screen.RateField, "999");
    Click(screen.Image2[Tarifs::CancelEntry]);
    EXPECT_FALSE(screen.SSPanel3.isVisible());
    EXPECT_TRUE(screen.Grid1.isEnabled());
    EXPECT_EQ(screen.Grid1.Text(0, Tarifs::Rate), "0");
    DoubleClick(screen.Grid1, 1);
    Press(screen.RateField, Qt::Key_Escape);
    Press(screen.Grid1, Qt::Key_Escape);
    EXPECT_TRUE(screen.isVisible());
    screen.close();
    EXPECT_EQ(Stored().count("-"), 32);
}

TEST_F(Rates, EndTheProgramPastSixteenBitsWithNothingStored)
{
    auto& screen = OpenScreen();
    SetRate(screen, 1, "200");
    ExpectRefusal("Erreur d'exécution '6' :\nDépassement de capacité", "ZEP Lumo");
    SetRate(screen, 0, "32768");
    EXPECT_TRUE(desk.EndCode().has_value());
    EXPECT_EQ(Stored().count("-"), 32);
}

TEST_F(Rates, AreNotLostWithARowThatAnotherProgramDeletes)
{
    auto& screen = OpenScreen();
    SetRate(screen, 4, "440");
    practice.Write("delete from Tarif");
    Quit(screen);
    EXPECT_EQ(Stored().value(4), "440");

    auto& again = desk.Open<Tarifs>();
    SetRate(again, 5, "520");
    practice.Write("delete from Tarif");
    practice.Write("insert into Tarif (C) values (1)"); // another row in its place
    Quit(again);
    EXPECT_EQ(Stored().value(0), "0");
    EXPECT_EQ(Stored().value(4), "440");
    EXPECT_EQ(Stored().value(5), "520");
}
