#include "platform/forms/Grid.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/FittingFont.h"
#include "platform/forms/GridHeader.h"
#include "platform/forms/GridModel.h"

#include <QAbstractButton>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>

namespace forms {

namespace {

constexpr int CellMargin = 3; // on each side of a text, as in Qt

/// Paints cells. A centred text that just fits its column isn't cut for the sake of a margin; figures are reduced to
/// fit their columns.
class CellPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        // With a style sheet, the base class ignores the background role.
        if (const QVariant background = index.data(Qt::BackgroundRole); background.isValid())
            painter->fillRect(option.rect, background.value<QColor>());
        QStyledItemDelegate::paint(painter, option, index);
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if ((option->displayAlignment & Qt::AlignHCenter) != 0) {
            option->text = option->text.trimmed();
            option->font = FittingFont(option->font, option->text, option->rect.width());
        } else if ((option->displayAlignment & Qt::AlignRight) != 0) {
            option->font = FittingFont(option->font, option->text, option->rect.width() - 2 * CellMargin);
        } else {
            return;
        }
        option->fontMetrics = QFontMetrics(option->font);
        option->textElideMode = Qt::ElideNone;
    }
};

} // namespace

Grid::Grid(const QString& name, const QList<Column>& columns)
    : cells(new GridModel(columns, this)), header(new GridHeader(this))
{
    setObjectName(name);
    setHorizontalHeader(header);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->hide();
    if (auto* corner = findChild<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly))
        corner->setAccessibleName(QStringLiteral("Coin du tableau"));
    setItemDelegate(new CellPainter(this));
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setHorizontalScrollMode(ScrollPerPixel);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, verticalScrollBar(),
            [bar = verticalScrollBar()](int first, int last) { bar->setEnabled(last > first); });

    cells->SetRows(1);
    cells->UpdateViews();
    setModel(cells);
    for (const Column& column : columns)
        columnTwips << column.widthTwips;
    ScaleToFont();

    connect(cells, &GridModel::Changed, this, &Grid::BeginChange);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &Grid::Follow);
    connect(this, &QTableView::clicked, this, [this] {
        if (!std::exchange(clickedByPress, false))
            Q_EMIT Click();
    });
    connect(this, &QTableView::doubleClicked, this, [this] { Q_EMIT DblClick(); });
}

int Grid::Rows() const
{
    return cells->rowCount();
}

int Grid::Columns() const
{
    return cells->columnCount();
}

void Grid::SetRows(int rows)
{
    cells->SetRows(rows);
    currentRow = qBound(0, currentRow, qMax(0, rows - 1));
}

void Grid::ClearToOneRow()
{
    cells->SetRows(0); // new rows are empty
    cells->SetRows(1);
    currentRow = 0;
    rowSelected = false;
}

int Grid::AppendRow()
{
    cells->SetRows(Rows() + 1);
    return Rows() - 1;
}

void Grid::RemoveRow(int row)
{
    cells->RemoveRow(row);
    currentRow = qBound(0, currentRow, qMax(0, Rows() - 1));
}

QString Grid::Text(int row, int column) const
{
    return cells->Text(row, column);
}

void Grid::SetText(int row, int column, const QString& text)
{
    cells->SetText(row, column, text);
}

void Grid::SetRowBackground(int row, Background background)
{
    cells->SetRowBackground(row, background);
}

void Grid::SetHeading(int column, const QString& text)
{
    cells->SetHeading(column, text);
    ShareWidth();
}

void Grid::SetGroupHeading(int firstColumn, int lastColumn, const QString& text)
{
    if (firstColumn < 0 || lastColumn < firstColumn || lastColumn >= Columns())
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    header->AddGroup(firstColumn, lastColumn, text);
}

int Grid::Row() const
{
    return currentRow;
}

int Grid::Col() const
{
    return currentColumn;
}

void Grid::SetRow(int row)
{
    if (row < 0 || row >= Rows())
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    currentRow = row;
    MarkCurrent();
}

void Grid::SetCol(int column)
{
    if (column < 0 || column >= Columns())
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    currentColumn = column;
    MarkCurrent();
}

void Grid::SelectRow(int row)
{
    if (row < 0 || row >= Rows())
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    currentRow = row;
    ShowChanges();
    const QScopedValueRollback<bool> settle(settling, true);
    const QModelIndex index = cells->index(currentRow, currentColumn);
    selectionModel()->setCurrentIndex(index, HasEntries()
                                                 ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                                                 : QItemSelectionModel::SelectionFlags(QItemSelectionModel::Clear));
    scrollTo(index);
}

bool Grid::HasEntries() const
{
    if (Rows() != 1)
        return Rows() > 1;
    for (int column = 0; column < Columns(); ++column)
        if (!Text(0, column).trimmed().isEmpty())
            return true;
    return false;
}

/// Qt would also highlight the empty row when the grid gets the focus.
QItemSelectionModel::SelectionFlags Grid::selectionCommand(const QModelIndex& index, const QEvent* event) const
{
    return HasEntries() ? QTableView::selectionCommand(index, event) : QItemSelectionModel::NoUpdate;
}

/// Called at the first change: schedules the update of the view for when control returns to the event loop.
void Grid::BeginChange()
{
    rowSelected = selectionModel()->hasSelection();
    QTimer::singleShot(0, this, &Grid::ShowChanges);
}

void Grid::ShowChanges()
{
    const bool rowsChanged = cells->HasPendingRows();
    const QScopedValueRollback<bool> settle(settling, true);
    cells->UpdateViews();
    if (!rowsChanged)
        return;
    updateGeometry();
    MarkCurrent();
    if (rowSelected && currentRow < Rows())
        selectRow(currentRow);
}

/// Sets the view's current cell, unless the view doesn't know the rows yet.
void Grid::MarkCurrent()
{
    if (cells->HasPendingRows() || currentRow >= Rows())
        return;
    const QScopedValueRollback<bool> settle(settling, true);
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(cells->index(currentRow, currentColumn), QItemSelectionModel::NoUpdate);
    setAutoScroll(true);
}

/// The view's current cell was changed by mouse, keyboard or assistive software.
void Grid::Follow(const QModelIndex& index)
{
    if (settling || !index.isValid())
        return;
    currentRow = index.row();
    currentColumn = index.column();
    if (pressing)
        clickedByPress = true; // Click follows when the view has handled the press
    else
        Q_EMIT Click();
}

} // namespace forms
