// record-icons OUTPUT.cpp SVG...: records what each SVG file draws as paths with pen and brush, as data for the
// program, which needs no SVG library then. Run by the build.

#include <QBrush>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QSvgRenderer>

namespace {

/// Writes every shape that is drawn: pen, brush and path. The icons have neither transforms, opacity nor text.
class Recorder : public QPaintEngine {
public:
    explicit Recorder(QDataStream& target) : QPaintEngine(AllFeatures), shapes(target) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }

    void updateState(const QPaintEngineState& changed) override
    {
        if ((changed.state() & DirtyPen) != 0)
            pen = changed.pen();
        if ((changed.state() & DirtyBrush) != 0)
            brush = changed.brush();
        if (!changed.transform().isIdentity() || changed.opacity() < 1)
            qFatal("An icon is transformed or transparent.");
    }

    void drawPath(const QPainterPath& path) override
    {
        if (pen.style() != Qt::NoPen || brush.style() != Qt::NoBrush)
            shapes << pen << brush << path;
    }

    void drawPolygon(const QPointF*, int, PolygonDrawMode) override
    {
        qFatal("An icon has a polygon: make it a path.");
    }
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override { qFatal("An icon has a bitmap."); }

private:
    QDataStream& shapes;
    QPen pen{Qt::NoPen};
    QBrush brush;
};

/// Takes the recorder instead of a surface.
class Surface : public QPaintDevice {
public:
    explicit Surface(QDataStream& target) : recorder(target) {}
    QPaintEngine* paintEngine() const override { return &recorder; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        if (metric == PdmDevicePixelRatioScaled)
            return QPaintDevice::metric(metric);
        constexpr int anySide = 1024;
        return metric == PdmDevicePixelRatio ? 1 : anySide;
    }

private:
    mutable Recorder recorder;
};

/// The size of the drawing and its shapes.
QByteArray Record(const QString& svg)
{
    QSvgRenderer renderer(svg);
    const QRectF box = renderer.viewBoxF();
    if (!renderer.isValid() || !box.topLeft().isNull())
        qFatal("%s isn't an icon from 0, 0.", qPrintable(svg));
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    stream << box.size();
    Surface surface(stream);
    QPainter painter(&surface);
    renderer.render(&painter, box);
    return bytes;
}

QByteArray AsNumbers(const QByteArray& bytes)
{
    QByteArray text;
    for (qsizetype i = 0; i < bytes.size(); ++i)
        text += QByteArray::number(static_cast<unsigned char>(bytes[i])) + (i % 32 == 31 ? ",\n" : ",");
    return text;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "minimal");
    const QGuiApplication application(argc, argv);
    const QStringList given = QGuiApplication::arguments();
    QFile target(given.value(1));
    if (given.size() < 3 || !target.open(QIODevice::WriteOnly))
        return 1;
    QByteArray icons;
    QDataStream stream(&icons, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    for (const QString& svg : given.mid(2))
        stream << QFileInfo(svg).completeBaseName() << Record(svg);
    target.write("extern const unsigned char recordedIcons[] = {\n" + AsNumbers(icons) + "};\n" +
                 "extern const unsigned long long recordedIconsBytes = sizeof recordedIcons;\n");
    return target.error() == QFileDevice::NoError ? 0 : 1;
}
