#pragma once

#include "platform/forms/Layout.h"

namespace forms {

class FigureLabel;
class Grid;

/// A total that stands under these columns of a grid and is as wide as they are together. Centred columns have centred
/// totals.
///
/// The line of totals is a Row with Spacing(0), as wide as its grid: Row{Before(...), Under(...), Item::Stretch()}.
Item Under(const Grid& grid, int firstColumn, int lastColumn, FigureLabel& total);

/// A caption that ends where the total begins, under the columns before it.
Item Before(const Grid& grid, int firstColumn, int lastColumn, const QString& name, const QString& text);

} // namespace forms
