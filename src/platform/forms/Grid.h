#pragma once

#include "platform/forms/TypeAhead.h"

#include <QString>
#include <QTableView>

namespace forms {

class GridHeader;
class GridModel;

/// A table of texts with a current row and column. Filling sends no signals: the model is always up to date, the view
/// is updated once, when control returns to the event loop. Widths are in twips, 1440 to the inch, in the normal font
/// size. Starts with one empty row. The left-aligned columns share spare width, or shrink where there isn't enough: by
/// up to half, but not to less than their heading.
///
/// Keys: arrows, Home and End (first and last row), Page Up and Page Down; with Shift they select the rows on the way,
/// the last reached is current; Enter; letters find the next row whose name starts with them; Ctrl+A selects all rows,
/// Ctrl+C copies the selected ones with the headings, trimmed and tab-separated. Figures wider than their column are
/// reduced, never cut.
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

    /// The background of a row; calendar tables mark days off and today.
    enum class Background { Usual, DayOff, Today };

    Grid(const QString& name, const QList<Column>& columns);

    int Rows() const;
    /// Truncates or extends to `rows`; new rows are empty. Raises 9 for a negative number.
    void SetRows(int rows);
    int Columns() const;

    /// Resets to one empty row, current and not selected.
    void ClearToOneRow();
    /// Adds a row at the end and returns its number.
    int AppendRow();
    /// Raises 9 outside the grid.
    void RemoveRow(int row);

    /// Cell text; raises 9 outside the grid.
    QString Text(int row, int column) const;
    void SetText(int row, int column, const QString& text);

    /// Raises 9 outside the grid.
    void SetRowBackground(int row, Background background);

    /// Raises 9 outside the grid.
    void SetHeading(int column, const QString& text);
    /// A second heading line over the columns from first to last. Raises 9 outside the grid.
    void SetGroupHeading(int firstColumn, int lastColumn, const QString& text);

    /// The current row and column, changed by clicks and keys. Setting them neither emits Click nor scrolls; raises 9
    /// outside the grid.
    int Row() const;
    int Col() const;
    void SetRow(int row);
    void SetCol(int column);

    /// The column searched by typed letters; by default the first left-aligned one.
    void SetNameColumn(int column) { nameColumn = column; }
    /// Least number of rows in the size hint.
    void SetUsualRows(int rows);
    /// Pixels above and below a line of text together.
    void SetRowPadding(int pixels);

    /// Highlights the whole row, makes it current and brings it into view; the empty row of a list without entries
    /// isn't highlighted. Raises 9 outside the grid.
    void SelectRow(int row);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    QString Tag;

Q_SIGNALS:
    /// The user selected a cell by mouse or keyboard, or clicked the current one again.
    void Click();
    void DblClick();
    /// Enter was pressed.
    void Entered();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyboardSearch(const QString& search) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;

private:
    bool HasEntries() const;
    /// The row that a key pressed with Shift moves to; -1 for other keys.
    int RowReachedWithShift(const QKeyEvent& event);
    void ExtendTo(int row);
    void BeginChange();
    void ShowChanges();
    void MarkCurrent();
    void Follow(const QModelIndex& index);
    void ChooseAllRows();
    void CopyChosenRows() const;
    void ScaleToFont();
    void ShareWidth();
    int NaturalWidth() const;
    int HeightOfRows(int rows) const;

    GridModel* cells;
    GridHeader* header;
    QList<int> columnTwips;
    TypeAhead typeAhead;
    int nameColumn = -1;
    int usualRows = 12;
    int rowPadding = 8; // pixels above and below a line of text together
    int currentRow = 0;
    int currentColumn = 0;
    bool rowSelected = false;    // restored when the view is reset
    bool settling = false;       // the grid itself is changing the view's current cell
    bool pressing = false;       // Qt is handling a mouse press
    bool clickedByPress = false; // Click was emitted on press; don't repeat it on release
};

} // namespace forms
