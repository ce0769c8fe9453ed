#include "platform/forms/Icons.h"

#include "platform/forms/Colours.h"

#include <QDataStream>
#include <QHash>
#include <QMap>
#include <QPainter>
#include <cmath>

// Made by the build.
extern const unsigned char recordedIcons[];
extern const unsigned long long recordedIconsBytes;

namespace forms {

namespace {

/// The roles of the colours in the SVG files.
QHash<QRgb, QColor> RolesOfDrawnColours()
{
    const Colours& colours = TheColours();
    return {{qRgb(0x37, 0x47, 0x4f), colours.text},   {qRgb(0x1f, 0x6f, 0x8b), colours.accent},
            {qRgb(0xff, 0xff, 0xff), colours.window}, {qRgb(0xc7, 0x7f, 0x0a), colours.warning},
            {qRgb(0xb3, 0x35, 0x2f), colours.alarm},  {qRgb(0xcf, 0xe5, 0xec), colours.backdrop}};
}

Drawing ReadDrawing(const QByteArray& bytes)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_6_0);
    Drawing drawing;
    stream >> drawing.size;
    while (!stream.atEnd()) {
        Drawing::Shape shape;
        stream >> shape.pen >> shape.brush >> shape.path;
        drawing.shapes << shape;
    }
    return drawing;
}

/// The drawings by name, in their own colours.
const QMap<QString, Drawing>& Drawings()
{
    static const auto drawings = [] {
        QMap<QString, Drawing> read;
        QDataStream stream(QByteArray::fromRawData(reinterpret_cast<const char*>(recordedIcons),
                                                   static_cast<qsizetype>(recordedIconsBytes)));
        stream.setVersion(QDataStream::Qt_6_0);
        while (!stream.atEnd()) {
            QString name;
            QByteArray bytes;
            stream >> name >> bytes;
            read[name] = ReadDrawing(bytes);
        }
        return read;
    }();
    return drawings;
}

QPixmap PixmapOf(const Drawing& drawing, int dots)
{
    QPixmap pixmap(dots, dots);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    drawing.Paint(painter, QRectF(0, 0, dots, dots));
    return pixmap;
}

QIcon IconOf(const Drawing& drawing)
{
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128})
        icon.addPixmap(PixmapOf(drawing, side));
    return icon;
}

} // namespace

void Drawing::Paint(QPainter& painter, const QRectF& rectangle) const
{
    const QSizeF fitting = size.scaled(rectangle.size(), Qt::KeepAspectRatio);
    painter.save();
    painter.translate(rectangle.center() - QPointF(fitting.width(), fitting.height()) / 2);
    painter.scale(fitting.width() / size.width(), fitting.height() / size.height());
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Shape& shape : shapes) {
        painter.setPen(shape.pen);
        painter.setBrush(shape.brush);
        painter.drawPath(shape.path);
    }
    painter.restore();
}

Drawing DrawingOf(const QString& name)
{
    if (!Drawings().contains(name))
        qFatal("There is no icon %s.", qPrintable(name));
    Drawing drawing = Drawings()[name];
    const auto roles = RolesOfDrawnColours();
    for (Drawing::Shape& shape : drawing.shapes) {
        shape.pen.setColor(roles.value(shape.pen.color().rgb(), shape.pen.color()));
        shape.brush.setColor(roles.value(shape.brush.color().rgb(), shape.brush.color()));
    }
    return drawing;
}

QStringList IconNames()
{
    return Drawings().keys();
}

QPixmap IconPixmap(const QString& name, int side, double pixelRatio)
{
    QPixmap pixmap = PixmapOf(DrawingOf(name), static_cast<int>(std::lround(side * pixelRatio)));
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

QIcon ProgramIcon()
{
    return IconOf(Drawings()["app"]);
}

QIcon NamedIcon(const QString& name)
{
    return IconOf(DrawingOf(name));
}

} // namespace forms
