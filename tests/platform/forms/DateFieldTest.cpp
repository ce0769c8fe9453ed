#include "Sheet.h"
#include "support/ScriptedDesk.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <gtest/gtest.h>

namespace {

struct DateEntry : testing::Test {
    ScriptedDesk desk;
    Sheet& sheet = desk.Open<Sheet>();
    forms::DateField& date = sheet.date;
    int entered = 0;

    DateEntry()
    {
        QObject::connect(&date, &forms::TextBox::Entered, &sheet, [this] { ++entered; });
    }
};

} // namespace

TEST_F(DateEntry, AddsTheSlashesAndLetsEnterPassAtFullLengthOnly)
{
    QStringList steps;
    for (const QChar digit : QStringLiteral("17062008")) {
        Press(date, Qt::Key_Return);
        Type(date, digit);
        steps << date.text();
        EXPECT_EQ(date.cursorPosition(), date.text().size());
    }
    EXPECT_EQ(steps, QStringList({"1", "17/", "17/0", "17/06/", "17/06/2", "17/06/20", "17/06/200", "17/06/2008"}));
    EXPECT_EQ(entered, 0);
    Press(date, Qt::Key_Return);
    Press(date, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(entered, 2);
    EXPECT_EQ(desk.BeepCount(), 8);
}

TEST_F(DateEntry, BackspaceEditsTheYearAndClearsShorterTexts)
{
    date.setText("17/06/20");
    Press(date, Qt::Key_End);
    for (const char* rest : {"17/06/2", "17/06/", ""}) { // at 7 characters it is still an ordinary backspace
        Press(date, Qt::Key_Backspace);
        EXPECT_EQ(date.text(), rest);
    }
    EXPECT_EQ(date.cursorPosition(), 0);
    EXPECT_EQ(desk.BeepCount(), 0);
}

TEST_F(DateEntry, CompletesTextSetByTheScreen)
{
    const struct {
        const char* set;
        const char* completed;
    } rows[] = {{"1", "1"},
                {"17", "17/"},
                {" 17 ", " 17 /"},
                {"17/", "17/"},
                {"17/06", "17/06/"},
                {"17/06/2", "17/06/2"},
                {"17/06/2008  ", "17/06/2008  "}};
    for (const auto& row : rows) {
        date.setText(row.set);
        EXPECT_EQ(date.text(), row.completed);
    }
    EXPECT_EQ(date.cursorPosition(), 10);
}

TEST_F(DateEntry, IsSelectedOnArrivalSoThatTypingReplacesIt)
{
    date.setText("17/06/2008");
    sheet.text.setFocus();
    Press(sheet.text, Qt::Key_Tab);
    EXPECT_EQ(date.selectedText(), "17/06/2008");
    Type(date, "1"); // at the length of 10 every key passes
    EXPECT_EQ(date.text(), "1");
    Type(date, "8");
    EXPECT_EQ(date.text(), "18/");
}

TEST_F(DateEntry, IsClearedWithBeepsWhenAnInvalidDateIsLeft)
{
    int refused = 0;
    QString atLeaving = "?";
    QObject::connect(&date, &forms::DateField::DateRefused, &sheet, [&] { ++refused; });
    QObject::connect(&date, &forms::TextBox::LostFocus, &sheet, [&] { atLeaving = date.text(); });

    Type(date, "31022004");
    Press(date, Qt::Key_Tab);
    EXPECT_EQ(date.text(), "");
    EXPECT_EQ(atLeaving, "");
    EXPECT_EQ(desk.BeepCount(), 1);
    EXPECT_EQ(refused, 1);

    for (const char* kept : {"29/02/2004", "   "}) {
        date.setText(kept);
        date.setFocus();
        Press(date, Qt::Key_Tab);
        EXPECT_EQ(date.text(), kept);
    }
    EXPECT_EQ(refused, 1);
}

TEST_F(DateEntry, CanTakeTheFocusBackWhenItsDateIsRefused)
{
    QObject::connect(&date, &forms::DateField::DateRefused, &sheet, [&] { date.setFocus(); });
    Type(date, "3");
    Press(date, Qt::Key_Tab);
    EXPECT_TRUE(date.hasFocus());
    Type(date, "17062008");
    Press(date, Qt::Key_Tab);
    EXPECT_EQ(date.text(), "17/06/2008");
    EXPECT_TRUE(sheet.amount.hasFocus());
}

TEST_F(DateEntry, IsKeptWhileAnotherWindowIsActiveUnlessTheFocusMovesBehindIt)
{
    Type(date, "17");
    const auto visit = [&](bool moves) {
        auto& other = desk.Open<Sheet>();
        EXPECT_FALSE(date.hasFocus());
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
