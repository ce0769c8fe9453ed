#pragma once

#include "platform/pages/Chart.h"
#include "platform/pages/PageMeasures.h"

namespace pages {

/// Draws one chart. Upright and lying charts share everything but the places of their parts.
class ChartDrawing {
public:
    ChartDrawing(Page& target, const Chart& drawn, const QRectF& area) : page(target), chart(drawn), box(area) {}

    std::vector<QRectF> Draw();

private:
    /// Adds a text, cut at the sides of the chart.
    void AddRun(const QRectF& place, const QString& text, Qt::Alignment alignment, bool faint = false,
                double points = measures::ChartPoints);
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

/// The width of a text, estimated from above: pages don't depend on fonts.
double ChartTextWidth(const QString& text);
/// A figure of the axis.
QString AxisText(double figure);
/// The figure if it can be drawn.
std::optional<double> Drawable(const std::optional<double>& figure);

} // namespace pages
