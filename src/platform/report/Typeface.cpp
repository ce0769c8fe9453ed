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

Typeface::Typeface(double points, bool bold, bool italic) : font(MakeFont(points, bold, italic)), metrics(font)
{
    for (int code = 0; code < Tabled; ++code)
        if (const QChar character(static_cast<char16_t>(code)); character.isPrint() && code != 0xAD)
            advances[std::size_t(code)] = metrics.horizontalAdvance(character);
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

const Typeface& Typefaces::For(const Run& run)
{
    const auto key = std::tuple(run.points, run.bold, run.italic);
    const auto found = made.find(key);
    return found != made.end() ? found->second : made.try_emplace(key, run.points, run.bold, run.italic).first->second;
}

} // namespace report
