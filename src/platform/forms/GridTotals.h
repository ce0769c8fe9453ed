#pragma once

#include "platform/forms/Layout.h"

#include <initializer_list>

namespace forms {

class FigureLabel;
class Grid;

/// An item of a line of totals: a figure under columns of the grid, or a caption that ends where the next figure
/// starts.
struct GridTotal {
    QWidget* control;
    int firstColumn;
    int lastColumn;
};

/// A total as wide as these columns together, centred if their cells are.
GridTotal Under(const Grid& grid, int firstColumn, int lastColumn, FigureLabel& total);
GridTotal Under(const Grid& grid, int column, FigureLabel& total);

/// A caption for the next total, starting below `firstColumn`.
GridTotal Caption(const QString& name, const QString& text, int firstColumn = 0);

/// A grid and its footer, which has a line for each list of totals. Each total stays aligned with its columns. A figure
/// wider than its columns grows to the left, or is reduced where a neighbour leaves no room. Totals of columns scrolled
/// out of view stay visible.
Layout WithTotals(Grid& grid, std::initializer_list<std::initializer_list<GridTotal>> lines);

} // namespace forms
