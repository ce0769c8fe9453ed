#pragma once

#include <QString>
#include <QTableView>

namespace forms {

class GridModel;

/// A table of texts with a current row and column, as the screens use it. Cells are held by the model as text; filling sends no
/// signal per cell (the view is told once, when control returns to it). Widths are in twips, 1440 to the inch.
class Grid : public QTableView {
    Q_OBJECT
public:
    struct Column {
        QString heading;
        int widthTwips;
        Qt::Alignment alignment = Qt::AlignLeft;
    };

    Grid(const QString& name, const QList<Column>& columns);

    int Rows() const;
    /// Cuts to, or fills up to, `rows`; new rows are empty.
    void SetRows(int rows);
    int Columns() const;

    /// One empty row (the emptied first state of every list): one row, all of its cells empty, row 0 current.
    void ClearToOneRow();
    /// Adds a row at the end and returns its number.
    int AppendRow();
    void RemoveRow(int row);

    /// Cell text; raises 9 outside the grid.
    QString Text(int row, int column) const;
    void SetText(int row, int column, const QString& text);

    int Row() const;
    int Col() const;
    void SetRow(int row);
    void SetCol(int column);

    /// Highlights the whole row and makes it current.
    void SelectRow(int row);

signals:
    void Click();
    void DblClick();
    /// Enter was typed in the grid (it acts as a double click where a screen connects it so).
    void Entered();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    GridModel* model;
};

} // namespace forms
