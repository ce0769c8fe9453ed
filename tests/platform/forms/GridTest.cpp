#include "Sheet.h"
#include "platform/forms/Colours.h"
#include "support/Cells.h"
#include "support/ScriptedDesk.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

using tests::HighlightedRow;

namespace {

struct GridOnSheet : testing::Test {
    ScriptedDesk desk;
    Sheet& sheet = desk.Open<Sheet>();
    forms::Grid& grid = sheet.grid;
    QAbstractItemModelTester consistency{grid.model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy clicks{&grid, &forms::Grid::Click};

    void Fill(int rows)
    {
        grid.ClearToOneRow();
        grid.SetRows(rows);
        for (int row = 0; row < rows; ++row)
            grid.SetText(row, 1, QStringLiteral(" ligne %1").arg(row));
    }
};

} // namespace

TEST_F(GridOnSheet, ReturnsCurrentCellsBeforeTheViewIsUpdated)
{
    QSignalSpy changed(grid.model(), &QAbstractItemModel::dataChanged);
    QSignalSpy reset(grid.model(), &QAbstractItemModel::modelReset);

    grid.SetText(grid.AppendRow(), 2, " 150 ");
    EXPECT_EQ(grid.model()->rowCount(), 2);
    EXPECT_EQ(grid.model()->index(1, 2).data(), " 150 "); // blanks are kept
    EXPECT_EQ(reset.count() + changed.count(), 0);

    support::ProcessEvents();
    EXPECT_EQ(reset.count(), 1);
    EXPECT_EQ(grid.Col(), 0);
    EXPECT_EQ(grid.currentIndex().column(), 0);
    grid.SetText(0, 0, "1");
    grid.SetText(1, 2, "2");
    support::ProcessEvents();
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex(), grid.model()->index(0, 0));
    EXPECT_EQ(changed[0][1].toModelIndex(), grid.model()->index(1, 2));
}

TEST_F(GridOnSheet, TruncatesExtendsAndClearsRows)
{
    Fill(4);
    grid.SetRow(3);
    grid.RemoveRow(1);
    EXPECT_EQ(grid.Text(1, 1), " ligne 2");
    EXPECT_EQ(grid.Row(), 2);
    grid.SetRows(1);
    grid.SetRows(2);
    EXPECT_EQ(grid.Text(0, 1), " ligne 0");
    EXPECT_EQ(grid.Text(1, 1), "");
    grid.SelectRow(1);
    grid.ClearToOneRow();
    support::ProcessEvents();
    EXPECT_EQ(grid.Rows(), 1);
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(grid.Text(0, 1), "");
    grid.setFocus();
    Press(grid, Qt::Key_Down);
    Click(grid, 0);
    EXPECT_EQ(HighlightedRow(grid), -1); // no entries
    grid.SelectRow(0);
    EXPECT_EQ(HighlightedRow(grid), -1);
    grid.SetText(0, 2, "5");
    grid.SelectRow(0);
    EXPECT_EQ(HighlightedRow(grid), 0);
}

TEST_F(GridOnSheet, RaisesNineOutOfRange)
{
    Fill(2);
    for (const int row : {-1, 2}) {
        EXPECT_EQ(ErrorOf([&] { grid.Text(row, 0); }), Error::IndexOutOfRange);
        EXPECT_EQ(ErrorOf([&] { grid.RemoveRow(row); }), Error::IndexOutOfRange);
        EXPECT_EQ(ErrorOf([&] { grid.SelectRow(row); }), Error::IndexOutOfRange);
        EXPECT_EQ(ErrorOf([&] { grid.SetRow(row); }), Error::IndexOutOfRange);
        EXPECT_EQ(ErrorOf([&] { grid.SetRowBackground(row, forms::Grid::Background::Today); }), Error::IndexOutOfRange);
    }
    EXPECT_EQ(ErrorOf([&] { grid.SetText(0, 3, "x"); }), Error::IndexOutOfRange);
    EXPECT_EQ(ErrorOf([&] { grid.SetCol(3); }), Error::IndexOutOfRange);
    EXPECT_EQ(ErrorOf([&] { grid.SetRows(-1); }), Error::IndexOutOfRange);
    EXPECT_EQ(ErrorOf([&] { grid.SetGroupHeading(1, 3, "x"); }), Error::IndexOutOfRange);
    EXPECT_EQ(grid.Rows(), 2);
}

TEST_F(GridOnSheet, EmitsOneClickForEachClickOrKey)
{
    Fill(40);
    Click(grid, 2, 1);
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.Col(), 1);
    Click(grid, 2, 1); // the current row again
    EXPECT_EQ(clicks.count(), 2);
    for (const auto& [key, row] :
         {std::pair(Qt::Key_Down, 3), {Qt::Key_Up, 2}, {Qt::Key_End, 39}, {Qt::Key_Down, 39}, {Qt::Key_Home, 0}}) {
        Press(grid, key);
        EXPECT_EQ(grid.Row(), row);
        EXPECT_EQ(HighlightedRow(grid), row);
    }
    EXPECT_EQ(clicks.count(), 2 + 4); // Down on the last row does nothing
    Press(grid, Qt::Key_PageDown);
    EXPECT_GT(grid.Row(), 1);

    QSignalSpy doubleClicks(&grid, &forms::Grid::DblClick);
    DoubleClick(grid, 3);
    EXPECT_EQ(doubleClicks.count(), 1);
    QSignalSpy entered(&grid, &forms::Grid::Entered);
    Press(grid, Qt::Key_Return);
    Press(grid, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(entered.count(), 2);

    const QPointF below = grid.visualRect(grid.model()->index(5, 1)).center();
    QMouseEvent drag(QEvent::MouseMove, below, grid.viewport()->mapToGlobal(below), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(grid.viewport(), &drag);
    EXPECT_EQ(grid.Row(), 3) << "a drag";
}

TEST_F(GridOnSheet, EmitsNothingWhenTheScreenMovesIt)
{
    Fill(5);
    support::ProcessEvents();
    grid.SetRow(3);
    grid.SetCol(1);
    EXPECT_EQ(grid.currentIndex(), grid.model()->index(3, 1));
    grid.SetCol(0);
    grid.SelectRow(4);
    EXPECT_EQ(grid.currentIndex().column(), 0);
    grid.AppendRow(); // the view is updated: current and selected rows stay
    support::ProcessEvents();
    EXPECT_EQ(grid.currentIndex().row(), grid.Row());
    EXPECT_EQ(HighlightedRow(grid), 4);
    EXPECT_EQ(clicks.count(), 0);

    QObject::connect(&grid, &forms::Grid::Click, &sheet, [&] {
        Fill(3);
        grid.SelectRow(0);
    });
    Click(grid, 4);
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(HighlightedRow(grid), 0);
    Press(grid, Qt::Key_Down);
    EXPECT_EQ(grid.Row(), 0);
}

TEST_F(GridOnSheet, ShowsHeadingsAlignedLikeTheirColumnsAndWidthsInTwips)
{
    QAbstractItemModel& model = *grid.model();
    EXPECT_EQ(model.headerData(2, Qt::Horizontal, Qt::TextAlignmentRole).value<Qt::Alignment>(),
              Qt::AlignRight | Qt::AlignVCenter);
    EXPECT_EQ(grid.columnWidth(0), forms::PixelsOf(600));
    EXPECT_EQ(forms::PixelsOf(forms::TwipsOf(126)), 126);

    grid.SetHeading(2, "Reste");
    EXPECT_EQ(model.headerData(2, Qt::Horizontal), "Reste");
    const int oneLine = grid.horizontalHeader()->sizeHint().height();
    grid.SetGroupHeading(1, 2, "Reçu");
    EXPECT_GT(grid.horizontalHeader()->sizeHint().height(), oneLine + 8);
}

TEST_F(GridOnSheet, CopiesTheChosenRowsWithHeadingsBetweenTabs)
{
    Fill(3);
    grid.SetText(1, 0, "2");
    grid.SetText(1, 2, "1 250.50 ");
    grid.SelectRow(1);
    Press(grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "N°\tNom\tMontant\n2\tligne 1\t1 250.50\n");
    Press(grid, Qt::Key_A, Qt::ControlModifier);
    Press(grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "N°\tNom\tMontant\n\tligne 0\t\n2\tligne 1\t1 250.50\n\tligne 2\t\n");
    EXPECT_EQ(grid.Row(), 1); // the current row stays
    Press(grid, Qt::Key_Down);
    Press(grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "N°\tNom\tMontant\n\tligne 2\t\n");

    Fill(9);
    QObject::connect(&grid, &forms::Grid::Click, &sheet, [&] { grid.SelectRow(grid.Row()); }); // as every screen does
    grid.SelectRow(4);
    const struct {
        Qt::Key key;
        int current, first, last;
    } steps[] = {{Qt::Key_Down, 5, 4, 5}, {Qt::Key_Down, 6, 4, 6}, {Qt::Key_Up, 5, 4, 5},
                 {Qt::Key_Up, 4, 4, 4},   {Qt::Key_Up, 3, 3, 4},   {Qt::Key_End, 8, 4, 8},
                 {Qt::Key_Home, 0, 0, 4}, {Qt::Key_Up, 0, 0, 4},   {Qt::Key_PageDown, 8, 4, 8}};
    for (const auto& step : steps) {
        Press(grid, step.key, Qt::ShiftModifier);
        EXPECT_EQ(grid.Row(), step.current) << step.key;
        EXPECT_EQ(HighlightedRow(grid), step.first) << step.key;
        EXPECT_EQ(grid.selectionModel()->selectedRows().size(), step.last - step.first + 1) << step.key;
    }
    Press(grid, Qt::Key_Up); // alone: one row
    EXPECT_EQ(grid.selectionModel()->selectedRows().size(), 1);
    grid.ClearToOneRow();
    Press(grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->text().contains("ligne 2")) << "no row is chosen";
}

TEST_F(GridOnSheet, FindsTheNextNameByTypedLetters)
{
    grid.SetRows(0);
    for (const char* name : {" Élie", " benali", " Bensaïd", "  Çelik", " Ben Ali"})
        grid.SetText(grid.AppendRow(), 1, name);
    grid.SelectRow(0);
    const int usual = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(150);
    for (const auto& [typed, row] :
         {std::pair("b", 1), {"bens", 2}, {"c", 3}, {"e", 0}, {"bb", 2}, {"ben a", 4}, {"x", 4}}) {
        QTest::qWait(QApplication::keyboardInputInterval() + 50);
        Type(grid, typed);
        EXPECT_EQ(grid.Row(), row) << typed;
    }
    QApplication::setKeyboardInputInterval(usual);
    EXPECT_GE(clicks.count(), 6); // one for each move, as with arrows
}

TEST_F(GridOnSheet, SharesSpareWidthAmongLeftAlignedColumns)
{
    const int others = grid.columnWidth(0) + grid.columnWidth(2);
    const int name = forms::PixelsOf(1890);
    const auto nameAt = [&](int width) {
        grid.resize(width, grid.height());
        support::ProcessEvents();
        EXPECT_EQ(grid.columnWidth(0) + grid.columnWidth(2), others);
        return grid.columnWidth(1);
    };
    EXPECT_GT(nameAt(grid.width() + 200), name + 150);
    EXPECT_EQ(nameAt(100), name / 2);
    const QString heading = "Dénomination"; // wider than half the column
    grid.SetHeading(1, heading);
    EXPECT_GT(nameAt(100), grid.fontMetrics().horizontalAdvance(heading));
    EXPECT_LT(grid.columnWidth(1), name);
    grid.SetHeading(1, "Une dénomination plus large que sa colonne"); // can't shrink, but grows
    EXPECT_EQ(nameAt(100), name);
    EXPECT_GT(nameAt(900), name + 150);

    grid.SetHeading(0, "N° d'ordre"); // a heading has air
    grid.resize(800, grid.height());
    EXPECT_GE(grid.columnWidth(0), grid.fontMetrics().horizontalAdvance("N° d'ordre") + 8);
    forms::Grid figures("Grid2", {{"Code", 600, Qt::AlignCenter}, {"Tarif", 900, Qt::AlignCenter}});
    figures.resize(400, 200);
    EXPECT_GT(figures.columnWidth(0), 150); // without names, all columns share
}

TEST_F(GridOnSheet, AlignsTextsWithAndWithoutBlanks)
{
    const auto painted = [&](const QString& name, const QString& amount) {
        grid.SetText(0, 1, name);
        grid.SetText(0, 2, amount);
        support::ProcessEvents();
        return grid.grab().toImage();
    };
    const QImage plain = painted("Consultation", "1500");
    EXPECT_EQ(painted(" Consultation", "1500 "), plain);
    EXPECT_NE(painted("Consultatiom", "1500"), plain);
}

TEST_F(GridOnSheet, RowBackgroundsMoveWithTheirRows)
{
    const forms::Colours& colours = forms::TheColours();
    const auto groundOf = [&](int row) { return grid.model()->index(row, 1).data(Qt::BackgroundRole).value<QColor>(); };
    const auto painted = [&](int row) {
        const QRect cell = grid.visualRect(grid.model()->index(row, 1));
        return grid.viewport()->grab().toImage().pixelColor(cell.right() - 2, cell.center().y());
    };
    Fill(5);
    grid.SetRowBackground(1, forms::Grid::Background::DayOff);
    grid.SetRowBackground(3, forms::Grid::Background::Today);
    support::ProcessEvents();
    EXPECT_EQ(painted(1), colours.weekend);
    EXPECT_EQ(painted(3), colours.today);
    EXPECT_EQ(painted(2), colours.field);
    grid.SelectRow(3);
    EXPECT_EQ(painted(3), colours.selection);

    grid.RemoveRow(0);
    EXPECT_EQ(groundOf(0), colours.weekend);
    EXPECT_EQ(groundOf(1), QColor());
    EXPECT_EQ(groundOf(2), colours.today);
    grid.SetRowBackground(0, forms::Grid::Background::Usual);
    EXPECT_EQ(groundOf(0), QColor());
    Fill(5); // new rows
    EXPECT_EQ(groundOf(2), QColor());
}
