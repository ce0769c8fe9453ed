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

int Grid::NaturalWidth() const
{
    int width = 0;
    for (const int twips : columnTwips)
        width += ScaledPixelsOf(twips);
    return width;
}

void Grid::ShareWidth()
{
    int sharing = 0; // pixels of the columns that grow and shrink
    for (int column = 0; column < columnTwips.size(); ++column)
        if (cells->IsLeftAligned(column))
            sharing += ScaledPixelsOf(columnTwips[column]);
    int room = qMax(-sharing / 2, viewport()->width() - NaturalWidth());
    for (int column = 0; column < columnTwips.size(); ++column) {
        const int natural = ScaledPixelsOf(columnTwips[column]);
        const bool shares = cells->IsLeftAligned(column);
        const int more = shares ? room * natural / sharing : 0;
        setColumnWidth(column, natural + more);
        room -= more;
        sharing -= shares ? natural : 0;
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
