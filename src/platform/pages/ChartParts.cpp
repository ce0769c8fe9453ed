// The parts of a chart that upright charts and charts across share.
#include "platform/pages/ChartDrawing.h"
#include "platform/pages/ValueText.h"

#include <algorithm>
#include <cmath>

namespace pages {
namespace {

constexpr double NotePoints = 7.5;
constexpr qsizetype MostNoteLines = 3;
constexpr double EmptyPoints = 10;
constexpr double LargestFigure = 1e12;
constexpr double HatchStep = 1.3;
constexpr double Halo = 0.7; ///< around lines, so that they stand out from bars
constexpr double Diamond = 0.95;
constexpr double SwatchWidth = 6;
constexpr double SwatchHeight = 2.6;

/// The first lines of a text in this width, by the average width of letters.
QStringList Wrapped(const QString& text, double width, double points)
{
    constexpr double letters = 0.5;
    const auto most = static_cast<qsizetype>(width / (letters * points * measures::PerPoint));
    QStringList lines;
    for (const QString& word : text.split(' ', Qt::SkipEmptyParts)) {
        if (lines.isEmpty() || lines.back().size() + 1 + word.size() > most)
            lines << word;
        else
            lines.back() += ' ' + word;
    }
    return lines.first(std::min(lines.size(), MostNoteLines));
}

std::vector<QPointF> Corners(const QRectF& box)
{
    return {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()};
}

} // namespace

double ChartTextWidth(const QString& text)
{
    constexpr double letters = 0.56;
    constexpr double spare = 0.8; // short words may consist of wide letters
    return (static_cast<double>(text.size()) * letters + spare) * measures::ChartPoints * measures::PerPoint;
}

QString AxisText(double figure)
{
    return NumberText(figure, QStringLiteral("### ### ### ##0"));
}

std::optional<double> Drawable(const std::optional<double>& figure)
{
    return figure && std::isfinite(*figure) && std::abs(*figure) <= LargestFigure ? figure : std::nullopt;
}

void ChartDrawing::AddRun(const QRectF& place, const QString& text, Qt::Alignment alignment, bool faint, double points)
{
    const QRectF seen = place.intersected({box.left(), place.top(), box.width(), place.height()});
    if (!text.isEmpty() && seen.width() > 0)
        page.runs.push_back({seen, SingleLine(text), alignment, points, false, false, faint});
}

void ChartDrawing::AddEmptyText()
{
    AddRun({box.left(), box.center().y() - measures::ChartLine, box.width(), 2 * measures::ChartLine}, chart.emptyText,
           Qt::AlignHCenter, true, EmptyPoints);
}

int ChartDrawing::CountBars() const
{
    return static_cast<int>(std::ranges::count(chart.series, ChartSeries::Kind::Bar, &ChartSeries::kind));
}

/// Draws a bar in the style of the n-th series of bars: filled, hatched, hollow.
void ChartDrawing::AddBar(const QRectF& bar, int style)
{
    constexpr Tint tints[] = {Tint::First, Tint::Second, Tint::Third};
    constexpr int styles = 3;
    const Tint tint = tints[style % styles];
    if (bar.width() == 0 || bar.height() == 0)
        return;
    page.shapes.push_back({Corners(bar), style % styles == 0 ? tint : Tint::Paper});
    if (style % styles == 1)
        AddHatching(bar);
    std::vector<QPointF> outline = Corners(bar);
    outline.push_back(outline.front());
    page.shapes.push_back({outline, Tint::None, tint, 0.25});
}

void ChartDrawing::AddHatching(const QRectF& bar)
{
    const int lines = static_cast<int>(std::lround((bar.width() + bar.height()) / HatchStep));
    for (int line = 0; line < lines; ++line) {
        const double start = bar.left() - bar.height() + (line + 0.5) * HatchStep;
        const double left = std::max(start, bar.left());
        const double right = std::min(start + bar.height(), bar.right());
        if (left < right)
            page.shapes.push_back({{{left, bar.bottom() - (left - start)}, {right, bar.bottom() - (right - start)}},
                                   Tint::None,
                                   Tint::Second,
                                   0.22});
    }
}

void ChartDrawing::AddStretch(const std::vector<QPointF>& points, bool thin)
{
    const double thickness = thin ? 0.35 : 0.55;
    page.shapes.push_back({points, Tint::None, Tint::Paper, thickness + Halo});
    page.shapes.push_back({points, Tint::None, thin ? Tint::Faint : Tint::Text, thickness, thin});
}

void ChartDrawing::AddDiamond(const QPointF& middle, bool loss)
{
    const auto around = [&middle](double reach) -> std::vector<QPointF> {
        return {middle + QPointF(0, -reach), middle + QPointF(reach, 0), middle + QPointF(0, reach),
                middle + QPointF(-reach, 0)};
    };
    page.shapes.push_back({around(Diamond + Halo / 2), Tint::Paper});
    page.shapes.push_back({around(Diamond), loss ? Tint::Loss : Tint::Text});
}

/// Draws the sample of a series with its name; returns the right end.
double ChartDrawing::AddSwatch(double left, double top, const ChartSeries& series, int bar)
{
    const QRectF sample(left, top + (measures::ChartLine - SwatchHeight) / 2, SwatchWidth, SwatchHeight);
    if (series.kind == ChartSeries::Kind::Bar) {
        AddBar(sample, bar);
    } else {
        const bool isThin = series.kind == ChartSeries::Kind::ThinLine;
        AddStretch({{sample.left(), sample.center().y()}, {sample.right(), sample.center().y()}}, isThin);
        if (!isThin)
            AddDiamond(sample.center(), false);
    }
    const QRectF name(sample.right() + measures::ChartGap / 2, top, ChartTextWidth(series.name), measures::ChartLine);
    AddRun(name, series.name, Qt::AlignLeft);
    return name.right() + 2 * measures::ChartGap;
}

void ChartDrawing::AddLegend()
{
    double left = plot.left();
    int bar = 0;
    for (const ChartSeries& series : chart.series)
        if (left + SwatchWidth < box.right())
            left = AddSwatch(left, box.top(), series, series.kind == ChartSeries::Kind::Bar ? bar++ : 0);
    if (!chart.across)
        AddRun({box.left(), box.top(), plot.left() - box.left() - measures::ChartGap, measures::ChartLine}, chart.unit,
               Qt::AlignRight, true);
}

double ChartDrawing::NoteHeight() const
{
    return static_cast<double>(Wrapped(chart.note, box.width(), NotePoints).size()) * measures::LineHeight(NotePoints);
}

void ChartDrawing::AddNote()
{
    QRectF line(box.left(), box.bottom() - NoteHeight(), box.width(), measures::LineHeight(NotePoints));
    for (const QString& text : Wrapped(chart.note, box.width(), NotePoints)) {
        AddRun(line, text, Qt::AlignLeft, true, NotePoints);
        line.translate(0, line.height());
    }
}

void ChartDrawing::FindAxis(int mostSteps)
{
    double lowest = 0;
    double highest = 0;
    for (const ChartSeries& series : chart.series)
        for (const auto& value : series.values)
            if (const auto figure = Drawable(value)) {
                lowest = std::min(lowest, *figure);
                highest = std::max(highest, *figure);
            }
    axis = RoundAxis(lowest, highest, std::max(mostSteps, 2));
}

double ChartDrawing::X(double figure) const
{
    return plot.left() + (figure - axis.lowest) / (axis.highest - axis.lowest) * plot.width();
}

double ChartDrawing::Y(double figure) const
{
    return plot.bottom() - (figure - axis.lowest) / (axis.highest - axis.lowest) * plot.height();
}

/// Draws the line of a mark with its figure; that of zero is stronger.
void ChartDrawing::AddMark(double figure)
{
    const QLineF line = chart.across ? QLineF(X(figure), plot.top(), X(figure), plot.bottom())
                                     : QLineF(plot.left(), Y(figure), plot.right(), Y(figure));
    page.rules.push_back({line, figure == 0 ? 0.3 : 0.15, figure != 0});
    const QString text = AxisText(figure);
    const double width = ChartTextWidth(text);
    if (chart.across)
        AddRun({line.x1() - width / 2, plot.bottom(), width, measures::ChartLine}, text, Qt::AlignHCenter, true);
    else
        AddRun({box.left(), line.y1() - measures::ChartLine / 2, plot.left() - box.left() - measures::ChartGap,
                measures::ChartLine},
               text, Qt::AlignRight, true);
}

} // namespace pages
