// Appearance of the parts of a page, at positions given by the caller.
#include "platform/pages/PageLayout.h"
#include "platform/pages/PageMeasures.h"
#include "platform/pages/ValueText.h"

namespace pages {
namespace {

constexpr double StrongLine = 0.35;
constexpr double ThinLine = 0.1;
constexpr double SmallestChart = 60;

void AddRule(Page& page, double left, double right, double top, double thickness, bool faint = false)
{
    page.rules.push_back({QLineF(left, top, right, top), thickness, faint});
}

/// Adds text unless empty.
void AddRun(Page& page, Run run)
{
    run.text = SingleLine(run.text);
    if (!run.text.isEmpty())
        page.runs.push_back(std::move(run));
}

} // namespace

double PageLayout::AddHeading(Page& page, int index) const
{
    double top = design.top;
    for (const HeadingLine& line : design.heading) {
        const FilledText text = Filled(line.text, index);
        const FilledText right = Filled(line.right, index);
        if ((index > 0 && !line.onEveryPage) || (!text.printed && !right.printed))
            continue;
        top += line.spaceBefore;
        const QRectF box(design.left, top, design.BodyWidth(), measures::LineHeight(line.points));
        if (text.printed)
            AddRun(page, {box, text.text, line.alignment, line.points, line.bold, line.italic, false});
        if (right.printed)
            AddRun(page, {box, right.text, Qt::AlignRight, line.points, line.bold, line.italic, false});
        top = box.bottom();
        if (line.rule) {
            top += 1;
            AddRule(page, design.left, box.right(), top, StrongLine);
            top += 1;
        }
    }
    return top > design.top ? top + measures::SpaceBelowHeading : top;
}

Chart PageLayout::MakeChart() const
{
    Chart chart{.unit = design.chart->unit,
                .note = Filled(design.chart->note, 0).text,
                .emptyText = Filled(design.chart->emptyText, 0).text,
                .across = design.chart->across};
    const auto cell = [this](int row, std::size_t field) { return content.rows.Cell(row, content.chartFields[field]); };
    for (int row = 0; row < content.rows.RowCount(); ++row)
        chart.labels << CellText({}, cell(row, 0));
    for (std::size_t series = 0; series < static_cast<std::size_t>(design.chart->series.size()); ++series) {
        const ChartDesign::Series& designed = design.chart->series[static_cast<qsizetype>(series)];
        ChartSeries read{designed.heading, designed.kind};
        for (int row = 0; row < content.rows.RowCount(); ++row) {
            const store::Value& value = cell(row, series + 1);
            read.values.push_back(value.IsNull() ? std::nullopt : std::optional(NumberIn(value)));
        }
        chart.series.push_back(std::move(read));
    }
    return chart;
}

/// Adds the chart, reduced where the rows would otherwise not fit below it; returns where the rows start.
double PageLayout::AddDesignedChart(Page& page, double top, int index) const
{
    if (!design.chart || index > 0 || content.rows.RowCount() == 0)
        return top;
    const Chart chart = MakeChart();
    double rows = ColumnHeadsHeight() + measures::SpaceBelowHeading;
    for (const Block& block : blocks)
        rows += HeightOf(block);
    const double room = std::max(BodyBottom() - top - rows, SmallestChart);
    const double height = ChartHeight(chart, std::min(design.chart->height, room));
    AddChart(page, chart, {design.left, top, design.BodyWidth(), height});
    return top + height + measures::SpaceBelowHeading;
}

void PageLayout::AddCell(Page& page, std::size_t column, double top, double height, const QString& text,
                         bool bold) const
{
    const Cell& cell = cells[column];
    const QRectF box(cell.left + measures::CellPadding, top, cell.width - 2 * measures::CellPadding, height);
    if (!cell.hidden && box.width() > 0)
        AddRun(page, {box, text, design.columns[static_cast<qsizetype>(column)].alignment, design.points, bold, false,
                      false});
}

void PageLayout::AddLabel(Page& page, double left, double top, double width, double height, const QString& text,
                          bool bold) const
{
    const QRectF box(left + measures::CellPadding, top, width - 2 * measures::CellPadding, height);
    if (box.width() > 0)
        AddRun(page, {box, text, Qt::AlignLeft, design.points, bold, false, false});
}

void PageLayout::AddColumnHeads(Page& page, double top) const
{
    const double height = ColumnHeadsHeight();
    const double headHeight = lineHeight * measures::HeadLines;
    const double headTop = top + height - headHeight;
    page.shades.emplace_back(design.left, top, TableRight() - design.left, height);
    AddHeadsAbove(page, top, height - headHeight);
    for (std::size_t column = 0; column < cells.size(); ++column)
        AddCell(page, column, headTop, headHeight, design.columns[static_cast<qsizetype>(column)].heading, true);
    AddRule(page, design.left, TableRight(), top + height, StrongLine);
}

void PageLayout::AddHeadsAbove(Page& page, double top, double height) const
{
    std::size_t end = 0;
    for (std::size_t first = 0; first < cells.size(); first = end) {
        const QString& text = design.columns[static_cast<qsizetype>(first)].above;
        for (end = first; end < cells.size() && design.columns[static_cast<qsizetype>(end)].above == text;)
            ++end;
        const double left = cells[first].left + measures::CellPadding;
        const double right = cells[end - 1].left + cells[end - 1].width - measures::CellPadding;
        if (text.isEmpty() || right <= left)
            continue;
        AddRun(page, {{left, top, right - left, height}, text, Qt::AlignHCenter, design.points, true, false, false});
        AddRule(page, left, right, top + height, ThinLine);
    }
}

void PageLayout::AddFooter(Page& page, int index) const
{
    const double top = design.paper.height() - design.bottom - measures::FooterHeight + 3;
    const QRectF box(design.left, top, design.BodyWidth(), measures::FooterHeight - 3);
    AddRule(page, box.left(), box.right(), top, ThinLine, true);
    const auto add = [&](const QString& text, Qt::Alignment alignment) {
        const FilledText filled = Filled(text, index);
        if (filled.printed)
            AddRun(page, {box, filled.text, alignment, measures::FooterPoints, false, false, true});
    };
    add(design.footer.left, Qt::AlignLeft);
    add(design.footer.centre, Qt::AlignHCenter);
    add(design.footer.right, Qt::AlignRight);
}

void PageLayout::AddBlock(Page& page, const Block& block, double top, int pageIndex) const
{
    switch (block.part) {
    case Part::Row:
        return AddRow(page, block.index, top);
    case Part::GroupHead:
        return AddGroupHead(page, block.index, top, false);
    case Part::Subtotal:
        return AddSums(page, FilledFromRow(design.group->subtotal, block.index).text, block, top);
    case Part::Totals:
        return AddSums(page, design.totalLabel, block, top);
    case Part::Empty:
        return AddRun(page, {{design.left, top, TableRight() - design.left, HeightOf(block)},
                             design.emptyText,
                             Qt::AlignHCenter,
                             design.points,
                             false,
                             true,
                             true});
    case Part::Gap:
        return;
    case Part::Ending:
        return AddEnding(page, design.ending[block.index], top, pageIndex);
    }
}

void PageLayout::AddRow(Page& page, int row, double top) const
{
    for (std::size_t column = 0; column < cells.size(); ++column)
        AddCell(
            page, column, top, lineHeight,
            CellText(design.columns[static_cast<qsizetype>(column)], content.rows.Cell(row, content.fieldOf[column])),
            false);
    AddRule(page, design.left, TableRight(), top + lineHeight, ThinLine, true);
}

void PageLayout::AddGroupHead(Page& page, int row, double top, bool continued) const
{
    const double height = lineHeight * measures::HeadLines;
    const QString heading = SingleLine(FilledFromRow(design.group->heading, row).text);
    AddLabel(page, design.left, top, TableRight() - design.left, height, continued ? heading + " (suite)" : heading,
             true);
    AddRule(page, design.left, TableRight(), top + height, ThinLine);
}

double PageLayout::FirstSumLeft() const
{
    for (std::size_t column = 0; column < cells.size(); ++column)
        if (design.columns[static_cast<qsizetype>(column)].total && !cells[column].hidden)
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
        page.shades.emplace_back(design.left, top, TableRight() - design.left, height);
    AddRule(page, design.left, TableRight(), top, block.part == Part::Totals ? StrongLine : ThinLine);
    AddLabel(page, design.left, top, FirstSumLeft() - design.left, height, label, true);
    for (std::size_t column = 0; column < cells.size(); ++column) {
        const Column& summed = design.columns[static_cast<qsizetype>(column)];
        if (!summed.total)
            continue;
        const bool isGiven = block.part == Part::Totals && !summed.totalText.isEmpty();
        AddCell(page, column, top, height,
                isGiven ? SumOfAmounts(Filled(summed.totalText, 0).text, summed.mask) : SumText(summed, column, block),
                true);
    }
}

void PageLayout::AddEnding(Page& page, const EndingLine& line, double top, int pageIndex) const
{
    const double height = lineHeight * measures::EndingLines;
    const double width = std::min(measures::EndingWidth, TableRight() - design.left);
    const double left = TableRight() - width;
    if (line.rule)
        AddRule(page, left, TableRight(), top, StrongLine);
    AddLabel(page, left, top, width * 0.6, height, Filled(line.label, pageIndex).text, line.bold);
    AddRun(page, {{left + width * 0.6, top, width * 0.4 - measures::CellPadding, height},
                  AmountText(Filled(line.value, pageIndex).text, line.mask),
                  Qt::AlignRight,
                  design.points,
                  line.bold,
                  false,
                  false});
}

} // namespace pages
