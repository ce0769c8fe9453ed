#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/forms/GridHeader.h"
#include "platform/forms/GridModel.h"

#include <QEvent>
#include <QScrollBar>

namespace forms {

namespace {

constexpr int FewestRows = 3;
constexpr int MostRowsAtOpening = 60;
constexpr int LeastWidth = 160; // pixels

} // namespace

void Grid::SetRowPadding(int pixels)
{
    rowPadding = pixels;
    ScaleToFont();
}

void Grid::ScaleToFont()
{
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowPadding);
    ShareWidth();
    updateGeometry();
}

int Grid::NaturalWidth(int column) const
{
    const int designed = ScaledPixelsOf(columnTwips[column]);
    return cells->IsLeftAligned(column) ? designed : qMax(designed, header->NeededWidth(column));
}

int Grid::NaturalWidth() const
{
    int width = 0;
    for (int column = 0; column < Columns(); ++column)
        width += NaturalWidth(column);
    return width;
}

void Grid::ShareWidth()
{
    const int missing = NaturalWidth() - viewport()->width();
    bool hasNames = false;
    for (int column = 0; column < Columns(); ++column)
        hasNames = hasNames || cells->IsLeftAligned(column);
    const auto shareOf = [&](int column) {
        const int natural = NaturalWidth(column);
        if (hasNames && !cells->IsLeftAligned(column))
            return 0;
        return missing < 0 ? natural : qMax(0, natural - qMax(natural / 2, header->NeededWidth(column)));
    };
    int shares = 0;
    for (int column = 0; column < columnTwips.size(); ++column)
        shares += shareOf(column);
    int more = missing < 0 ? -missing : qMax(-shares, -missing); // pixels to add to the columns
    for (int column = 0; column < columnTwips.size(); ++column) {
        const int share = shareOf(column);
        const int added = share == 0 ? 0 : more * share / shares;
        setColumnWidth(column, NaturalWidth(column) + added);
        more -= added;
        shares -= share;
    }
}

void Grid::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    ShareWidth();
}

void Grid::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        ScaleToFont();
}

void Grid::SetUsualRows(int rows)
{
    usualRows = rows;
    updateGeometry();
}

int Grid::HeightOfRows(int rows) const
{
    return header->sizeHint().height() + rows * verticalHeader()->defaultSectionSize() + 2 * frameWidth();
}

QSize Grid::sizeHint() const
{
    const int width = NaturalWidth() + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    return {width, HeightOfRows(qMax(usualRows, qMin(Rows(), MostRowsAtOpening)))};
}

QSize Grid::minimumSizeHint() const
{
    return {qMin(sizeHint().width(), LeastWidth), HeightOfRows(FewestRows)};
}

} // namespace forms
