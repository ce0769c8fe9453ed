#include "platform/forms/Colours.h"

#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <optional>

namespace forms {

namespace {

constexpr double EnoughContrast = 4.5;

std::optional<Colours> colours;
int generation = 0;

double Linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour)
{
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

QColor Mix(const QColor& from, const QColor& to, double share)
{
    const auto channel = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
    return {channel(from.red(), to.red()), channel(from.green(), to.green()), channel(from.blue(), to.blue())};
}

double LowestContrast(const QColor& ink, std::initializer_list<QColor> grounds)
{
    double lowest = 21;
    for (const QColor& ground : grounds)
        lowest = std::min(lowest, Contrast(ink, ground));
    return lowest;
}

/// The colour, or its nearest shade towards black or white that is readable on all backgrounds. If there is none, the
/// better of black and white.
QColor Readable(const QColor& ink, std::initializer_list<QColor> grounds)
{
    constexpr int steps = 20;
    for (int step = 0; step <= steps; ++step) {
        for (const QColor end : {QColor(Qt::black), QColor(Qt::white)}) {
            const QColor shade = Mix(ink, end, static_cast<double>(step) / steps);
            if (LowestContrast(shade, grounds) >= EnoughContrast)
                return shade;
        }
    }
    return LowestContrast(Qt::black, grounds) >= LowestContrast(Qt::white, grounds) ? Qt::black : Qt::white;
}

/// A background, tinted with `tint` as far as `ink` stays readable on it.
QColor Tinted(const QColor& ground, const QColor& tint, double share, const QColor& ink)
{
    while (share > 0.02) {
        const QColor tinted = Mix(ground, tint, share);
        if (Contrast(ink, tinted) >= EnoughContrast)
            return tinted;
        share *= 0.8;
    }
    return ground;
}

} // namespace

double Contrast(const QColor& one, const QColor& other)
{
    const double lighter = std::max(Luminance(one), Luminance(other));
    const double darker = std::min(Luminance(one), Luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

Colours ColoursFrom(const QPalette& desktop)
{
    const auto active = [&](QPalette::ColorRole role) { return desktop.color(QPalette::Active, role); };
    Colours made;
    made.window = active(QPalette::Window);
    made.field = active(QPalette::Base);
    made.raised = Mix(made.window, made.field, 0.6);
    made.text = Readable(active(QPalette::WindowText), {made.window, made.field, made.raised});
    const QColor highlight = active(QPalette::Highlight);

    made.alternate = Tinted(made.field, made.text, 0.035, made.text);
    made.header = Tinted(made.window, made.text, 0.05, made.text);
    made.hover = Tinted(made.field, highlight, 0.1, made.text);
    made.selection = Tinted(made.field, highlight, 0.34, made.text);
    made.weekend = Tinted(made.field, made.text, 0.1, made.text);
    made.today = Tinted(made.field, highlight, 0.2, made.text);
    made.border = Mix(made.window, made.text, 0.2);
    made.fieldBorder = Mix(made.window, made.text, 0.4);
    made.quiet = Readable(Mix(made.text, made.window, 0.3), {made.window, made.raised, made.field, made.header});
    made.disabled = Readable(Mix(made.text, made.window, 0.55), {made.window, made.raised, made.field});
    made.accent = Readable(highlight, {made.window, made.raised, made.field, made.hover, made.header});
    made.accentGround = Mix(highlight, Contrast(Qt::white, highlight) > 3 ? Qt::black : Qt::white, 0.12);
    made.onAccent = Readable(active(QPalette::HighlightedText), {made.accentGround});
    made.alarm = Readable(Qt::red, {made.window, made.raised, made.field, made.header, made.selection});
    made.warning = Readable(QColor(0xc7, 0x7f, 0x0a), {made.window});
    made.tip = made.text;
    made.onTip = Readable(made.window, {made.tip});
    made.backdrop = Mix(made.window, highlight, 0.16);
    return made;
}

const Colours& TheColours()
{
    if (!colours)
        colours = ColoursFrom(QGuiApplication::palette());
    return *colours;
}

void RefreshColours()
{
    colours.reset();
    ++generation;
}

int ColourGeneration()
{
    return generation;
}

} // namespace forms
