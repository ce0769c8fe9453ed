#include "platform/forms/Colours.h"

#include <QPalette>
#include <gtest/gtest.h>

namespace {

using forms::Colours;

QPalette Desktop(const char* window, const char* base, const char* text, const char* highlight, const char* highlighted)
{
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, highlighted);
    return palette;
}

void ExpectReadable(const QColor& ink, std::initializer_list<QColor> grounds, const char* what)
{
    for (const QColor& ground : grounds)
        EXPECT_GE(forms::Contrast(ink, ground), 4.5)
            << what << ' ' << ink.name().toStdString() << " on " << ground.name().toStdString();
}

} // namespace

TEST(Colours, AreReadableOnLightDarkAndHighContrastDesktops)
{
    const struct {
        const char* name;
        QPalette palette;
    } desktops[] = {
        {"light", Desktop("#efefef", "#ffffff", "#000000", "#308cc6", "#ffffff")},
        {"warm", Desktop("#f6f5f4", "#ffffff", "#2e3436", "#e95420", "#ffffff")},
        {"dark", Desktop("#2a2e32", "#1b1e20", "#fcfcfc", "#3daee9", "#fcfcfc")},
        {"grey", Desktop("#808080", "#909090", "#202020", "#405060", "#ffffff")},
        {"high contrast", Desktop("#000000", "#000000", "#ffffff", "#00ffff", "#000000")},
        {"high contrast light", Desktop("#ffffff", "#ffffff", "#000000", "#000080", "#ffffff")},
    };
    for (const auto& desktop : desktops) {
        SCOPED_TRACE(desktop.name);
        const Colours c = forms::ColoursFrom(desktop.palette);
        ExpectReadable(c.text,
                       {c.window, c.raised, c.field, c.alternate, c.header, c.hover, c.selection, c.weekend, c.today},
                       "text");
        ExpectReadable(c.quiet, {c.window, c.raised, c.field, c.header}, "quiet");
        ExpectReadable(c.disabled, {c.window, c.raised, c.field}, "disabled");
        ExpectReadable(c.accent, {c.window, c.raised, c.field, c.hover}, "accent");
        ExpectReadable(c.onAccent, {c.accentGround}, "on accent");
        ExpectReadable(c.alarm, {c.window, c.raised, c.field, c.selection}, "alarm");
        ExpectReadable(c.onTip, {c.tip}, "tip");
        EXPECT_NE(c.selection, c.field);
        EXPECT_EQ(c.window, desktop.palette.color(QPalette::Window)); // the desktop's own
    }
    EXPECT_NEAR(forms::Contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(forms::Contrast("#777777", "#ffffff"), 4.48, 0.01);
}
