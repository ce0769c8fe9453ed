#pragma once

#include "platform/pages/Page.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QRawFont>
#include <array>
#include <map>
#include <optional>

namespace paper {

/// A font of one size and weight with device-independent metrics (hundredths of a millimetre): what fits on the screen
/// fits on paper.
class Typeface {
public:
    Typeface(double points, bool bold, bool italic);

    const QFont& Font() const { return font; }
    double Ascent() const { return metrics.ascent(); }
    double Height() const { return metrics.height(); }
    double WidthOf(const QString& text) const;
    /// `text`, elided if wider than `width`.
    QString Elided(const QString& text, double width) const;
    /// The glyphs of `text` with their positions, from the left end of the baseline. None for text that needs shaping
    /// (joining, combining or right-to-left), which is left to Qt and slower.
    std::optional<QGlyphRun> GlyphsOf(const QString& text) const;

private:
    void AddToTable(QChar character);

    static constexpr int TableSize = 256;

    QFont font;
    QFontMetricsF metrics;
    std::array<double, TableSize> advances{}; ///< of the printable Latin-1 characters; 0 for others
    QRawFont rawFont;
    std::array<quint32, TableSize> glyphs{}; ///< of the same characters; 0 if the font lacks one
};

/// Cache of typefaces.
class Typefaces {
public:
    const Typeface& For(const pages::Run& run);

private:
    std::map<std::tuple<double, bool, bool>, Typeface> made;
};

inline constexpr double UnitsPerMillimetre = 100;

} // namespace paper
