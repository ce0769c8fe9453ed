#include "platform/forms/GridTotals.h"

#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QPointer>
#include <QScrollBar>
#include <memory>
#include <vector>

namespace forms {

namespace {

constexpr int TotalGap = 8; // pixels between caption and total

/// Aligns a line of totals with the columns of its grid, on a ground as wide as the grid.
class TotalsLayout : public QLayout {
public:
    explicit TotalsLayout(Grid& gridAbove) : grid(&gridAbove), ground(new QFrame)
    {
        ground->setProperty("footer", true);
        AddControl(*ground); // first, to be behind the totals
        const auto follow = [this] { invalidate(); };
        connect(gridAbove.horizontalScrollBar(), &QScrollBar::valueChanged, this, follow);
        connect(gridAbove.horizontalHeader(), &QHeaderView::sectionResized, this, follow);
    }
    ~TotalsLayout() override { qDeleteAll(items); }
    Q_DISABLE_COPY_MOVE(TotalsLayout)

    void Add(const GridTotal& total)
    {
        AddControl(*total.control);
        totals.push_back(total);
    }

    void addItem(QLayoutItem* item) override { delete item; } // unused, see Add
    int count() const override { return static_cast<int>(items.size()); }
    QLayoutItem* itemAt(int index) const override { return items.value(index); }
    QLayoutItem* takeAt(int index) override { return index >= 0 && index < count() ? items.takeAt(index) : nullptr; }
    QSize sizeHint() const override { return {grid ? grid->sizeHint().width() : 0, Height()}; }
    QSize minimumSize() const override { return {0, Height()}; }
    Qt::Orientations expandingDirections() const override { return {}; }
    void setGeometry(const QRect& rect) override
    {
        QLayout::setGeometry(rect);
        ground->setGeometry(rect);
        if (grid)
            Arrange(rect);
    }

private:
    void AddControl(QWidget& control)
    {
        addChildWidget(&control);
        items << new QWidgetItem(&control);
    }

    int Height() const
    {
        int height = 0;
        for (const GridTotal& total : totals)
            height = qMax(height, total.control->sizeHint().height());
        return height;
    }

    int LeftOf(int column) const { return grid->x() + grid->frameWidth() + grid->columnViewportPosition(column); }

    void Arrange(const QRect& rect)
    {
        const int gridRight = grid->x() + grid->frameWidth() + grid->viewport()->width();
        int limit = qMin(rect.right() + 1, gridRight);
        for (auto each = totals.rbegin(); each != totals.rend(); ++each) {
            const GridTotal& total = *each;
            const int left = qMax(rect.left(), LeftOf(total.firstColumn));
            auto* figure = qobject_cast<FigureLabel*>(total.control);
            if (figure == nullptr) {
                const int begin = qMin(left, limit);
                const int room = limit - TotalGap - begin;
                const bool fits = room >= total.control->sizeHint().width(); // left out rather than cut
                total.control->setGeometry(begin, rect.top(), fits ? room : 0, rect.height());
                limit = begin;
                continue;
            }
            const int columnsRight = LeftOf(total.lastColumn) + grid->columnWidth(total.lastColumn);
            const int right = qMin(columnsRight, limit);
            const int width = qMax(right - qMin(left, right), figure->NeededWidth());
            const int begin = qMax(qMin(right - width, left), LeastLeft(each, rect));
            figure->setGeometry(begin, rect.top(), right - begin, rect.height());
            limit = begin;
        }
    }

    /// The leftmost position of a figure, leaving room for the figures before it.
    int LeastLeft(std::vector<GridTotal>::reverse_iterator total, const QRect& rect) const
    {
        int least = rect.left();
        while (++total != totals.rend()) {
            if (const auto* figure = qobject_cast<FigureLabel*>(total->control))
                least += qMin(figure->NeededWidth(), grid->columnWidth(total->lastColumn));
        }
        return least;
    }

    QPointer<Grid> grid;
    QFrame* ground; ///< owned by the window
    QList<QLayoutItem*> items;
    std::vector<GridTotal> totals;
};

bool IsCentred(const Grid& grid, int column)
{
    const QVariant alignment = grid.model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole);
    return (alignment.toInt() & Qt::AlignHCenter) != 0;
}

} // namespace

GridTotal Under(const Grid& grid, int firstColumn, int lastColumn, FigureLabel& total)
{
    total.AlignUnderColumns(IsCentred(grid, lastColumn));
    return {&total, firstColumn, lastColumn};
}

GridTotal Under(const Grid& grid, int column, FigureLabel& total)
{
    return Under(grid, column, column, total);
}

GridTotal Caption(const QString& name, const QString& text, int firstColumn)
{
    Label& caption = NewLabel(name, text);
    caption.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return {&caption, firstColumn, firstColumn};
}

Layout WithTotals(Grid& grid, std::initializer_list<std::initializer_list<GridTotal>> lines)
{
    auto column = std::make_unique<QVBoxLayout>();
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    Lend(grid);
    column->addWidget(&grid, 1);
    for (const auto& totals : lines) {
        auto line = std::make_unique<TotalsLayout>(grid);
        for (const GridTotal& total : totals) {
            Lend(*total.control);
            line->Add(total);
        }
        column->addLayout(line.release());
    }
    return Layout(std::move(column));
}

} // namespace forms
