#include "platform/forms/GridHeader.h"

#include "platform/forms/Colours.h"

#include <QPainter>
#include <cmath>

namespace forms {

namespace {
constexpr int TextInset = 8; // a cell's own inset plus its leading or trailing blank
constexpr int CentredInset = 4;
} // namespace

GridHeader::GridHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent)
{
    setHighlightSections(false);
    setSectionsClickable(false);
    setMinimumSectionSize(8);
}

void GridHeader::AddGroup(int firstColumn, int lastColumn, const QString& text)
{
    groups.removeIf(
        [&](const Group& group) { return group.firstColumn <= lastColumn && firstColumn <= group.lastColumn; });
    groups.append({firstColumn, lastColumn, text});
    updateGeometry();
    viewport()->update();
}

int GridHeader::LineHeight() const
{
    return QHeaderView::sizeHint().height();
}

QSize GridHeader::sizeHint() const
{
    const QSize oneLine = QHeaderView::sizeHint();
    return {oneLine.width(), groups.isEmpty() ? oneLine.height() : 2 * oneLine.height() - 4};
}

Qt::Alignment GridHeader::AlignmentOf(int column) const
{
    return model()->headerData(column, orientation(), Qt::TextAlignmentRole).value<Qt::Alignment>();
}

/// Centred columns are narrow.
int GridHeader::InsetOf(int column) const
{
    return AlignmentOf(column).testFlag(Qt::AlignHCenter) ? CentredInset : TextInset;
}

int GridHeader::NeededWidth(int column) const
{
    const QString text = model()->headerData(column, orientation()).toString();
    const double width = QFontMetricsF(font()).horizontalAdvance(text); // a rounded one elides
    return static_cast<int>(std::ceil(width)) + 2 * InsetOf(column);
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int column) const
{
    QRect lower = rect;
    lower.setTop(rect.bottom() + 1 - LineHeight());
    const QRect place = lower.adjusted(InsetOf(column), 0, -InsetOf(column), 0);
    const QString text = model()->headerData(column, orientation()).toString();

    painter->save();
    painter->setClipRect(rect);
    painter->setPen(TheColours().text);
    painter->drawText(place, static_cast<int>(AlignmentOf(column)),
                      fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
    painter->setPen(TheColours().border);
    painter->drawLine(lower.right(), lower.top() + 4, lower.right(), lower.bottom() - 4);
    for (const Group& group : groups) {
        if (column >= group.firstColumn && column <= group.lastColumn)
            PaintGroup(*painter, group, QRect(rect.topLeft(), lower.topRight()));
    }
    painter->restore();
}

void GridHeader::PaintGroup(QPainter& painter, const Group& group, const QRect& part) const
{
    const int left = sectionViewportPosition(group.firstColumn);
    const int right = sectionViewportPosition(group.lastColumn) + sectionSize(group.lastColumn);
    const QRect whole(left, part.top(), right - left, part.height());

    painter.setPen(TheColours().text);
    painter.drawText(whole, Qt::AlignCenter, group.text);
    painter.setPen(TheColours().border);
    painter.drawLine(whole.left() + TextInset, whole.bottom(), whole.right() - TextInset, whole.bottom());
}

} // namespace forms
