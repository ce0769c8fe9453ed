#include "platform/paper/PagePainter.h"

#include <QPainter>

namespace paper {
namespace {

QRectF InUnits(const QRectF& box)
{
    return {box.topLeft() * UnitsPerMillimetre, box.size() * UnitsPerMillimetre};
}

} // namespace

void PagePainter::PaintPicture(QPainter& painter, const pages::Picture& picture)
{
    if (decodedFile.constData() != picture.file.constData()) {
        decodedFile = picture.file;
        decoded = QImage::fromData(decodedFile);
    }
    if (decoded.isNull())
        return;
    const QRectF box = InUnits(picture.box);
    QRectF place(box.topLeft(), QSizeF(decoded.size()).scaled(box.size(), Qt::KeepAspectRatio));
    if (picture.alignment == Qt::AlignRight)
        place.moveRight(box.right());
    else if (picture.alignment == Qt::AlignHCenter)
        place.moveCenter(box.center());
    painter.drawImage(place, decoded);
}

QColor PagePainter::ColourOf(pages::Tint tint) const
{
    switch (tint) {
    case pages::Tint::None:
        break;
    case pages::Tint::Paper:
        return inks.paper;
    case pages::Tint::Text:
        return inks.text;
    case pages::Tint::Faint:
        return inks.faint;
    case pages::Tint::First:
        return inks.first;
    case pages::Tint::Second:
        return inks.second;
    case pages::Tint::Third:
        return inks.third;
    case pages::Tint::Loss:
        return inks.loss;
    }
    return Qt::transparent;
}

void PagePainter::PaintShape(QPainter& painter, const pages::Shape& shape) const
{
    QPolygonF points;
    for (const QPointF& point : shape.points)
        points << point * UnitsPerMillimetre;
    if (shape.fill != pages::Tint::None) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(ColourOf(shape.fill));
        painter.drawPolygon(points);
    }
    if (shape.line == pages::Tint::None)
        return;
    QPen pen(ColourOf(shape.line), shape.thickness * UnitsPerMillimetre, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    if (shape.dashed)
        pen.setDashPattern({4, 3});
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(points);
}

void PagePainter::PaintRun(QPainter& painter, const pages::Run& run)
{
    const Typeface& face = typefaces.For(run);
    const QRectF box = InUnits(run.box);
    const QString text = face.Elided(run.text, box.width());
    double left = box.left();
    if (run.alignment != Qt::AlignLeft) {
        const double room = box.width() - face.WidthOf(text);
        left += run.alignment == Qt::AlignRight ? room : room / 2;
    }
    painter.setPen(run.faint ? inks.faint : inks.text);
    const QPointF start(left, box.top() + (box.height() - face.Height()) / 2 + face.Ascent());
    if (const auto glyphs = face.GlyphsOf(text))
        return painter.drawGlyphRun(start, *glyphs);
    painter.setFont(face.Font());
    painter.drawText(start, text);
}

void PagePainter::Paint(QPainter& painter, const pages::Page& page, double dotsPerMillimetre)
{
    painter.save();
    painter.scale(dotsPerMillimetre / UnitsPerMillimetre, dotsPerMillimetre / UnitsPerMillimetre);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto); // each text has the direction of its own script
    for (const QRectF& box : page.shades)
        painter.fillRect(InUnits(box), inks.shade);
    for (const pages::Picture& picture : page.pictures)
        PaintPicture(painter, picture);
    for (const pages::Rule& rule : page.rules) {
        painter.setPen(QPen(rule.faint ? inks.faintRule : inks.text, rule.thickness * UnitsPerMillimetre));
        painter.drawLine(rule.line.p1() * UnitsPerMillimetre, rule.line.p2() * UnitsPerMillimetre);
    }
    for (const pages::Shape& shape : page.shapes)
        PaintShape(painter, shape);
    for (const pages::Run& run : page.runs)
        PaintRun(painter, run);
    painter.restore();
}

} // namespace paper
