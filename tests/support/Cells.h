#pragma once

#include "platform/forms/Grid.h"

#include <QStringList>

namespace tests {

/// The cells of a grid row, from the left.
inline QStringList RowOf(const forms::Grid& grid, int row)
{
    QStringList cells;
    for (int column = 0; column < grid.Columns(); ++column)
        cells << grid.Text(row, column);
    return cells;
}

} // namespace tests
