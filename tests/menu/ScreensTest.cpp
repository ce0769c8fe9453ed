// Compares how each screen is built, in each of its states, with a reviewed text.
#include "menu.h"

#include "menu/ScreenStates.h"
#include "platform/basic/Version.h"
#include "support/MainWindow.h"
#include "support/ScreenText.h"

#include <QDir>

namespace {

using namespace tests::screens;

using GoldenScreens = EachScreen;

/// The lines that a screen hasn't in its first state; all of them in that one.
QString Changed(const QString& text, QStringList& first)
{
    QStringList lines = text.split('\n');
    if (first.isEmpty() || first.front().section(' ', 0, 0) != lines.front().section(' ', 0, 0))
        first = lines;
    else
        lines.removeIf([&first](const QString& line) { return first.contains(line); });
    return lines.join('\n');
}

} // namespace

TEST_F(GoldenScreens, AreBuiltAsReviewed)
{
    QStringList first;
    for (const State& state : States) {
        Form& screen = Reach(state);
        const QString file = QString("/%1.txt").arg(state.name);
        const QString text = tests::ScreenAsText(screen).remove(QDir::toNativeSeparators(QDir::currentPath()));
        tests::ExpectGoldenScreen(Changed(text, first), ZEP_SCREENS + file, ZEP_SCREENS_NOW + file);
        screen.Unload();
    }
}

TEST(GoldenMainWindow, ShowsItsTasksOnceAPracticeIsOpen)
{
    tests::Practice practice;
    ScriptedDesk desk;
    auto& window = desk.Open<core::Form1>(MenuScreens());
    QStringList first;
    const auto expect = [&](const QString& file) {
        const QString text = Changed(tests::ScreenAsText(window), first).remove(basic::Version());
        tests::ExpectGoldenScreen(text, ZEP_SCREENS + file, ZEP_SCREENS_NOW + file);
    };
    expect("/Main window.txt");
    tests::TypeCode(desk, window, practice.Folder(), "6");
    expect("/Main window, open.txt");
}
