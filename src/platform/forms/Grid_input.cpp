#include "platform/forms/Grid.h"
#include "platform/forms/GridModel.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QScopedValueRollback>

namespace forms {

void Grid::keyPressEvent(QKeyEvent* event)
{
    ShowChanges();
    if (event->matches(QKeySequence::Copy))
        return CopyChosenRows();
    if (event->matches(QKeySequence::SelectAll))
        return ChooseAllRows();
    if (const int row = RowReachedWithShift(*event); row >= 0)
        return ExtendTo(row);
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT Entered();
        break;
    case Qt::Key_Home:
    case Qt::Key_End:
        if (Rows() > 0)
            setCurrentIndex(cells->index(event->key() == Qt::Key_Home ? 0 : Rows() - 1, currentColumn));
        break;
    default:
        QTableView::keyPressEvent(event);
    }
}

int Grid::RowReachedWithShift(const QKeyEvent& event)
{
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::ShiftModifier)
        return -1;
    const int last = Rows() - 1;
    switch (event.key()) {
    case Qt::Key_Up:
        return qMax(0, currentRow - 1);
    case Qt::Key_Down:
        return qMin(last, currentRow + 1);
    case Qt::Key_Home:
        return qMin(last, 0);
    case Qt::Key_End:
        return last;
    case Qt::Key_PageUp:
        return moveCursor(MovePageUp, Qt::NoModifier).row();
    case Qt::Key_PageDown:
        return moveCursor(MovePageDown, Qt::NoModifier).row();
    default:
        return -1;
    }
}

/// Makes a row current and selects the rows up to it, from the other end of those selected so far.
void Grid::ExtendTo(int row)
{
    if (row == currentRow)
        return;
    int start = currentRow;
    if (const QItemSelection chosen = selectionModel()->selection(); !chosen.isEmpty()) {
        if (chosen.first().top() == currentRow)
            start = chosen.first().bottom();
        else if (chosen.first().bottom() == currentRow)
            start = chosen.first().top();
    }
    SelectRow(row);
    Q_EMIT Click(); // the screen takes the row in hand and highlights it alone
    if (qMax(start, row) >= Rows())
        return;
    ShowChanges();
    const QItemSelection reached(cells->index(qMin(start, row), 0), cells->index(qMax(start, row), Columns() - 1));
    selectionModel()->select(reached, QItemSelectionModel::ClearAndSelect);
}

void Grid::mousePressEvent(QMouseEvent* event)
{
    clickedByPress = false;
    {
        const QScopedValueRollback<bool> press(pressing, true);
        QTableView::mousePressEvent(event);
    }
    // On press, not on release: the row is current even if the button is released elsewhere.
    if (clickedByPress)
        Q_EMIT Click();
}

/// Ignores drags, which would move the current row without a click.
void Grid::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

bool Grid::viewportEvent(QEvent* event)
{
    ShowChanges(); // the view must know the rows before it draws or locates cells
    return QTableView::viewportEvent(event);
}

void Grid::keyboardSearch(const QString& search)
{
    int column = nameColumn;
    for (int each = 0; column < 0 && each < Columns(); ++each)
        if (cells->IsLeftAligned(each))
            column = each;
    if (column < 0)
        return;
    const auto row = typeAhead.Find(search, Rows(), currentRow, [&](int each) { return Text(each, column); });
    if (row)
        setCurrentIndex(cells->index(*row, currentColumn));
}

void Grid::ChooseAllRows()
{
    if (Rows() == 0)
        return;
    const QItemSelection all(cells->index(0, 0), cells->index(Rows() - 1, Columns() - 1));
    selectionModel()->select(all, QItemSelectionModel::ClearAndSelect);
}

void Grid::CopyChosenRows() const
{
    QStringList lines;
    const auto addLine = [&](const auto& textOf) {
        QStringList texts;
        for (int column = 0; column < Columns(); ++column)
            texts << textOf(column).trimmed();
        lines << texts.join('\t');
    };
    addLine([&](int column) { return cells->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(); });
    for (int row = 0; row < Rows(); ++row)
        if (selectionModel()->isRowSelected(row))
            addLine([&](int column) { return Text(row, column); });
    if (lines.size() > 1)
        QApplication::clipboard()->setText(lines.join('\n') + '\n');
}

} // namespace forms
