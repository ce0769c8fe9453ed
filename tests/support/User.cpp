#include "support/User.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

namespace {

bool IsWithinReach(const QWidget& control)
{
    if (control.isVisible() && control.isEnabled())
        return true;
    ADD_FAILURE() << "The user can't reach " << qPrintable(control.objectName()) << ": it is "
                  << (control.isVisible() ? "disabled" : "hidden");
    return false;
}

bool TakeFocus(QWidget& control)
{
    if (!IsWithinReach(control))
        return false;
    if (!control.isActiveWindow()) {
        control.window()->activateWindow();
        support::ProcessEvents();
    }
    if (!control.hasFocus())
        control.setFocus(Qt::TabFocusReason);
    return true;
}

QPoint PlaceOf(forms::Grid& grid, int row, int column)
{
    const QModelIndex cell = grid.model()->index(row, column);
    EXPECT_TRUE(cell.isValid()) << "no row " << row;
    grid.scrollTo(cell);
    return grid.visualRect(cell).center();
}

} // namespace

void Type(QWidget& control, const QString& text)
{
    if (!TakeFocus(control))
        return;
    for (const QChar character : text) {
        if (character.unicode() < 0x80)
            QTest::keyClick(&control, character.toLatin1());
        else // QTest::keyClick only supports ASCII
            QTest::sendKeyEvent(QTest::Click, &control, Qt::Key_unknown, QString(character), Qt::NoModifier);
    }
}

void Press(QWidget& control, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (TakeFocus(control))
        QTest::keyClick(&control, key, modifiers);
}

void Click(QAbstractButton& button)
{
    if (IsWithinReach(button))
        QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(qMin(12, button.width() / 2), button.height() / 2));
}

void Click(forms::Grid& grid, int row, int column)
{
    support::ProcessEvents(); // the grid may not have laid out its rows yet
    if (IsWithinReach(grid))
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, PlaceOf(grid, row, column));
}

void DoubleClick(forms::Grid& grid, int row, int column)
{
    Click(grid, row, column);
    if (grid.isVisible())
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, PlaceOf(grid, row, column));
}

void support::ProcessEvents()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}
