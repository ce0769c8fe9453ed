#pragma once

#include "platform/forms/Grid.h"

#include <QAbstractTableModel>

namespace forms {

/// The cells of a grid as text, in row order. Reads are always up to date; change signals are collected: Changed is
/// emitted for the first change after UpdateViews, which then notifies the views of all changes at once.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    GridModel(const QList<Grid::Column>& columns, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    void SetRows(int rows);
    void RemoveRow(int row);
    /// Raises 9 outside the grid.
    QString Text(int row, int column) const;
    void SetText(int row, int column, const QString& text);
    void SetRowBackground(int row, Grid::Background background);
    void SetHeading(int column, const QString& text);
    bool IsLeftAligned(int column) const { return columns[column].alignment.testFlag(Qt::AlignLeft); }

    bool HasPendingRows() const { return resetting; }
    void UpdateViews();

Q_SIGNALS:
    void Changed();

private:
    qsizetype CellNumber(int row, int column) const;
    void ChangeRows();
    void ChangeCells(const QRect& changed);

    QList<Grid::Column> columns;
    QList<QString> cells;
    QList<Grid::Background> backgrounds; // by row
    int rows = 0;
    bool resetting = false; // in a model reset: the number of rows has changed
    QRect changedCells;     // x is the column, y the row
};

} // namespace forms
