#include "platform/forms/GridModel.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Colours.h"

namespace forms {

GridModel::GridModel(const QList<Grid::Column>& gridColumns, QObject* parent)
    : QAbstractTableModel(parent), columns(gridColumns)
{
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rows;
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rows)
        return {};
    if (role == Qt::DisplayRole)
        return cells[CellNumber(index.row(), index.column())];
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(columns[index.column()].alignment | Qt::AlignVCenter);
    if (role == Qt::BackgroundRole && backgrounds[index.row()] != Grid::Background::Usual)
        return backgrounds[index.row()] == Grid::Background::Today ? TheColours().today : TheColours().weekend;
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical || section < 0 || section >= columns.size())
        return {};
    if (role == Qt::DisplayRole)
        return columns[section].heading;
    if (role == Qt::ToolTipRole && !columns[section].tip.isEmpty())
        return columns[section].tip;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(columns[section].alignment | Qt::AlignVCenter);
    return {};
}

qsizetype GridModel::CellNumber(int row, int column) const
{
    if (row < 0 || row >= rows || column < 0 || column >= columns.size())
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    return row * columns.size() + column;
}

void GridModel::ChangeRows()
{
    if (resetting)
        return;
    beginResetModel();
    resetting = true;
    Q_EMIT Changed();
}

void GridModel::ChangeCells(const QRect& changed)
{
    if (resetting)
        return;
    const bool first = changedCells.isNull();
    changedCells = changedCells.united(changed);
    if (first)
        Q_EMIT Changed();
}

void GridModel::SetRows(int newRows)
{
    if (newRows < 0)
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    if (newRows == rows)
        return;
    ChangeRows();
    cells.resize(newRows * columns.size());
    backgrounds.resize(newRows);
    rows = newRows;
}

void GridModel::RemoveRow(int row)
{
    const qsizetype first = CellNumber(row, 0);
    ChangeRows();
    cells.remove(first, columns.size());
    backgrounds.remove(row);
    --rows;
}

QString GridModel::Text(int row, int column) const
{
    return cells[CellNumber(row, column)];
}

void GridModel::SetText(int row, int column, const QString& text)
{
    cells[CellNumber(row, column)] = text;
    ChangeCells({column, row, 1, 1});
}

void GridModel::SetRowBackground(int row, Grid::Background background)
{
    CellNumber(row, 0); // range check
    backgrounds[row] = background;
    ChangeCells({0, row, columnCount(), 1});
}

void GridModel::SetHeading(int column, const QString& text)
{
    if (column < 0 || column >= columns.size())
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    columns[column].heading = text;
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void GridModel::UpdateViews()
{
    const QRect changed = std::exchange(changedCells, QRect());
    if (std::exchange(resetting, false)) {
        endResetModel();
    } else if (!changed.isNull()) {
        Q_EMIT dataChanged(index(changed.top(), changed.left()), index(changed.bottom(), changed.right()),
                           {Qt::DisplayRole, Qt::BackgroundRole});
    }
}

} // namespace forms
