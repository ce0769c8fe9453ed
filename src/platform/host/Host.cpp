#include "platform/host/Host.h"

#include <QGuiApplication>
#include <QLocale>
#include <QMap>
#include <QScreen>

namespace host {
namespace {

struct RegionalValues {
    QMap<LocaleSetting, QString> values{
        {LocaleSetting::DecimalMark, QLocale::system().decimalPoint()},
        {LocaleSetting::ShortDate, QLocale::system().dateFormat(QLocale::ShortFormat)},
    };
    bool changesRefused = false;
};

RegionalValues& Regional()
{
    static RegionalValues regional;
    return regional;
}

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

QString LocaleInfo(LocaleSetting setting)
{
    return Regional().values.value(setting);
}

bool SetLocaleInfo(LocaleSetting setting, const QString& value)
{
    if (Regional().changesRefused)
        return false;
    Regional().values[setting] = value;
    return true;
}

void RefuseLocaleChanges(bool refuse)
{
    Regional().changesRefused = refuse;
}

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
