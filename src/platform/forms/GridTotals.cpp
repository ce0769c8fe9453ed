#include "platform/forms/GridTotals.h"

#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

namespace forms {

namespace {

constexpr int CellMargin = 6; // pixels between a figure and the end of its cell

/// The pixels that columns of a grid take, from first to last.
int WidthOf(const Grid& grid, int first, int last)
{
    int width = 0;
    for (int column = first; column <= last; ++column)
        width += grid.columnWidth(column);
    return width;
}

bool IsCentred(const Grid& grid, int column)
{
    const QVariant alignment = grid.model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole);
    return (alignment.toInt() & Qt::AlignHCenter) != 0;
}

} // namespace

Item Under(const Grid& grid, int firstColumn, int lastColumn, FigureLabel& total)
{
    total.setFixedWidth(WidthOf(grid, firstColumn, lastColumn));
    total.setProperty("underColumns", true); // columns are narrow: no padding
    const bool centred = IsCentred(grid, lastColumn);
    total.setAlignment((centred ? Qt::AlignHCenter : Qt::AlignRight) | Qt::AlignVCenter);
    total.setIndent(centred ? 0 : CellMargin);
    return total;
}

Item Before(const Grid& grid, int firstColumn, int lastColumn, const QString& name, const QString& text)
{
    constexpr int captionGap = 8; // pixels
    Label& caption = NewLabel(name, text);
    caption.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    caption.setContentsMargins(0, 0, captionGap, 0);
    caption.setFixedWidth(WidthOf(grid, firstColumn, lastColumn) + (firstColumn == 0 ? grid.frameWidth() : 0));
    return caption;
}

} // namespace forms
