#pragma once

#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

#include <QItemSelectionModel>
#include <QStringList>
#include <gtest/gtest.h>

namespace tests {

/// The cells of a grid row, from the left.
inline QStringList RowOf(const forms::Grid& grid, int row)
{
    QStringList cells;
    for (int column = 0; column < grid.Columns(); ++column)
        cells << grid.Text(row, column);
    return cells;
}

/// The cells of a grid column, from the top, trimmed.
inline QStringList ColumnOf(const forms::Grid& grid, int column)
{
    QStringList cells;
    for (int row = 0; row < grid.Rows(); ++row)
        cells << grid.Text(row, column).trimmed();
    return cells;
}

/// The row that is highlighted; -1 for none.
inline int HighlightedRow(const forms::Grid& grid)
{
    return grid.selectionModel()->selectedRows().value(0).row();
}

/// The texts of an array of controls.
template <class Controls>
QStringList TextsOf(Controls& controls)
{
    QStringList texts;
    for (int index = Controls::FirstIndex(); index <= Controls::LastIndex(); ++index)
        texts << controls[index].text();
    return texts;
}

/// Whether a figure is under its column, as wide as that or wider.
inline bool IsUnder(const forms::FigureLabel& figure, const forms::Grid& grid, int column)
{
    const int left = grid.viewport()->mapTo(grid.window(), QPoint(grid.columnViewportPosition(column), 0)).x();
    const int right = left + grid.columnWidth(column) - 1;
    const int start = figure.mapTo(figure.window(), QPoint()).x();
    return start <= left + 1 && start + figure.width() >= right && figure.width() < 2 * grid.columnWidth(column);
}

} // namespace tests
