#include "platform/report/Typeface.h"

#include "platform/report/PageMeasures.h"

#include <QStringList>
#include <cmath>

namespace report {
namespace {

QFont MakeFont(double points, bool bold, bool italic)
{
    const QStringList families = {QStringLiteral("Liberation Sans"), QStringLiteral("Arial"),
                                  QStringLiteral("DejaVu Sans")};
    QFont font(families);
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(int(std::lround(points * measures::PerPoint * UnitsPerMillimetre)));
    font.setBold(bold);
    font.setItalic(italic);
    font.setHintingPreference(QFont::PreferNoHinting); // hinted letters have other widths on each device
    font.setKerning(false);                            // so that the width of a text is the sum of its letters'
    return font;
}

} // namespace

Typeface::Typeface(double points, bool bold, bool italic)
    : font(MakeFont(points, bold, italic)), metrics(font), letters(QRawFont::fromFont(font))
{
    for (int code = 0; code < Tabled; ++code)
        if (const QChar character(static_cast<char16_t>(code)); character.isPrint() && code != 0xAD)
            AddToTable(character);
}

void Typeface::AddToTable(QChar character)
{
    const std::size_t place = character.unicode();
    advances[place] = metrics.horizontalAdvance(character);
    const QList<quint32> glyph = letters.glyphIndexesForString(character);
    glyphs[place] = glyph.size() == 1 ? glyph.front() : 0;
}

double Typeface::WidthOf(const QString& text) const
{
    double width = 0;
    for (const QChar character : text) {
        const double advance = character.unicode() < Tabled ? advances[character.unicode()] : 0;
        if (advance == 0)
            return metrics.horizontalAdvance(text); // letters that join or change with their neighbours
        width += advance;
    }
    return width;
}

QString Typeface::Fitted(const QString& text, double width) const
{
    return WidthOf(text) <= width ? text : metrics.elidedText(text, Qt::ElideRight, width);
}

std::optional<QGlyphRun> Typeface::Letters(const QString& text) const
{
    QList<quint32> indexes;
    QList<QPointF> places;
    indexes.reserve(text.size());
    places.reserve(text.size());
    double left = 0;
    for (const QChar character : text) {
        const std::size_t place = character.unicode();
        if (place >= Tabled || advances[place] == 0 || glyphs[place] == 0)
            return {};
        indexes << glyphs[place];
        places << QPointF(left, 0);
        left += advances[place];
    }
    QGlyphRun run;
    run.setRawFont(letters);
    run.setGlyphIndexes(indexes);
    run.setPositions(places);
    return run;
}

const Typeface& Typefaces::For(const Run& run)
{
    const auto key = std::tuple(run.points, run.bold, run.italic);
    const auto found = made.find(key);
    return found != made.end() ? found->second : made.try_emplace(key, run.points, run.bold, run.italic).first->second;
}

} // namespace report
