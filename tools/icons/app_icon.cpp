// app-icon SVG ICO: draws the program's picture in the sizes that Windows shows, as PNG inside an icon file.
#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace {

QByteArray Drawn(QSvgRenderer& picture, int size)
{
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    picture.render(&painter);
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

QByteArray IconFile(QSvgRenderer& picture)
{
    const QList<int> sizes = {16, 20, 24, 32, 40, 48, 64, 128, 256};
    constexpr int Header = 6;
    constexpr int Entry = 16;
    QByteArray icon;
    QByteArray images;
    QDataStream entries(&icon, QIODevice::WriteOnly);
    entries.setByteOrder(QDataStream::LittleEndian);
    entries << quint16(0) << quint16(1) << quint16(sizes.size());
    for (const int size : sizes) {
        const QByteArray png = Drawn(picture, size);
        // A size of 256 is written as 0; no palette, one plane, 32 bits a pixel.
        entries << quint8(size) << quint8(size) << quint8(0) << quint8(0) << quint16(1) << quint16(32)
                << quint32(png.size()) << quint32(Header + Entry * sizes.size() + images.size());
        images += png;
    }
    return icon + images;
}

} // namespace

int main(int argc, char* argv[])
{
    const QGuiApplication application(argc, argv);
    const QStringList given = QGuiApplication::arguments();
    if (given.size() != 3)
        return 2;
    QSvgRenderer picture(given[1]);
    QFile file(given[2]);
    if (!picture.isValid() || !file.open(QIODevice::WriteOnly))
        return 1;
    const QByteArray icon = IconFile(picture);
    return file.write(icon) == icon.size() && file.flush() ? 0 : 1;
}
