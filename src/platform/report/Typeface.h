#pragma once

#include "platform/report/Page.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QRawFont>
#include <array>
#include <map>
#include <optional>

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
    /// The letters of `text` with their places, from the left end of its base line. None where letters join, change
    /// with their neighbours or run from right to left: that is for the toolkit's own shaping, which takes longer.
    std::optional<QGlyphRun> Letters(const QString& text) const;

private:
    void AddToTable(QChar character);

    static constexpr int Tabled = 256;

    QFont font;
    QFontMetricsF metrics;
    std::array<double, Tabled> advances{}; ///< of the Latin-1 characters that print; 0 for others
    QRawFont letters;
    std::array<quint32, Tabled> glyphs{}; ///< of the same characters; 0 where the font has none
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
