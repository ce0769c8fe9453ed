#pragma once

#include "platform/report/Page.h"

#include <QFont>
#include <QFontMetricsF>
#include <array>
#include <map>

namespace report {

/// Letters of one size and weight, measured in hundredths of a millimetre: the same on every device, so that what fits
/// on the screen fits on paper.
class Typeface {
public:
    Typeface(double points, bool bold, bool italic);

    const QFont& Font() const { return font; }
    double Ascent() const { return metrics.ascent(); }
    double Height() const { return metrics.height(); }
    double WidthOf(const QString& text) const;
    /// `text`, or as much of it as `width` holds with an ellipsis behind.
    QString Fitted(const QString& text, double width) const;

private:
    static constexpr int Tabled = 256;

    QFont font;
    QFontMetricsF metrics;
    std::array<double, Tabled> advances{}; ///< of the Latin-1 characters that print; 0 for others
};

/// The typefaces in use, made once each.
class Typefaces {
public:
    const Typeface& For(const Run& run);

private:
    std::map<std::tuple<double, bool, bool>, Typeface> made;
};

inline constexpr double UnitsPerMillimetre = 100;

} // namespace report
