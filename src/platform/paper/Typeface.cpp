#include "platform/paper/Typeface.h"

#include "platform/pages/PageMeasures.h"

#include <QStringList>
#include <cmath>

namespace paper {
namespace {

QFont MakeFont(double points, bool bold, bool italic)
{
    const QStringList families = {QStringLiteral("Liberation Sans"), QStringLiteral("Arial"),
                                  QStringLiteral("DejaVu Sans")};
    QFont font(families);
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(static_cast<int>(std::lround(points * pages::measures::PerPoint * UnitsPerMillimetre)));
    font.setBold(bold);
    font.setItalic(italic);
    font.setHintingPreference(QFont::PreferNoHinting); // hinted letters differ in width between devices
    font.setKerning(false);                            // so that a text's width is the sum of its letters' widths
    return font;
}

} // namespace

Typeface::Typeface(double points, bool bold, bool italic)
    : font(MakeFont(points, bold, italic)), metrics(font), rawFont(QRawFont::fromFont(font))
{
    for (int code = 0; code < TableSize; ++code)
        if (const QChar character(static_cast<char16_t>(code)); character.isPrint() && code != 0xAD)
            AddToTable(character);
}

void Typeface::AddToTable(QChar character)
{
    const std::size_t code = character.unicode();
    advances[code] = metrics.horizontalAdvance(character);
    const QList<quint32> glyph = rawFont.glyphIndexesForString(character);
    glyphs[code] = glyph.size() == 1 ? glyph.front() : 0;
}

double Typeface::WidthOf(const QString& text) const
{
    double width = 0;
    for (const QChar character : text) {
        const double advance = character.unicode() < TableSize ? advances[character.unicode()] : 0;
        if (advance == 0)
            return metrics.horizontalAdvance(text); // letters that are shaped by their neighbours
        width += advance;
    }
    return width;
}

QString Typeface::Elided(const QString& text, double width) const
{
    return WidthOf(text) <= width ? text : metrics.elidedText(text, Qt::ElideRight, width);
}

std::optional<QGlyphRun> Typeface::GlyphsOf(const QString& text) const
{
    QList<quint32> indexes;
    QList<QPointF> positions;
    indexes.reserve(text.size());
    positions.reserve(text.size());
    double left = 0;
    for (const QChar character : text) {
        const std::size_t code = character.unicode();
        if (code >= TableSize || advances[code] == 0 || glyphs[code] == 0)
            return {};
        indexes << glyphs[code];
        positions << QPointF(left, 0);
        left += advances[code];
    }
    QGlyphRun run;
    run.setRawFont(rawFont);
    run.setGlyphIndexes(indexes);
    run.setPositions(positions);
    return run;
}

const Typeface& Typefaces::For(const pages::Run& run)
{
    const auto key = std::tuple(run.points, run.bold, run.italic);
    const auto found = made.find(key);
    return found != made.end() ? found->second : made.try_emplace(key, run.points, run.bold, run.italic).first->second;
}

} // namespace paper
