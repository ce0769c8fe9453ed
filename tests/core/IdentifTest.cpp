#include "core/Identif.h"

#include "core/PPRT.h"
#include "core/globals.h"
#include "support/Accessibility.h"
#include "support/Practice.h"
#include "support/Rows.h"
#include "support/ScriptedDesk.h"

#include <QPrinterInfo>
#include <gtest/gtest.h>

using core::Identif;
using core::PPRT;
using forms::Icon;

namespace {

class Identification : public testing::Test {
protected:
    Identif& OpenScreen()
    {
        if (!core::TheDatabase.IsOpen())
            practice.Open();
        return desk.Open<Identif>();
    }

    QString Stored()
    {
        return tests::RowsOf(practice,
                             "select Registre, Id_Fiscale, Article, Telephone, Fax, Compte, Agence, RIB from Permn")
            .join("//");
    }

    static QStringList Texts(Identif& screen)
    {
        QStringList texts;
        for (int field = 0; field < Identif::Identifiers; ++field)
            texts << screen.Text1[field].text();
        return texts;
    }

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(Identification, MakesTheRowOfAPracticeThatLacksIt)
{
    practice.Write("delete from Permn");
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.windowTitle(), " ");
    EXPECT_EQ(screen.SSPanel1.Caption(), "Identification");
    EXPECT_EQ(Texts(screen).join(""), "");
    EXPECT_EQ(Stored(), " | | | | | | | ");
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    ASSERT_TRUE(screen.Text1[0].hasFocus());
    Click(screen.Image1[Identif::Accept]);
    EXPECT_FALSE(screen.isVisible());
    EXPECT_EQ(Stored(), " | | | | | | | "); // nothing was changed
}

TEST_F(Identification, SavesEachIdentifierTrimmedAtMaximumLength)
{
    practice.Write("Update Permn set RC = 'OUI', Charge1 = 5, Fax = Null");
    auto& screen = OpenScreen();
    for (int field = 0; field < Identif::Identifiers; ++field)
        Type(screen.Text1[field], QString(31, QChar('A' + field)));
    EXPECT_EQ(Texts(screen).last(), QString(30, 'H'));
    screen.Text1[2].setText(" 123 ");
    Click(screen.Image1[Identif::Accept]);
    EXPECT_FALSE(screen.isVisible());
    QStringList expected;
    for (int field = 0; field < 7; ++field)
        expected << (field == 2 ? QString("123") : QString(20, QChar('A' + field)));
    EXPECT_EQ(Stored(), expected.join('|') + "|" + QString(30, 'H'));
    EXPECT_EQ(tests::RowsOf(practice, "select RC, Charge1 from Permn"), QStringList("OUI|5"));

    auto& again = OpenScreen();
    EXPECT_EQ(Texts(again), QStringList(expected) << QString(30, 'H'));
}

TEST_F(Identification, SavesNothingThatWasChangedBackOrCancelled)
{
    practice.Write("Update Permn set Registre = 'avant'");
    auto& screen = OpenScreen();
    Type(screen.Text1[0], "après");
    screen.Text1[0].setText("avant");
    practice.Write("Update Permn set Registre = 'entre-temps'"); // a save would overwrite it
    Click(screen.Image1[Identif::Accept]);
    EXPECT_EQ(core::DialogResult, 0);
    EXPECT_EQ(tests::RowsOf(practice, "select Registre from Permn"), QStringList("entre-temps"));

    auto& givenUp = OpenScreen();
    Type(givenUp.Text1[0], "après");
    Press(givenUp.Text1[0], Qt::Key_Escape);
    EXPECT_TRUE(givenUp.isVisible());
    Click(givenUp.Image1[Identif::Leave]);
    EXPECT_FALSE(givenUp.isVisible());
    EXPECT_EQ(tests::RowsOf(practice, "select Registre from Permn"), QStringList("entre-temps"));

    auto& blanks = OpenScreen();
    blanks.Text1[1].setText("  "); // counts as a change; saved trimmed
    Click(blanks.Image1[Identif::Accept]);
    EXPECT_EQ(core::DialogResult, 1);
    EXPECT_EQ(tests::RowsOf(practice, "select Registre, Id_Fiscale from Permn"), QStringList("entre-temps|"));
}

TEST_F(Identification, MovesThroughItsFieldsByEnterAndArrows)
{
    auto& screen = OpenScreen();
    Press(screen.Text1[0], Qt::Key_Up); // stops at the ends
    EXPECT_TRUE(screen.Text1[0].hasFocus());
    Press(screen.Text1[0], Qt::Key_Down);
    EXPECT_TRUE(screen.Text1[1].hasFocus());
    Press(screen.Text1[1], Qt::Key_Return);
    EXPECT_TRUE(screen.Text1[2].hasFocus());
    Press(screen.Text1[2], Qt::Key_Up);
    EXPECT_TRUE(screen.Text1[1].hasFocus());
    Press(screen.Text1[7], Qt::Key_Down);
    EXPECT_TRUE(screen.Text1[7].hasFocus());
    screen.Text1[0].setText("16/00");
    Press(screen.Text1[7], Qt::Key_Return); // and Enter wraps around
    EXPECT_TRUE(screen.Text1[0].hasFocus());
    EXPECT_EQ(screen.Text1[0].selectedText(), "16/00");
}

TEST(Printers, AreListed)
{
    ScriptedDesk desk;
    for (const int way : {PPRT::Accept, PPRT::Cancel}) {
        auto& screen = desk.Open<PPRT>();
        EXPECT_EQ(screen.SSPanel1.Caption(), "Imprimante par défaut");
        EXPECT_EQ(screen.Combo1.count(), QPrinterInfo::availablePrinterNames().size());
        EXPECT_EQ(screen.Combo1.currentIndex(), screen.Combo1.count() > 0 ? 0 : -1);
        EXPECT_EQ(AccessibilityFaults(screen), QStringList());
        if (way == PPRT::Accept)
            desk.ExpectMessage("OK", Icon::None, "");
        Click(screen.Image1[way]);
        EXPECT_FALSE(screen.isVisible());
    }
}
