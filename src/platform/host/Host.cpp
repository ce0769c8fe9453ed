#include "platform/host/Host.h"

#include <QGuiApplication>
#include <QScreen>

namespace host {
namespace {

QSize& ChosenWorkingArea()
{
    static QSize area; // invalid until a screen mode is asked for
    return area;
}

QDate& FixedToday()
{
    static QDate date;
    return date;
}

} // namespace

QSize DisplaySize()
{
    const QScreen* const screen = qGuiApp ? QGuiApplication::primaryScreen() : nullptr;
    return screen ? screen->size() : QSize(1024, 768);
}

QSize WorkingArea()
{
    return ChosenWorkingArea().isValid() ? ChosenWorkingArea().boundedTo(DisplaySize()) : DisplaySize();
}

void ChangeWorkingArea(const QSize& pixels)
{
    ChosenWorkingArea() = pixels;
}

QDate Today()
{
    return FixedToday().isValid() ? FixedToday() : QDate::currentDate();
}

void FixToday(const QDate& date)
{
    FixedToday() = date;
}

} // namespace host
