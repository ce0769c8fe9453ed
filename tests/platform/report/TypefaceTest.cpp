#include "platform/paper/Typeface.h"

#include <QTextLayout>
#include <gtest/gtest.h>

namespace {

using paper::Typeface;

/// As Qt itself sets the text.
QGlyphRun SetByQt(const QString& text, const QFont& font)
{
    QTextLayout layout(text, font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    return layout.glyphRuns().value(0);
}

} // namespace

TEST(Typeface, SetsGlyphsAsQtDoesAndLeavesWhatNeedsShapingToIt)
{
    const QString text = "Réglé le 12/03 : 1 250,00";
    for (const auto& [bold, italic] : {std::pair(false, false), {true, false}, {false, true}, {true, true}}) {
        const Typeface face(9, bold, italic);
        const auto run = face.GlyphsOf(text);
        ASSERT_TRUE(run.has_value());
        const QGlyphRun expected = SetByQt(text, face.Font());
        EXPECT_EQ(run->glyphIndexes(), expected.glyphIndexes());
        const QPointF start = expected.positions().value(0);
        for (qsizetype glyph = 0; glyph < text.size(); ++glyph) {
            const QPointF off = run->positions().value(glyph) - (expected.positions().value(glyph) - start);
            EXPECT_LT(off.manhattanLength(), 0.5) << glyph << " in hundredths of a millimetre";
        }
        EXPECT_EQ(run->rawFont().weight() >= QFont::Bold, bold);
        EXPECT_EQ(run->rawFont().style() != QFont::StyleNormal, italic);
        EXPECT_NEAR(face.WidthOf(text), run->positions().last().x() + face.WidthOf(text.last(1)), 0.5);
    }
    const Typeface face(9, false, false);
    for (const char* const shaped : {"نتيجة", "e\u0301", "A\u00AD"})
        EXPECT_FALSE(face.GlyphsOf(shaped).has_value()) << shaped;
    EXPECT_EQ(face.Elided(text, face.WidthOf(text)), text);
    EXPECT_LE(face.WidthOf(face.Elided(text, face.WidthOf(text) - 1)), face.WidthOf(text) - 1);
}
