#include "platform/forms/GridTotals.h"

#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

#include <QHeaderView>
#include <QLayout>
#include <QPointer>
#include <QScrollBar>
#include <memory>
#include <vector>

namespace forms {

namespace {

constexpr int CaptionGap = 8; // pixels between caption and total

/// Aligns a line of totals with the columns of its grid.
class TotalsLayout : public QLayout {
public:
    explicit TotalsLayout(Grid& gridAbove) : grid(&gridAbove)
    {
        const auto follow = [this] { invalidate(); };
        connect(gridAbove.horizontalScrollBar(), &QScrollBar::valueChanged, this, follow);
        connect(gridAbove.horizontalHeader(), &QHeaderView::sectionResized, this, follow);
    }
    ~TotalsLayout() override
    {
        for (const Entry& entry : entries)
            delete entry.item;
    }
    Q_DISABLE_COPY_MOVE(TotalsLayout)

    void Add(const GridTotal& total)
    {
        addChildWidget(total.control);
        entries.push_back({new QWidgetItem(total.control), total});
    }

    void addItem(QLayoutItem* item) override { delete item; } // unused, see Add
    int count() const override { return static_cast<int>(entries.size()); }
    QLayoutItem* itemAt(int index) const override
    {
        return index >= 0 && index < count() ? entries[static_cast<std::size_t>(index)].item : nullptr;
    }
    QLayoutItem* takeAt(int index) override
    {
        QLayoutItem* const item = itemAt(index);
        if (item != nullptr)
            entries.erase(entries.begin() + index);
        return item;
    }
    QSize sizeHint() const override { return {grid ? grid->sizeHint().width() : 0, Height()}; }
    QSize minimumSize() const override { return {0, Height()}; }
    Qt::Orientations expandingDirections() const override { return {}; }
    void setGeometry(const QRect& rect) override
    {
        QLayout::setGeometry(rect);
        if (grid)
            Arrange(rect);
    }

private:
    struct Entry {
        QLayoutItem* item;
        GridTotal total;
    };

    int Height() const
    {
        int height = 0;
        for (const Entry& entry : entries)
            height = qMax(height, entry.total.control->sizeHint().height());
        return height;
    }

    int LeftOf(int column) const { return grid->x() + grid->frameWidth() + grid->columnViewportPosition(column); }

    void Arrange(const QRect& rect)
    {
        const int gridRight = grid->x() + grid->frameWidth() + grid->viewport()->width();
        int limit = qMin(rect.right() + 1, gridRight);
        for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
            const GridTotal& total = entry->total;
            const int left = qMax(rect.left(), LeftOf(total.firstColumn));
            auto* figure = qobject_cast<FigureLabel*>(total.control);
            if (figure == nullptr) {
                const int begin = qMin(left, limit);
                const int room = limit - CaptionGap - begin;
                const bool fits = room >= total.control->sizeHint().width(); // left out rather than cut
                total.control->setGeometry(begin, rect.top(), fits ? room : 0, rect.height());
                limit = begin;
                continue;
            }
            const int columnsRight = LeftOf(total.lastColumn) + grid->columnWidth(total.lastColumn);
            const int right = qMin(columnsRight, limit);
            const int width = qMax(right - qMin(left, right), figure->NeededWidth());
            const int begin = qMax(qMin(right - width, left), LeastLeft(entry, rect));
            figure->setGeometry(begin, rect.top(), right - begin, rect.height());
            limit = begin;
        }
    }

    /// The leftmost position of a figure, leaving room for the figures before it.
    int LeastLeft(std::vector<Entry>::reverse_iterator entry, const QRect& rect) const
    {
        int least = rect.left();
        while (++entry != entries.rend()) {
            if (const auto* figure = qobject_cast<FigureLabel*>(entry->total.control))
                least += qMin(figure->NeededWidth(), grid->columnWidth(entry->total.lastColumn));
        }
        return least;
    }

    QPointer<Grid> grid;
    std::vector<Entry> entries;
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

Layout Totals(Grid& grid, std::initializer_list<GridTotal> totals)
{
    auto line = std::make_unique<TotalsLayout>(grid);
    for (const GridTotal& total : totals) {
        Lend(*total.control);
        line->Add(total);
    }
    return Layout(std::move(line));
}

} // namespace forms
