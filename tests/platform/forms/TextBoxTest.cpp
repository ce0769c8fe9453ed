#include "Sheet.h"
#include "platform/forms/KeyFilters.h"
#include "support/ScriptedDesk.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <gtest/gtest.h>

namespace {

struct Entry : testing::Test {
    ScriptedDesk desk;
    Sheet& sheet = desk.Open<Sheet>();
};

void Drop(QWidget& target, const QString& text)
{
    QMimeData data;
    data.setText(text);
    QDragEnterEvent enter(QPoint(4, 8), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &enter);
    QDropEvent drop(QPointF(4, 8), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &drop);
}

void ChooseFromContextMenu(QWidget& field, const QString& entry)
{
    QContextMenuEvent ask(QContextMenuEvent::Keyboard, QPoint(4, 4), field.mapToGlobal(QPoint(4, 4)));
    QApplication::sendEvent(&field, &ask);
    auto* menu = field.findChild<QMenu*>();
    ASSERT_TRUE(menu);
    for (QAction* action : menu->actions()) {
        if (action->text().remove('&').startsWith(entry)) // followed by its key
            action->trigger();
    }
    menu->close();
}

} // namespace

TEST_F(Entry, PassesEachTypedCharacterToTheFilter)
{
    QList<int> codes;
    sheet.text.KeyPress = [&](int& code) { codes << code; };
    Type(sheet.text, "a 1é");
    Press(sheet.text, Qt::Key_Backspace);
    Press(sheet.text, Qt::Key_Return);
    Press(sheet.text, Qt::Key_Enter, Qt::KeypadModifier);
    for (const auto silent : {Qt::Key_Left, Qt::Key_Home, Qt::Key_Delete, Qt::Key_F5, Qt::Key_Escape})
        Press(sheet.text, silent);
    Press(sheet.text, Qt::Key_A, Qt::ControlModifier);
    Press(sheet.text, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(codes, QList<int>({'a', ' ', '1', 0xE9, forms::KeyBackspace, forms::KeyEnter, forms::KeyEnter}));
    EXPECT_EQ(QApplication::clipboard()->text(), sheet.text.text());
}

TEST_F(Entry, TypesTheFilteredCharacter)
{
    sheet.text.KeyPress = [](int& code) { code = code == 'x' ? 0 : code == 'a' ? 'A' : code; };
    Type(sheet.text, "axbxa");
    EXPECT_EQ(sheet.text.text(), "AbA");

    Type(sheet.amount, "1,5,.x-2");
    EXPECT_EQ(sheet.amount.text(), "1.5-2");
    EXPECT_EQ(desk.BeepCount(), 0);
}

TEST_F(Entry, KeepsASwallowedEnterFromTheButtons)
{
    int entered = 0;
    int pressed = 0;
    QObject::connect(&sheet.text, &forms::TextBox::Entered, &sheet, [&] { ++entered; });
    QObject::connect(&sheet.button, &QPushButton::clicked, &sheet, [&] { ++pressed; });
    sheet.button.setDefault(true);

    Press(sheet.text, Qt::Key_Return);
    EXPECT_EQ(entered, 1);
    sheet.text.KeyPress = [](int& code) { code = code == forms::KeyEnter ? 0 : code; };
    Press(sheet.text, Qt::Key_Return);
    EXPECT_EQ(entered, 1);
    EXPECT_EQ(pressed, 0);
    EXPECT_TRUE(sheet.isVisible());
}

TEST_F(Entry, FiltersPastedDroppedAndComposedText)
{
    const QString hostile = "1 2x,5\n.0'; --\r\n";
    const QString clean = "1 2.50 --";
    forms::AmountField& amount = sheet.amount;

    QApplication::clipboard()->setText(hostile);
    Press(amount, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(amount.text(), "1 2.5 0 --"); // an inner line break becomes a blank, a trailing one is cut

    amount.clear();
    Drop(amount, "1 2x,5.0'; --");
    EXPECT_EQ(amount.text(), clean);

    amount.clear();
    QApplication::clipboard()->setText("1 2x,5.0'; --");
    ChooseFromContextMenu(amount, "Coller");
    EXPECT_EQ(amount.text(), clean);

    amount.setText("free ,, text");
    EXPECT_EQ(amount.text(), "free ,, text");

    amount.setReadOnly(true);
    Press(amount, Qt::Key_V, Qt::ControlModifier);
    Drop(amount, "7");
    EXPECT_EQ(amount.text(), "free ,, text");
    Press(amount, Qt::Key_A, Qt::ControlModifier);
    Press(amount, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "free ,, text");
    Press(amount, Qt::Key_Escape);
    EXPECT_EQ(sheet.escapes, 1);

    Type(sheet.date, "17");
    ChooseFromContextMenu(sheet.date, "Copier");
    EXPECT_EQ(sheet.date.text(), "17/") << "the field isn't left while its menu is open";
}

TEST_F(Entry, SelectsItsTextOnEveryKindOfFocus)
{
    forms::TextBox& field = sheet.text;
    field.setText("DUPONT");
    const auto leave = [&] {
        sheet.amount.setFocus();
        field.deselect();
    };

    leave();
    field.setFocus();
    EXPECT_EQ(field.selectedText(), "DUPONT");
    leave();
    QTest::mouseClick(&field, Qt::LeftButton, {}, QPoint(20, 10));
    EXPECT_EQ(field.selectedText(), "DUPONT");
    QTest::mouseClick(&field, Qt::LeftButton, {}, QPoint(20, 10)); // the next click places the caret
    EXPECT_EQ(field.selectedText(), "");
    field.SelectedOnFocus = 4;
    for (const bool byClick : {false, true}) {
        leave();
        byClick ? QTest::mouseClick(&field, Qt::LeftButton, {}, QPoint(60, 10)) : field.setFocus();
        EXPECT_EQ(field.selectedText(), "DUPO");
    }
}

TEST_F(Entry, KeepsTheFocusWhenAPictureIsClicked)
{
    int left = 0;
    QObject::connect(&sheet.text, &forms::TextBox::LostFocus, &sheet, [&] { ++left; });
    sheet.text.setFocus();
    Click(sheet.picture);
    EXPECT_TRUE(sheet.text.hasFocus());
    EXPECT_EQ(left, 0);
}
