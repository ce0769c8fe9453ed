#include "platform/report/PageLayout.h"

#include "platform/report/PageMeasures.h"

#include <algorithm>

namespace report {
PageLayout::PageLayout(Template printed, Content read)
    : report(std::move(printed)), content(std::move(read)), lineHeight(measures::LineHeight(report.points))
{
    PlaceColumns();
    AddBlocks();
    BreakPages();
}

bool PageLayout::HasNoValue(int field) const
{
    for (int row = 0; row < content.rows.RowCount(); ++row)
        if (!content.rows.Cell(row, field).IsNull())
            return false;
    return true;
}

void PageLayout::PlaceColumns()
{
    double whole = 0;
    double shown = 0;
    for (std::size_t index = 0; index < content.fieldOf.size(); ++index) {
        const Column& column = report.columns[qsizetype(index)];
        cells.push_back({0, column.width, column.hideEmpty && HasNoValue(content.fieldOf[index])});
        whole += column.width;
        shown += cells.back().hidden ? 0 : column.width;
    }
    if (shown == 0) { // no column that could take the others' room: the table stands with all of them
        for (Cell& cell : cells)
            cell.hidden = false;
        shown = whole;
    }
    double left = report.left;
    for (Cell& cell : cells) {
        cell.left = left;
        cell.width = cell.hidden ? 0 : cell.width * whole / shown;
        left += cell.width;
    }
}

bool PageLayout::SameGroup(int row, int otherRow) const
{
    return content.rows.Cell(row, content.groupField).Raw() == content.rows.Cell(otherRow, content.groupField).Raw();
}

void PageLayout::AddGroup(int first, int end)
{
    blocks.push_back({Part::GroupHead, false, first, end - first});
    for (int row = first; row < end; ++row)
        blocks.push_back({Part::Row, row == first, row, 0});
    if (!report.group->subtotal.isEmpty())
        blocks.push_back({Part::Subtotal, true, first, end - first});
}

void PageLayout::AddBlocks()
{
    const int rows = content.rows.RowCount();
    if (rows == 0)
        blocks.push_back({Part::Empty, false, 0, 0});
    if (report.group) {
        for (int first = 0, end = 0; first < rows; first = end) {
            while (end < rows && SameGroup(first, end))
                ++end;
            AddGroup(first, end);
        }
    } else {
        for (int row = 0; row < rows; ++row)
            blocks.push_back({Part::Row, false, row, 0});
    }
    if (!report.totalLabel.isEmpty() && rows > 0)
        blocks.push_back({Part::Totals, true, 0, rows});
    for (int line = 0; line < report.ending.size(); ++line) {
        if (!report.ending[line].keepEmpty && !Filled(report.ending[line].value, 0).printed)
            continue;
        if (blocks.back().part != Part::Ending)
            blocks.push_back({Part::Gap, true, 0, 0});
        blocks.push_back({Part::Ending, true, line, 0});
    }
}

double PageLayout::HeightOf(const Block& block) const
{
    switch (block.part) {
    case Part::Row:
        return lineHeight;
    case Part::GroupHead:
    case Part::Subtotal:
    case Part::Totals:
        return lineHeight * measures::HeadLines;
    case Part::Empty:
        return lineHeight * measures::EmptyLines;
    case Part::Gap:
        return measures::SpaceAboveEnding;
    case Part::Ending:
        return lineHeight * measures::EndingLines;
    }
    return 0;
}

double PageLayout::BodyTop(int page) const
{
    Page unused;
    return AddHeading(unused, page) + lineHeight * measures::HeadLines;
}

double PageLayout::BodyBottom() const
{
    return report.paper.height() - report.bottom - measures::FooterHeight;
}

bool PageLayout::ContinuesGroup(std::size_t block) const
{
    return report.group && (blocks[block].part == Part::Row || blocks[block].part == Part::Subtotal);
}

void PageLayout::BreakPages()
{
    pageStarts = {0};
    const double firstTop = BodyTop(0);
    const double laterTop = BodyTop(1);
    double height = firstTop;
    for (std::size_t block = 0; block < blocks.size(); ++block) {
        const double needed = HeightOf(blocks[block]);
        if (height + needed > BodyBottom() && block > pageStarts.back()) {
            std::size_t start = block;
            while (blocks[start].staysWithPrevious && start > pageStarts.back())
                --start;
            if (start > pageStarts.back())
                block = start; // what may not be parted goes to the next page together
            pageStarts.push_back(block);
            height = laterTop + (ContinuesGroup(block) ? lineHeight * measures::HeadLines : 0);
        }
        height += HeightOf(blocks[block]);
    }
}

QString PageLayout::ValueOf(const QString& place, int page) const
{
    if (place == "page")
        return QString::number(page + 1);
    if (place == "pages")
        return QString::number(PageCount());
    if (place == "rows")
        return QString::number(content.rows.RowCount());
    if (place == "date")
        return content.printDate;
    const QString text = content.texts.value(place);
    return place == "ch30" && text == "()" ? QString() : text; // the parentheses stand there around nothing as well
}

FilledText PageLayout::Filled(const QString& text, int page) const
{
    return FillPlaces(text, [&](const QString& place) { return ValueOf(place, page); });
}

FilledText PageLayout::FilledFromRow(const QString& text, int row) const
{
    return FillPlaces(text, [&](const QString& place) {
        const int field = content.rows.FieldAt(place);
        return field < 0 ? QString() : CellText({}, content.rows.Cell(row, field));
    });
}

Page PageLayout::MakePage(int index) const
{
    Page page;
    page.paper = report.paper;
    const double headTop = AddHeading(page, index);
    AddColumnHeads(page, headTop);
    double top = headTop + lineHeight * measures::HeadLines;

    const std::size_t first = pageStarts[std::size_t(index)];
    const std::size_t end = index + 1 < PageCount() ? pageStarts[std::size_t(index) + 1] : blocks.size();
    if (ContinuesGroup(first)) {
        AddGroupHead(page, blocks[first].index, top, true);
        top += lineHeight * measures::HeadLines;
    }
    for (std::size_t block = first; block < end; ++block) {
        AddBlock(page, blocks[block], top, index);
        top += HeightOf(blocks[block]);
    }
    AddFooter(page, index);
    return page;
}

} // namespace report
