// The parts of a page, each put where its caller says: how a report looks.
#include "platform/report/PageLayout.h"
#include "platform/report/PageMeasures.h"

namespace report {
namespace {

constexpr double StrongLine = 0.35;
constexpr double ThinLine = 0.1;

void AddRule(Page& page, double left, double right, double top, double thickness, bool faint = false)
{
    page.rules.push_back({QLineF(left, top, right, top), thickness, faint});
}

/// Adds text unless there is none.
void AddRun(Page& page, Run run)
{
    run.text = PlainLine(run.text);
    if (!run.text.isEmpty())
        page.runs.push_back(std::move(run));
}

} // namespace

double PageLayout::AddHeading(Page& page, int index) const
{
    double top = report.top;
    for (const HeadingLine& line : report.heading) {
        const FilledText text = Filled(line.text, index);
        const FilledText right = Filled(line.right, index);
        if ((index > 0 && !line.onEveryPage) || (!text.printed && !right.printed))
            continue;
        top += line.spaceBefore;
        const QRectF box(report.left, top, report.BodyWidth(), measures::LineHeight(line.points));
        if (text.printed)
            AddRun(page, {box, text.text, line.alignment, line.points, line.bold, line.italic, false});
        if (right.printed)
            AddRun(page, {box, right.text, Qt::AlignRight, line.points, line.bold, line.italic, false});
        top = box.bottom();
        if (line.rule) {
            top += 1;
            AddRule(page, report.left, box.right(), top, StrongLine);
            top += 1;
        }
    }
    return top > report.top ? top + measures::SpaceBelowHeading : top;
}

void PageLayout::AddCell(Page& page, std::size_t column, double top, double height, const QString& text,
                         bool bold) const
{
    const Cell& cell = cells[column];
    const QRectF box(cell.left + measures::CellPadding, top, cell.width - 2 * measures::CellPadding, height);
    if (!cell.hidden && box.width() > 0)
        AddRun(page, {box, text, report.columns[qsizetype(column)].alignment, report.points, bold, false, false});
}

void PageLayout::AddLabel(Page& page, double left, double top, double width, double height, const QString& text,
                          bool bold) const
{
    const QRectF box(left + measures::CellPadding, top, width - 2 * measures::CellPadding, height);
    if (box.width() > 0)
        AddRun(page, {box, text, Qt::AlignLeft, report.points, bold, false, false});
}

void PageLayout::AddColumnHeads(Page& page, double top) const
{
    const double height = lineHeight * measures::HeadLines;
    page.shades.emplace_back(report.left, top, TableRight() - report.left, height);
    for (std::size_t column = 0; column < cells.size(); ++column)
        AddCell(page, column, top, height, report.columns[qsizetype(column)].heading, true);
    AddRule(page, report.left, TableRight(), top + height, StrongLine);
}

void PageLayout::AddFooter(Page& page, int index) const
{
    const double top = report.paper.height() - report.bottom - measures::FooterHeight + 3;
    const QRectF box(report.left, top, report.BodyWidth(), measures::FooterHeight - 3);
    AddRule(page, box.left(), box.right(), top, ThinLine, true);
    const auto add = [&](const QString& text, Qt::Alignment alignment) {
        const FilledText filled = Filled(text, index);
        if (filled.printed)
            AddRun(page, {box, filled.text, alignment, measures::FooterPoints, false, false, true});
    };
    add(report.footer.left, Qt::AlignLeft);
    add(report.footer.centre, Qt::AlignHCenter);
    add(report.footer.right, Qt::AlignRight);
}

void PageLayout::AddBlock(Page& page, const Block& block, double top, int pageIndex) const
{
    switch (block.part) {
    case Part::Row:
        return AddRow(page, block.index, top);
    case Part::GroupHead:
        return AddGroupHead(page, block.index, top, false);
    case Part::Subtotal:
        return AddSums(page, FilledFromRow(report.group->subtotal, block.index).text, block, top);
    case Part::Totals:
        return AddSums(page, report.totalLabel, block, top);
    case Part::Empty:
        return AddRun(page, {{report.left, top, TableRight() - report.left, HeightOf(block)},
                             report.emptyText,
                             Qt::AlignHCenter,
                             report.points,
                             false,
                             true,
                             true});
    case Part::Gap:
        return;
    case Part::Ending:
        return AddEnding(page, report.ending[block.index], top, pageIndex);
    }
}

void PageLayout::AddRow(Page& page, int row, double top) const
{
    for (std::size_t column = 0; column < cells.size(); ++column)
        AddCell(page, column, top, lineHeight,
                CellText(report.columns[qsizetype(column)], content.rows.Cell(row, content.fieldOf[column])), false);
    AddRule(page, report.left, TableRight(), top + lineHeight, ThinLine, true);
}

void PageLayout::AddGroupHead(Page& page, int row, double top, bool continued) const
{
    const double height = lineHeight * measures::HeadLines;
    const QString heading = PlainLine(FilledFromRow(report.group->heading, row).text);
    AddLabel(page, report.left, top, TableRight() - report.left, height, continued ? heading + " (suite)" : heading,
             true);
    AddRule(page, report.left, TableRight(), top + height, ThinLine);
}

double PageLayout::FirstSumLeft() const
{
    for (std::size_t column = 0; column < cells.size(); ++column)
        if (report.columns[qsizetype(column)].total && !cells[column].hidden)
            return cells[column].left;
    return TableRight();
}

QString PageLayout::SumText(const Column& summed, std::size_t column, const Block& block) const
{
    double sum = 0;
    for (int row = block.index; row < block.index + block.count; ++row)
        sum += NumberIn(content.rows.Cell(row, content.fieldOf[column]));
    return sum == 0 ? QString() : NumberText(sum, summed.mask);
}

void PageLayout::AddSums(Page& page, const QString& label, const Block& block, double top) const
{
    const double height = HeightOf(block);
    if (block.part == Part::Totals)
        page.shades.emplace_back(report.left, top, TableRight() - report.left, height);
    AddRule(page, report.left, TableRight(), top, block.part == Part::Totals ? StrongLine : ThinLine);
    AddLabel(page, report.left, top, FirstSumLeft() - report.left, height, label, true);
    for (std::size_t column = 0; column < cells.size(); ++column) {
        const Column& summed = report.columns[qsizetype(column)];
        if (!summed.total)
            continue;
        const bool isGiven = block.part == Part::Totals && !summed.totalText.isEmpty();
        AddCell(page, column, top, height,
                isGiven ? AmountText(Filled(summed.totalText, 0).text, summed.mask) : SumText(summed, column, block),
                true);
    }
}

void PageLayout::AddEnding(Page& page, const EndingLine& line, double top, int pageIndex) const
{
    const double height = lineHeight * measures::EndingLines;
    const double width = std::min(measures::EndingWidth, TableRight() - report.left);
    const double left = TableRight() - width;
    if (line.rule)
        AddRule(page, left, TableRight(), top, StrongLine);
    AddLabel(page, left, top, width * 0.6, height, Filled(line.label, pageIndex).text, line.bold);
    AddRun(page, {{left + width * 0.6, top, width * 0.4 - measures::CellPadding, height},
                  AmountText(Filled(line.value, pageIndex).text, line.mask),
                  Qt::AlignRight,
                  report.points,
                  line.bold,
                  false,
                  false});
}

} // namespace report
