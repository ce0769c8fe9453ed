#include "platform/pages/Chart.h"

#include "platform/pages/ChartDrawing.h"
#include "platform/pages/ValueText.h"

#include <algorithm>
#include <cmath>

namespace pages {
namespace {

constexpr double SmallestPoints = 6.5; ///< of the figures of a chart across
constexpr double WidestBar = 11;
constexpr double ShareOfBars = 0.78; ///< of a group's width; the rest separates it from its neighbours
constexpr double ShareOfBar = 0.88;  ///< of a bar's place
constexpr double UprightStep = 8;    ///< least distance of the marks on an upright axis
constexpr double AcrossStep = 28;    ///< the same on a lying one
constexpr double AcrossRow = 9;      ///< highest row of a chart across
constexpr double AcrossEnd = 16;     ///< room for the figure after the longest bar
constexpr double LongestName = 0.3;  ///< of the width, for the names at the left
constexpr double WidestAxis = 0.6;   ///< of the width, for the figures of the axis
constexpr double NarrowestLabel = 6; ///< room for the first line of a label

} // namespace

QRectF ChartDrawing::Group(int label) const
{
    if (chart.across) {
        const double height = plot.height() / LabelCount();
        return {box.left(), plot.top() + label * height, box.width(), height};
    }
    const double width = plot.width() / LabelCount();
    return {plot.left() + label * width, plot.top(), width, plot.height()};
}

/// A label without its last word, and that word.
std::pair<QString, QString> ChartDrawing::Divided(int label) const
{
    const QString text = chart.labels[label].trimmed();
    const qsizetype blank = text.lastIndexOf(' ');
    return blank < 0 ? std::pair(text, QString()) : std::pair(text.left(blank), text.mid(blank + 1));
}

void ChartDrawing::AddLabels()
{
    const double width = plot.width() / LabelCount();
    const int every = static_cast<int>(std::ceil(NarrowestLabel / width));
    for (int label = 0; label < LabelCount(); label += every) {
        const QRectF place(Group(label).center().x() - width * every / 2, plot.bottom() + measures::ChartGap / 2,
                           width * every, measures::ChartLine);
        AddRun(place, Divided(label).first, Qt::AlignHCenter);
        const bool isNew = label == 0 || TailOf(label) != TailOf(label - every);
        const bool isCramped = label + every < LabelCount() && TailOf(label) != TailOf(label + every) &&
                               width * every < ChartTextWidth(TailOf(label)) + measures::ChartGap;
        if (isNew && !isCramped)
            AddRun(
                place.translated(0, measures::ChartLine * 0.85).adjusted(-measures::ChartGap, 0, measures::ChartGap, 0),
                TailOf(label), Qt::AlignHCenter, true);
    }
}

void ChartDrawing::AddUprightBars()
{
    const double group = plot.width() / LabelCount();
    const double place = std::min(group * ShareOfBars / std::max(CountBars(), 1), WidestBar);
    for (int label = 0; label < LabelCount(); ++label) {
        double left = Group(label).center().x() - place * CountBars() / 2;
        int style = 0;
        for (const ChartSeries& series : chart.series) {
            if (series.kind != ChartSeries::Kind::Bar)
                continue;
            if (const auto figure = Drawable(series.values[static_cast<std::size_t>(label)]))
                AddBar(QRectF(QPointF(left + place * (1 - ShareOfBar) / 2, std::min(Y(*figure), Y(0))),
                              QSizeF(place * ShareOfBar, std::abs(Y(*figure) - Y(0)))),
                       style);
            left += place;
            ++style;
        }
    }
}

/// Draws a line through the middles of the groups, interrupted where there is no figure. A lone figure of a line
/// without diamonds is a dash.
void ChartDrawing::AddLine(const ChartSeries& series)
{
    const bool isThin = series.kind == ChartSeries::Kind::ThinLine;
    std::vector<QPointF> stretch;
    const auto endStretch = [&] {
        const double reach = std::min(WidestBar, plot.width() / LabelCount() / 2);
        if (stretch.size() == 1 && isThin)
            stretch = {stretch[0] - QPointF(reach, 0), stretch[0] + QPointF(reach, 0)};
        if (stretch.size() > 1)
            AddStretch(stretch, isThin);
        stretch.clear();
    };
    for (int label = 0; label < LabelCount(); ++label) {
        if (const auto figure = Drawable(series.values[static_cast<std::size_t>(label)]))
            stretch.emplace_back(Group(label).center().x(), Y(*figure));
        else
            endStretch();
    }
    endStretch();
    for (int label = 0; label < LabelCount() && !isThin; ++label)
        if (const auto figure = Drawable(series.values[static_cast<std::size_t>(label)]))
            AddDiamond({Group(label).center().x(), Y(*figure)}, *figure < 0);
}

void ChartDrawing::DrawUpright()
{
    const double below = measures::ChartGap / 2 + 2 * measures::ChartLine + NoteHeight();
    plot = box.adjusted(0, measures::ChartLine + measures::ChartGap, 0, -below);
    FindAxis(static_cast<int>(plot.height() / UprightStep));
    const double figures = std::max(ChartTextWidth(AxisText(axis.lowest)), ChartTextWidth(AxisText(axis.highest)));
    const double atLeft = std::max(figures, ChartTextWidth(chart.unit)) + measures::ChartGap;
    plot.setLeft(box.left() + std::min(atLeft, box.width() * WidestAxis));
    for (int step = 0; step <= axis.Steps(); ++step)
        AddMark(axis.lowest + step * axis.step);
    AddUprightBars();
    for (const auto kind : {ChartSeries::Kind::ThinLine, ChartSeries::Kind::Line})
        for (const ChartSeries& series : chart.series)
            if (series.kind == kind)
                AddLine(series);
    AddLabels();
}

void ChartDrawing::AddRowsAcross()
{
    const double place =
        Group(0).height() * ShareOfBars / static_cast<double>(std::max<std::size_t>(chart.series.size(), 1));
    for (int label = 0; label < LabelCount(); ++label) {
        const QRectF row = Group(label);
        AddRun({row.left(), row.top(), plot.left() - row.left() - measures::ChartGap, row.height()},
               chart.labels[label], Qt::AlignRight);
        double top = row.center().y() - place * static_cast<double>(chart.series.size()) / 2;
        int style = 0;
        for (const ChartSeries& series : chart.series) {
            if (const auto figure = Drawable(series.values[static_cast<std::size_t>(label)])) {
                const double end = X(*figure);
                AddBar(
                    {std::min(end, X(0)), top + place * (1 - ShareOfBar) / 2, std::abs(end - X(0)), place * ShareOfBar},
                    style);
                AddRun({std::max(end, X(0)) + measures::ChartGap / 2, top, AcrossEnd, place},
                       NumberText(*figure, "### ##0.0") + " " + chart.unit, Qt::AlignLeft, false,
                       std::clamp(place / measures::PerPoint, SmallestPoints, measures::ChartPoints));
            }
            top += place;
            ++style;
        }
    }
}

void ChartDrawing::DrawAcross()
{
    double widest = 0;
    for (const QString& label : chart.labels)
        widest = std::max(widest, ChartTextWidth(label));
    plot = box.adjusted(std::min(widest, box.width() * LongestName) + measures::ChartGap,
                        measures::ChartLine + measures::ChartGap, -AcrossEnd, -measures::ChartLine - NoteHeight());
    FindAxis(static_cast<int>(plot.width() / AcrossStep));
    for (int step = 0; step <= axis.Steps(); ++step)
        AddMark(axis.lowest + step * axis.step);
    AddRowsAcross();
}

std::vector<QRectF> ChartDrawing::Draw()
{
    if (chart.labels.isEmpty() || chart.IsEmpty()) {
        AddEmptyText();
        return {};
    }
    if (chart.across)
        DrawAcross();
    else
        DrawUpright();
    AddLegend();
    AddNote();
    std::vector<QRectF> groups;
    groups.reserve(static_cast<std::size_t>(LabelCount()));
    for (int label = 0; label < LabelCount(); ++label)
        groups.push_back(Group(label));
    return groups;
}

bool ChartSeries::HasValue() const
{
    return std::ranges::any_of(values, [](const auto& value) { return value.has_value(); });
}

bool Chart::IsEmpty() const
{
    return std::ranges::none_of(series, [](const ChartSeries& each) {
        return std::ranges::any_of(each.values, [](const auto& value) { return value.value_or(0) != 0; });
    });
}

double ChartHeight(const Chart& chart, double largest)
{
    const double rows = static_cast<double>(chart.labels.size()) * AcrossRow;
    return chart.across ? std::min(largest, rows + 4 * measures::ChartLine) : largest;
}

std::vector<QRectF> AddChart(Page& page, const Chart& chart, const QRectF& box)
{
    Chart drawn = chart;
    std::erase_if(drawn.series, [](const ChartSeries& series) { return !series.HasValue(); });
    return ChartDrawing(page, drawn, box).Draw();
}

} // namespace pages
