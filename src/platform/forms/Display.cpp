#include "platform/forms/Display.h"

#include <QGuiApplication>
#include <QScreen>

namespace forms {
namespace {

QSize& ChosenWorkingArea()
{
    static QSize area; // invalid until ChangeWorkingArea
    return area;
}

} // namespace

QSize DisplaySize()
{
    const QScreen* const screen = qGuiApp != nullptr ? QGuiApplication::primaryScreen() : nullptr;
    return screen != nullptr ? screen->size() : QSize(1024, 768);
}

QSize WorkingArea()
{
    return ChosenWorkingArea().isValid() ? ChosenWorkingArea().boundedTo(DisplaySize()) : DisplaySize();
}

void ChangeWorkingArea(const QSize& pixels)
{
    ChosenWorkingArea() = pixels;
}

} // namespace forms
