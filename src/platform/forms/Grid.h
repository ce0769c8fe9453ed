#pragma once

#include "platform/forms/TypeAhead.h"

#include <QString>
#include <QTableView>

namespace forms {

class GridHeader;
class GridModel;

/// A table of texts with a current row and column, as the screens use it. Cells are held by the model as text; filling
/// sends no signal per cell: the view is updated once, when control returns to it, while the model itself always has
/// the present texts. Widths are in twips, 1440 to the inch, at the usual font size. It starts with one empty row.
/// Where it has more or less room than its columns take, the left-aligned ones share it or give way, by half at most.
///
/// Keys: arrows, Home and End (first and last row), pages; Enter; letters go to the next row whose name begins with
/// them; Ctrl+A chooses all rows, Ctrl+C copies the chosen ones with the headings, trimmed, cells between tabs. A
/// figure that is wider than its column is written smaller and never cut.
class Grid : public QTableView {
    Q_OBJECT
    Q_PROPERTY(QString Tag MEMBER Tag)
public:
    struct Column {
        QString heading;
        int widthTwips;
        Qt::Alignment alignment = Qt::AlignLeft;
        QString tip = {}; ///< tooltip of the heading
    };

    /// What lies under a row. In a calendar table days off and the current day are told apart from the others.
    enum class Ground { Usual, DayOff, Today };

    Grid(const QString& name, const QList<Column>& columns);

    int Rows() const;
    /// Cuts to, or fills up to, `rows`; new rows are empty. Raises 9 for a negative number.
    void SetRows(int rows);
    int Columns() const;

    /// One empty row (the emptied first state of every list): one row, all of its cells empty, row 0 current, none
    /// selected.
    void ClearToOneRow();
    /// Adds a row at the end and returns its number.
    int AppendRow();
    /// Raises 9 outside the grid.
    void RemoveRow(int row);

    /// Cell text; raises 9 outside the grid.
    QString Text(int row, int column) const;
    void SetText(int row, int column, const QString& text);

    /// New rows have the usual ground. Raises 9 outside the grid.
    void SetRowGround(int row, Ground ground);

    /// Raises 9 outside the grid.
    void SetHeading(int column, const QString& text);
    /// A second heading line over the columns from first to last. Raises 9 outside the grid.
    void SetGroupHeading(int firstColumn, int lastColumn, const QString& text);

    /// The current row and column. They follow clicks and keys. Setting them neither sends a Click nor moves the view;
    /// raises 9 outside the grid.
    int Row() const;
    int Col() const;
    void SetRow(int row);
    void SetCol(int column);

    /// The column that typed letters are looked for in; the first left-aligned one where none is set.
    void SetNameColumn(int column) { nameColumn = column; }
    /// Rows that the grid asks room for at its window's opening, besides those it has then.
    void SetUsualRows(int rows);
    /// The room above and below a line of text together, in pixels.
    void SetRowPadding(int pixels);

    /// Highlights the whole row, makes it current and brings it into view. Raises 9 outside the grid.
    void SelectRow(int row);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    QString Tag;

Q_SIGNALS:
    /// The user made a cell current, by click or key, or clicked the current one again.
    void Click();
    void DblClick();
    /// Enter was typed in the grid (it acts as a double click where a screen connects it so).
    void Entered();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyboardSearch(const QString& search) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void BeginChange();
    void ShowChanges();
    void MarkCurrent();
    void Follow(const QModelIndex& index);
    void ChooseAllRows();
    void CopyChosenRows() const;
    void ScaleToFont();
    int rowPadding;
    void ShareWidth();
    int NaturalWidth() const;
    int HeightOfRows(int rows) const;

    GridModel* cells;
    GridHeader* header;
    QList<int> columnTwips;
    TypeAhead typeAhead;
    int nameColumn = -1;
    int usualRows = 12;
    int currentRow = 0;
    int currentColumn = 0;
    bool rowSelected = false;    // restored when the view is reset
    bool settling = false;       // the view follows the grid, and not the other way round
    bool pressing = false;       // Qt is at work on a mouse press
    bool clickedByPress = false; // the press has sent its Click; the release must not repeat it
};

} // namespace forms
