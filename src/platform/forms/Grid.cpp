#include "platform/forms/Grid.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/FittingFont.h"
#include "platform/forms/Form.h"
#include "platform/forms/GridHeader.h"
#include "platform/forms/GridModel.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTimer>

namespace forms {

namespace {

constexpr int UsualRowPadding = 8; // above and below a line of text together
constexpr int CellMargin = 3;      // beside a text; Qt's own
constexpr int FewestRows = 3;
constexpr int MostRowsAtOpening = 60;

/// Paints cells. A centred text that just fits its column is written whole and not cut for the sake of a margin; a
/// figure is written smaller where its column is too narrow.
class CellPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        // The style sheet passes over the ground of a row.
        if (const QVariant ground = index.data(Qt::BackgroundRole); ground.isValid())
            painter->fillRect(option.rect, ground.value<QColor>());
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
    : rowPadding(UsualRowPadding), cells(new GridModel(columns, this)), header(new GridHeader(this))
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

void Grid::SetRowGround(int row, Ground ground)
{
    cells->SetRowGround(row, ground);
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

/// Called at the first change: the view is updated as soon as the current work is done.
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

/// Brings the view's current cell to the grid's, unless the view is still to learn of the rows.
void Grid::MarkCurrent()
{
    if (cells->HasPendingRows() || currentRow >= Rows())
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
        clickedByPress = true; // sent when the view has handled the press
    else
        Q_EMIT Click();
}

void Grid::keyPressEvent(QKeyEvent* event)
{
    ShowChanges();
    if (event->matches(QKeySequence::Copy))
        return CopyChosenRows();
    if (event->matches(QKeySequence::SelectAll))
        return ChooseAllRows();
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
    clickedByPress = false;
    {
        const QScopedValueRollback<bool> press(pressing, true);
        QTableView::mousePressEvent(event);
    }
    // Not left to the release: where the button is let go elsewhere, the row is current all the same.
    if (clickedByPress)
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

void Grid::keyboardSearch(const QString& search)
{
    int column = nameColumn;
    for (int each = 0; column < 0 && each < Columns(); ++each)
        if (cells->IsLeftAligned(each))
            column = each;
    if (column < 0)
        return;
    const auto row = typeAhead.Find(search, Rows(), currentRow, [&](int each) { return Text(each, column); });
    if (row)
        setCurrentIndex(cells->index(*row, currentColumn));
}

void Grid::ChooseAllRows()
{
    if (Rows() == 0)
        return;
    const QItemSelection all(cells->index(0, 0), cells->index(Rows() - 1, Columns() - 1));
    selectionModel()->select(all, QItemSelectionModel::ClearAndSelect);
}

void Grid::CopyChosenRows() const
{
    QStringList lines;
    const auto addLine = [&](const auto& textOf) {
        QStringList texts;
        for (int column = 0; column < Columns(); ++column)
            texts << textOf(column).trimmed();
        lines << texts.join('\t');
    };
    addLine([&](int column) { return cells->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString(); });
    for (int row = 0; row < Rows(); ++row)
        if (selectionModel()->isRowSelected(row))
            addLine([&](int column) { return Text(row, column); });
    if (lines.size() > 1)
        QApplication::clipboard()->setText(lines.join('\n') + '\n');
}

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
    int sharing = 0; // pixels of the columns that take more where there is more, and give way where there is less
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
    return {qMin(sizeHint().width(), 160), HeightOfRows(FewestRows)};
}

} // namespace forms
