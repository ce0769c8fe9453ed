#include "platform/forms/Grid.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Form.h"
#include "platform/forms/GridHeader.h"
#include "platform/forms/GridModel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>

namespace forms {

namespace {

constexpr int RowHeight = 24;
constexpr int UsualRows = 12;
constexpr int FewestRows = 3;

/// Paints cells; a centred text that just fits its column is written whole and not cut for the sake of a margin.
class CellPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        if ((option->displayAlignment & Qt::AlignHCenter) == 0)
            return;
        option->text = option->text.trimmed();
        if (option->fontMetrics.horizontalAdvance(option->text) <= option->rect.width())
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
    verticalHeader()->setDefaultSectionSize(RowHeight);
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
    // No empty stripe beside the last column, however many rows there are.
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Expanding);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, verticalScrollBar(),
            [bar = verticalScrollBar()](int first, int last) { bar->setEnabled(last > first); });

    cells->SetRows(1);
    cells->Tell();
    setModel(cells);
    for (int column = 0; column < columns.size(); ++column)
        setColumnWidth(column, PixelsOf(columns[column].widthTwips));

    connect(cells, &GridModel::Changed, this, &Grid::BeginChange);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, &Grid::Follow);
    connect(this, &QTableView::clicked, this, [this] {
        if (!std::exchange(toldByPress, false))
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

void Grid::SetHeading(int column, const QString& text)
{
    cells->SetHeading(column, text);
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
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

/// The model is about to tell of changes: once, as soon as the work in hand is done.
void Grid::BeginChange()
{
    rowSelected = selectionModel()->hasSelection();
    QTimer::singleShot(0, this, &Grid::ShowChanges);
}

void Grid::ShowChanges()
{
    const bool rowsChanged = cells->HasUntoldRows();
    const QScopedValueRollback<bool> settle(settling, true);
    cells->Tell();
    if (!rowsChanged)
        return;
    MarkCurrent();
    if (rowSelected && currentRow < Rows())
        selectRow(currentRow);
}

/// Brings the view's current cell to the grid's, unless the view is still to learn of the rows.
void Grid::MarkCurrent()
{
    if (cells->HasUntoldRows() || currentRow >= Rows())
        return;
    const QScopedValueRollback<bool> settle(settling, true);
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(cells->index(currentRow, currentColumn), QItemSelectionModel::NoUpdate);
    setAutoScroll(true);
}

/// The view's current cell changed: by the mouse, a key or assistive software, when the grid itself didn't do it.
void Grid::Follow(const QModelIndex& index)
{
    if (settling || !index.isValid())
        return;
    currentRow = index.row();
    currentColumn = index.column();
    if (pressing)
        toldByPress = true; // told when the view has done with the press
    else
        Q_EMIT Click();
}

void Grid::keyPressEvent(QKeyEvent* event)
{
    ShowChanges();
    if (event->matches(QKeySequence::Copy)) {
        CopyRow();
        return;
    }
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

void Grid::mousePressEvent(QMouseEvent* event)
{
    toldByPress = false;
    {
        const QScopedValueRollback<bool> press(pressing, true);
        QTableView::mousePressEvent(event);
    }
    // Not left to the release: where the button is let go elsewhere, the row is current all the same.
    if (toldByPress)
        Q_EMIT Click();
}

/// A drag over the rows would move the current row without a click.
void Grid::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton)
        QTableView::mouseMoveEvent(event);
}

bool Grid::viewportEvent(QEvent* event)
{
    ShowChanges(); // the view draws and finds cells only after it has learnt of changed rows
    return QTableView::viewportEvent(event);
}

void Grid::CopyRow() const
{
    QStringList texts;
    for (int column = 0; column < Columns() && currentRow < Rows(); ++column)
        texts << Text(currentRow, column);
    QApplication::clipboard()->setText(texts.join('\t'));
}

int Grid::HeightOfRows(int rows) const
{
    return header->sizeHint().height() + rows * RowHeight + 2 * frameWidth();
}

QSize Grid::sizeHint() const
{
    const int width = header->length() + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    return {width, HeightOfRows(UsualRows)};
}

QSize Grid::minimumSizeHint() const
{
    return {qMin(sizeHint().width(), 160), HeightOfRows(FewestRows)};
}

} // namespace forms
