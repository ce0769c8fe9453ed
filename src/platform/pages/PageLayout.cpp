#include "platform/pages/PageLayout.h"

#include "platform/pages/PageMeasures.h"
#include "platform/pages/ValueText.h"

#include <algorithm>

namespace pages {
PageLayout::PageLayout(Template layoutDesign, Content read)
    : design(std::move(layoutDesign)), content(std::move(read)), lineHeight(measures::LineHeight(design.points))
{
    SetColumnWidths();
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

void PageLayout::SetColumnWidths()
{
    double whole = 0;
    double shown = 0;
    for (std::size_t index = 0; index < content.fieldOf.size(); ++index) {
        const Column& column = design.columns[static_cast<qsizetype>(index)];
        cells.push_back({0, column.width, column.hideEmpty && HasNoValue(content.fieldOf[index])});
        whole += column.width;
        shown += cells.back().hidden ? 0 : column.width;
    }
    if (shown == 0) { // no column would remain: show all
        for (Cell& cell : cells)
            cell.hidden = false;
        shown = whole;
    }
    double left = design.left;
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
    if (!design.group->subtotal.isEmpty())
        blocks.push_back({Part::Subtotal, true, first, end - first});
}

void PageLayout::AddBlocks()
{
    const int rows = content.rows.RowCount();
    if (rows == 0)
        blocks.push_back({Part::Empty, false, 0, 0});
    if (design.group) {
        for (int first = 0, end = 0; first < rows; first = end) {
            while (end < rows && SameGroup(first, end))
                ++end;
            AddGroup(first, end);
        }
    } else {
        for (int row = 0; row < rows; ++row)
            blocks.push_back({Part::Row, false, row, 0});
    }
    if (!design.totalLabel.isEmpty() && rows > 0)
        blocks.push_back({Part::Totals, true, 0, rows});
    for (int line = 0; line < design.ending.size(); ++line) {
        if (!design.ending[line].keepEmpty && !Filled(design.ending[line].value, 0).printed)
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

double PageLayout::ColumnHeadsHeight() const
{
    const bool hasHeadsAbove =
        std::ranges::any_of(design.columns, [](const Column& column) { return !column.above.isEmpty(); });
    return lineHeight * (measures::HeadLines + (hasHeadsAbove ? measures::AboveLines : 0));
}

double PageLayout::BodyTop(int page) const
{
    Page unused;
    return AddDesignedChart(unused, AddHeading(unused, page), page) + ColumnHeadsHeight();
}

double PageLayout::BodyBottom() const
{
    return design.paper.height() - design.bottom - measures::FooterHeight;
}

bool PageLayout::ContinuesGroup(std::size_t block) const
{
    return design.group && (blocks[block].part == Part::Row || blocks[block].part == Part::Subtotal);
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
                block = start; // blocks that must stay together move to the next page
            pageStarts.push_back(block);
            height = laterTop + (ContinuesGroup(block) ? lineHeight * measures::HeadLines : 0);
        }
        height += HeightOf(blocks[block]);
    }
}

QString PageLayout::ValueOf(const QString& name, int page) const
{
    if (name == "page")
        return QString::number(page + 1);
    if (name == "pages")
        return QString::number(PageCount());
    if (name == "rows")
        return QString::number(content.rows.RowCount());
    if (name == "date")
        return content.printDate;
    return content.texts.value(name);
}

FilledText PageLayout::Filled(const QString& text, int page) const
{
    return FillPlaceholders(text, [&](const QString& name) { return ValueOf(name, page); });
}

FilledText PageLayout::FilledFromRow(const QString& text, int row) const
{
    return FillPlaceholders(text, [&](const QString& name) {
        const int field = content.rows.FieldAt(name);
        return field < 0 ? QString() : CellText({}, content.rows.Cell(row, field));
    });
}

Page PageLayout::MakePage(int index) const
{
    Page page;
    page.paper = design.paper;
    if (index == 0 && design.logo)
        page.pictures.push_back({{design.left, design.top, design.BodyWidth(), design.logo->height},
                                 design.logo->picture,
                                 design.logo->alignment});
    const double headTop = AddDesignedChart(page, AddHeading(page, index), index);
    AddColumnHeads(page, headTop);
    double top = headTop + ColumnHeadsHeight();

    const std::size_t first = pageStarts[static_cast<std::size_t>(index)];
    const std::size_t end = index + 1 < PageCount() ? pageStarts[static_cast<std::size_t>(index) + 1] : blocks.size();
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

} // namespace pages
