#include "Sheet.h"
#include "support/ScriptedDesk.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

struct DateEntry : testing::Test {
    ScriptedDesk desk;
    Sheet& sheet = desk.Open<Sheet>();
    forms::DateField& date = sheet.date;
};

} // namespace

TEST_F(DateEntry, AddsTheSlashesAndLetsEnterPassAtFullLengthOnly)
{
    QStringList steps;
    QSignalSpy entered(&date, &forms::TextBox::Entered);
    for (const QChar digit : QStringLiteral("17062008")) {
        Press(date, Qt::Key_Return);
        Type(date, digit);
        steps << date.text();
    }
    EXPECT_EQ(steps, QStringList({"1", "17/", "17/0", "17/06/", "17/06/2", "17/06/20", "17/06/200", "17/06/2008"}));
    EXPECT_EQ(entered.count(), 0);
    Press(date, Qt::Key_Return);
    Press(date, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(entered.count(), 2);
    EXPECT_EQ(desk.BeepCount(), 8);
}

TEST_F(DateEntry, BackspaceEditsTheYearAndClearsShorterTexts)
{
    Type(date, "170620");
    for (const char* rest : {"17/06/2", "17/06/", ""}) { // at 7 characters it is still an ordinary backspace
        Press(date, Qt::Key_Backspace);
        EXPECT_EQ(date.text(), rest);
    }
    EXPECT_EQ(date.cursorPosition(), 0);
    EXPECT_EQ(desk.BeepCount(), 0);
}

TEST_F(DateEntry, CompletesTextSetByTheScreen)
{
    for (const auto& [set, completed] :
         {std::pair("1", "1"), {" 17 ", " 17 /"}, {"17/06", "17/06/"}, {"17/06/2008  ", "17/06/2008  "}}) {
        date.setText(set);
        EXPECT_EQ(date.text(), completed);
    }
    EXPECT_EQ(date.cursorPosition(), 10);
}

TEST_F(DateEntry, IsClearedWithBeepsWhenAnInvalidDateIsLeftAndMayTakeTheFocusBack)
{
    int refused = 0;
    QString atLeaving = "?";
    QObject::connect(&date, &forms::TextBox::LostFocus, &sheet, [&] { atLeaving = date.text(); });
    QObject::connect(&date, &forms::DateField::DateRefused, &sheet, [&] {
        ++refused;
        date.setFocus();
    });
    Type(date, "31022004");
    Press(date, Qt::Key_Tab);
    EXPECT_TRUE(date.hasFocus());
    EXPECT_EQ(date.text() + atLeaving, "");
    EXPECT_EQ(desk.BeepCount(), 1);
    for (const char* kept : {"29/02/2004", "   "}) {
        date.setText(kept);
        date.setFocus();
        Press(date, Qt::Key_Tab);
        EXPECT_EQ(date.text(), kept);
        EXPECT_TRUE(sheet.amount.hasFocus());
    }
    EXPECT_EQ(refused, 1);
}

TEST_F(DateEntry, IsKeptWhileAnotherWindowIsActiveUnlessTheFocusMovesBehindIt)
{
    Type(date, "17");
    const auto visit = [&](bool moves) {
        auto& other = desk.Open<Sheet>();
        if (moves)
            sheet.amount.setFocus();
        other.Unload();
        sheet.activateWindow();
        support::ProcessEvents();
    };
    visit(false);
    EXPECT_EQ(date.text(), "17/");
    EXPECT_EQ(desk.BeepCount(), 0);
    Type(date, "06"); // the caret is still at the end
    EXPECT_EQ(date.text(), "17/06/");
    visit(true);
    EXPECT_TRUE(sheet.amount.hasFocus());
    EXPECT_EQ(date.text(), "");
}

TEST_F(DateEntry, FiltersPastedAndComposedText)
{
    QApplication::clipboard()->setText("17/06/2008\n");
    Press(date, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(date.text(), "17/06/2008");
    EXPECT_EQ(desk.BeepCount(), 0); // the field skips the slashes it has added itself

    Press(date, Qt::Key_A, Qt::ControlModifier);
    QApplication::clipboard()->setText("x18Z012001");
    Press(date, Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(date.text(), "x1/01/2001"); // at full length any key passes, so that "x" replaced the selection

    date.clear();
    QInputMethodEvent commit;
    commit.setCommitString("9-17");
    QApplication::sendEvent(&date, &commit);
    EXPECT_EQ(date.text(), "17/");
}
