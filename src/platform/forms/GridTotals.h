#pragma once

#include "platform/forms/Layout.h"

#include <initializer_list>

namespace forms {

class FigureLabel;
class Grid;

/// One thing on the line of totals: a figure under columns of the grid, or a caption that ends where the next figure
/// begins.
struct GridTotal {
    QWidget* control;
    int firstColumn;
    int lastColumn;
};

/// A total that is as wide as these columns together, centred where their cells are.
GridTotal Under(const Grid& grid, int firstColumn, int lastColumn, FigureLabel& total);
GridTotal Under(const Grid& grid, int column, FigureLabel& total);

/// A caption before the total that follows it, below the columns from `firstColumn` on.
GridTotal Caption(const QString& name, const QString& text, int firstColumn = 0);

/// The line of totals below a grid: each total follows its columns. A figure that is wider than
/// its columns grows to the left; where a neighbour leaves no room it is written smaller. Totals of columns that the
/// grid has scrolled out of sight stay in sight. Grid and line belong into one Column.
Layout Totals(Grid& grid, std::initializer_list<GridTotal> totals);

} // namespace forms
