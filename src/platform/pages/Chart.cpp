#include "platform/pages/Chart.h"

#include "platform/pages/PageMeasures.h"
#include "platform/pages/ValueText.h"

#include <algorithm>
#include <cmath>

namespace pages {
namespace {

constexpr double Points = 8;
constexpr double NotePoints = 7.5;
constexpr double SmallestPoints = 6.5; ///< of the figures of a chart across
constexpr double LargestFigure = 1e12;
constexpr double WidestBar = 11;
constexpr double ShareOfBars = 0.78; ///< of a group's width; the rest separates it from its neighbours
constexpr double ShareOfBar = 0.88;  ///< of a bar's place
constexpr double HatchStep = 1.3;
constexpr double Halo = 0.7; ///< around lines, so that they stand out from bars
constexpr double Diamond = 0.95;
constexpr double SwatchWidth = 6;
constexpr double SwatchHeight = 2.6;
constexpr double Gap = 2;
constexpr double UprightStep = 8;    ///< least distance of the marks on an upright axis
constexpr double AcrossStep = 28;    ///< the same on a lying one
constexpr double AcrossRow = 9;      ///< highest row of a chart across
constexpr double AcrossEnd = 16;     ///< room for the figure after the longest bar
constexpr double NarrowestLabel = 6; ///< room for the first line of a label
const QString AmountMask = QStringLiteral("### ### ### ##0");

/// An estimate from above: pages don't depend on fonts.
double WidthOf(const QString& text, double points = Points)
{
    constexpr double letters = 0.56;
    constexpr double spare = 0.8; // short words may consist of wide letters
    return (static_cast<double>(text.size()) * letters + spare) * points * measures::PerPoint;
}

/// The text in lines of this width, by the average width of letters.
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
    return lines;
}

double LineOf(double points = Points)
{
    return measures::LineHeight(points);
}

std::optional<double> Drawable(const std::optional<double>& figure)
{
    return figure && std::isfinite(*figure) && std::abs(*figure) <= LargestFigure ? figure : std::nullopt;
}

std::vector<QPointF> Corners(const QRectF& box)
{
    return {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft()};
}

/// Draws one chart. Upright and lying charts share everything but the places of their parts.
class Drawing {
public:
    Drawing(Page& target, const Chart& drawn, const QRectF& area) : page(target), chart(drawn), box(area) {}

    std::vector<QRectF> Draw();

private:
    void AddRun(const QRectF& place, const QString& text, Qt::Alignment alignment, bool faint = false,
                double points = Points);
    void AddEmptyText();
    void AddLegend();
    double AddSwatch(double left, double top, const ChartSeries& series, int bar);
    void AddNote();
    double NoteHeight() const;

    void FindAxis(int mostSteps);
    double X(double figure) const;
    double Y(double figure) const;
    void AddMark(double figure);

    QRectF Group(int label) const;
    void DrawUpright();
    std::pair<QString, QString> Divided(int label) const;
    QString TailOf(int label) const { return Divided(label).second; }
    void AddLabels();
    void AddUprightBars();
    void AddLine(const ChartSeries& series);
    void AddStretch(const std::vector<QPointF>& points, bool thin);
    void AddDiamond(const QPointF& middle, bool loss);

    void DrawAcross();
    void AddRowsAcross();

    void AddBar(const QRectF& bar, int style);
    void AddHatching(const QRectF& bar);
    int CountBars() const;
    int LabelCount() const { return static_cast<int>(chart.labels.size()); }

    Page& page;
    const Chart& chart;
    QRectF box;
    QRectF plot;
    ChartAxis axis;
};

void Drawing::AddRun(const QRectF& place, const QString& text, Qt::Alignment alignment, bool faint, double points)
{
    if (!text.isEmpty() && place.width() > 0)
        page.runs.push_back({place, SingleLine(text), alignment, points, false, false, faint});
}

void Drawing::AddEmptyText()
{
    AddRun({box.left(), box.center().y() - LineOf(), box.width(), 2 * LineOf()}, chart.emptyText, Qt::AlignHCenter,
           true, 10);
}

int Drawing::CountBars() const
{
    return static_cast<int>(std::ranges::count(chart.series, ChartSeries::Kind::Bar, &ChartSeries::kind));
}

/// Draws a bar in the style of the n-th series of bars: filled, hatched, hollow.
void Drawing::AddBar(const QRectF& bar, int style)
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

void Drawing::AddHatching(const QRectF& bar)
{
    for (double start = bar.left() - bar.height() + HatchStep / 2; start < bar.right(); start += HatchStep) {
        const double left = std::max(start, bar.left());
        const double right = std::min(start + bar.height(), bar.right());
        if (left < right)
            page.shapes.push_back({{{left, bar.bottom() - (left - start)}, {right, bar.bottom() - (right - start)}},
                                   Tint::None,
                                   Tint::Second,
                                   0.22});
    }
}

/// Draws the sample of a series with its name; returns the right end.
double Drawing::AddSwatch(double left, double top, const ChartSeries& series, int bar)
{
    const QRectF sample(left, top + (LineOf() - SwatchHeight) / 2, SwatchWidth, SwatchHeight);
    if (series.kind == ChartSeries::Kind::Bar) {
        AddBar(sample, bar);
    } else {
        const bool isThin = series.kind == ChartSeries::Kind::ThinLine;
        AddStretch({{sample.left(), sample.center().y()}, {sample.right(), sample.center().y()}}, isThin);
        if (!isThin)
            AddDiamond(sample.center(), false);
    }
    const QRectF name(sample.right() + Gap / 2, top, WidthOf(series.name), LineOf());
    AddRun(name, series.name, Qt::AlignLeft);
    return name.right() + 2 * Gap;
}

void Drawing::AddLegend()
{
    double left = plot.left();
    int bar = 0;
    for (const ChartSeries& series : chart.series)
        left = AddSwatch(left, box.top(), series, series.kind == ChartSeries::Kind::Bar ? bar++ : 0);
    if (!chart.across)
        AddRun({box.left(), box.top(), plot.left() - box.left() - Gap, LineOf()}, chart.unit, Qt::AlignRight, true);
}

double Drawing::NoteHeight() const
{
    return static_cast<double>(Wrapped(chart.note, box.width(), NotePoints).size()) * LineOf(NotePoints);
}

void Drawing::AddNote()
{
    QRectF line(box.left(), box.bottom() - NoteHeight(), box.width(), LineOf(NotePoints));
    for (const QString& text : Wrapped(chart.note, box.width(), NotePoints)) {
        AddRun(line, text, Qt::AlignLeft, true, NotePoints);
        line.translate(0, line.height());
    }
}

void Drawing::FindAxis(int mostSteps)
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

double Drawing::X(double figure) const
{
    return plot.left() + (figure - axis.lowest) / (axis.highest - axis.lowest) * plot.width();
}

double Drawing::Y(double figure) const
{
    return plot.bottom() - (figure - axis.lowest) / (axis.highest - axis.lowest) * plot.height();
}

/// Draws the line of a mark with its figure; that of zero is stronger.
void Drawing::AddMark(double figure)
{
    const QLineF line = chart.across ? QLineF(X(figure), plot.top(), X(figure), plot.bottom())
                                     : QLineF(plot.left(), Y(figure), plot.right(), Y(figure));
    page.rules.push_back({line, figure == 0 ? 0.3 : 0.15, figure != 0});
    const QString text = NumberText(figure, AmountMask);
    if (chart.across)
        AddRun({line.x1() - AcrossStep / 2, plot.bottom(), AcrossStep, LineOf()}, text, Qt::AlignHCenter, true);
    else
        AddRun({box.left(), line.y1() - LineOf() / 2, plot.left() - box.left() - Gap, LineOf()}, text, Qt::AlignRight,
               true);
}

QRectF Drawing::Group(int label) const
{
    if (chart.across) {
        const double height = plot.height() / LabelCount();
        return {box.left(), plot.top() + label * height, box.width(), height};
    }
    const double width = plot.width() / LabelCount();
    return {plot.left() + label * width, plot.top(), width, plot.height()};
}

/// A label without its last word, and that word.
std::pair<QString, QString> Drawing::Divided(int label) const
{
    const QString text = chart.labels[label].trimmed();
    const qsizetype blank = text.lastIndexOf(' ');
    return blank < 0 ? std::pair(text, QString()) : std::pair(text.left(blank), text.mid(blank + 1));
}

void Drawing::AddLabels()
{
    const double width = plot.width() / LabelCount();
    const int every = static_cast<int>(std::ceil(NarrowestLabel / width));
    for (int label = 0; label < LabelCount(); label += every) {
        const QRectF place(Group(label).center().x() - width * every / 2, plot.bottom() + Gap / 2, width * every,
                           LineOf());
        AddRun(place, Divided(label).first, Qt::AlignHCenter);
        const bool isNew = label == 0 || TailOf(label) != TailOf(label - every);
        const bool isCramped = label + every < LabelCount() && TailOf(label) != TailOf(label + every) &&
                               width * every < WidthOf(TailOf(label)) + Gap;
        if (isNew && !isCramped)
            AddRun(place.translated(0, LineOf() * 0.85).adjusted(-Gap, 0, Gap, 0), TailOf(label), Qt::AlignHCenter,
                   true);
    }
}

void Drawing::AddUprightBars()
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

void Drawing::AddStretch(const std::vector<QPointF>& points, bool thin)
{
    const double thickness = thin ? 0.35 : 0.55;
    page.shapes.push_back({points, Tint::None, Tint::Paper, thickness + Halo});
    page.shapes.push_back({points, Tint::None, thin ? Tint::Faint : Tint::Text, thickness, thin});
}

void Drawing::AddDiamond(const QPointF& middle, bool loss)
{
    const auto around = [&middle](double reach) -> std::vector<QPointF> {
        return {middle + QPointF(0, -reach), middle + QPointF(reach, 0), middle + QPointF(0, reach),
                middle + QPointF(-reach, 0)};
    };
    page.shapes.push_back({around(Diamond + Halo / 2), Tint::Paper});
    page.shapes.push_back({around(Diamond), loss ? Tint::Loss : Tint::Text});
}

/// Draws a line through the middles of the groups, interrupted where there is no figure. A lone figure of a line
/// without diamonds is a dash.
void Drawing::AddLine(const ChartSeries& series)
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

void Drawing::DrawUpright()
{
    const double below = Gap / 2 + 2 * LineOf() + NoteHeight();
    plot = box.adjusted(0, LineOf() + Gap, 0, -below);
    FindAxis(static_cast<int>(plot.height() / UprightStep));
    const auto widthOf = [](double figure) { return WidthOf(NumberText(figure, AmountMask)); };
    plot.setLeft(box.left() + Gap + std::max({widthOf(axis.lowest), widthOf(axis.highest), WidthOf(chart.unit)}));
    for (int step = 0; step <= axis.Steps(); ++step)
        AddMark(axis.lowest + step * axis.step);
    AddUprightBars();
    for (const auto kind : {ChartSeries::Kind::ThinLine, ChartSeries::Kind::Line})
        for (const ChartSeries& series : chart.series)
            if (series.kind == kind)
                AddLine(series);
    AddLabels();
}

void Drawing::AddRowsAcross()
{
    const double place =
        Group(0).height() * ShareOfBars / static_cast<double>(std::max<std::size_t>(chart.series.size(), 1));
    for (int label = 0; label < LabelCount(); ++label) {
        const QRectF row = Group(label);
        AddRun({row.left(), row.top(), plot.left() - row.left() - Gap, row.height()}, chart.labels[label],
               Qt::AlignRight);
        double top = row.center().y() - place * static_cast<double>(chart.series.size()) / 2;
        int style = 0;
        for (const ChartSeries& series : chart.series) {
            if (const auto figure = Drawable(series.values[static_cast<std::size_t>(label)])) {
                const double end = X(*figure);
                AddBar(
                    {std::min(end, X(0)), top + place * (1 - ShareOfBar) / 2, std::abs(end - X(0)), place * ShareOfBar},
                    style);
                AddRun({std::max(end, X(0)) + Gap / 2, top, AcrossEnd, place},
                       NumberText(*figure, "### ##0.0") + " " + chart.unit, Qt::AlignLeft, false,
                       std::clamp(place / measures::PerPoint, SmallestPoints, Points));
            }
            top += place;
            ++style;
        }
    }
}

void Drawing::DrawAcross()
{
    double widest = 0;
    for (const QString& label : chart.labels)
        widest = std::max(widest, WidthOf(label));
    plot =
        box.adjusted(std::min(widest, box.width() * 0.3) + Gap, LineOf() + Gap, -AcrossEnd, -LineOf() - NoteHeight());
    FindAxis(static_cast<int>(plot.width() / AcrossStep));
    for (int step = 0; step <= axis.Steps(); ++step)
        AddMark(axis.lowest + step * axis.step);
    AddRowsAcross();
}

std::vector<QRectF> Drawing::Draw()
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
    for (int label = 0; label < LabelCount(); ++label)
        groups.push_back(Group(label));
    return groups;
}

} // namespace

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
    return chart.across ? std::min(largest, rows + 4 * LineOf()) : largest;
}

std::vector<QRectF> AddChart(Page& page, const Chart& chart, const QRectF& box)
{
    Chart drawn = chart;
    std::erase_if(drawn.series, [](const ChartSeries& series) { return !series.HasValue(); });
    return Drawing(page, drawn, box).Draw();
}

} // namespace pages
