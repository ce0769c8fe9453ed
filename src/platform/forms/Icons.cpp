#include "platform/forms/Icons.h"

#include "platform/forms/Colours.h"

#include <QFile>
#include <QHash>
#include <QPainter>
#include <QSvgRenderer>
#include <cmath>

namespace forms {

namespace {

/// The roles of the colours in the SVG files.
QHash<QByteArray, QColor> RolesOfDrawnColours()
{
    const Colours& colours = TheColours();
    return {{"#37474f", colours.text},    {"#1f6f8b", colours.accent}, {"#ffffff", colours.window},
            {"#c77f0a", colours.warning}, {"#b3352f", colours.alarm},  {"#cfe5ec", colours.backdrop}};
}

} // namespace

QByteArray IconText(const QString& name)
{
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("There is no icon %s.", qPrintable(name));
    QByteArray text = file.readAll();
    const auto roles = RolesOfDrawnColours();
    constexpr int colourLength = 7; // "#rrggbb"
    for (qsizetype at = text.indexOf('#'); at >= 0; at = text.indexOf('#', at + 1)) {
        const auto role = roles.constFind(text.mid(at, colourLength));
        if (role != roles.constEnd())
            text.replace(at, colourLength, role->name().toLatin1());
    }
    return text;
}

QPixmap IconPixmap(const QString& name, int side, double pixelRatio)
{
    const int dots = static_cast<int>(std::lround(side * pixelRatio));
    QPixmap pixmap(dots, dots);
    pixmap.fill(Qt::transparent);
    {
        QPainter painter(&pixmap);
        QSvgRenderer renderer(IconText(name));
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(&painter);
    }
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

QIcon NamedIcon(const QString& name)
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128})
        icon.addPixmap(IconPixmap(name, side, 1));
    return icon;
}

} // namespace forms
