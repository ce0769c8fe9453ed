#pragma once

#include "platform/pages/Page.h"

#include <QStringList>
#include <optional>

namespace pages {

struct ChartSeries {
    enum class Kind : quint8 { Bar, Line, ThinLine };
    QString name;
    Kind kind = Kind::Bar;
    std::vector<std::optional<double>> values = {}; ///< one for each label; none draws nothing

    bool HasValue() const;
};

/// Figures to be drawn as bars and lines. Series differ in fill and stroke, not in colour alone.
struct Chart {
    /// What the figures are about. The last word of an upright chart's label stands on a second line, and only where it
    /// changes: "nov. 2025", "déc. 2025", "janv. 2026".
    QStringList labels = {};
    std::vector<ChartSeries> series = {};
    QString unit = {};
    QString note = {};      ///< a line below
    QString emptyText = {}; ///< stands instead of a chart without any figure but 0
    bool across = false;    ///< bars lie side by side of their labels, with their figures

    bool IsEmpty() const;
};

/// Round marks of an axis from `lowest` to `highest`, both multiples of `step`; zero is always among them.
struct ChartAxis {
    double lowest = 0;
    double highest = 0;
    double step = 1; ///< 1, 2 or 5 times a power of ten, at least 1

    int Steps() const;
};

/// The axis for figures between two bounds, with at most `mostSteps` steps, at least 2.
ChartAxis RoundAxis(double lowest, double highest, int mostSteps);

/// The height that a chart across needs, at most `largest`; others fill it.
double ChartHeight(const Chart& chart, double largest);

/// Adds a chart to a page, without series that have no value. Returns the area of each label with its bars, for
/// pointing at; none for an empty chart. A figure that isn't finite, or past 10^12, isn't drawn.
std::vector<QRectF> AddChart(Page& page, const Chart& chart, const QRectF& box);

} // namespace pages
