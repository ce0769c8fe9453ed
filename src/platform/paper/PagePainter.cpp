#include "platform/paper/PagePainter.h"

#include <QPainter>

namespace paper {
namespace {

const QColor Ink(0x1a, 0x1f, 0x24);
const QColor FaintInk(0x5f, 0x6b, 0x73);
const QColor FaintRule(0xd3, 0xd9, 0xdd);
const QColor Shade(0xec, 0xf0, 0xf2);

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
    painter.setPen(run.faint ? FaintInk : Ink);
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
        painter.fillRect(InUnits(box), Shade);
    for (const pages::Picture& picture : page.pictures)
        PaintPicture(painter, picture);
    for (const pages::Rule& rule : page.rules) {
        painter.setPen(QPen(rule.faint ? FaintRule : Ink, rule.thickness * UnitsPerMillimetre));
        painter.drawLine(rule.line.p1() * UnitsPerMillimetre, rule.line.p2() * UnitsPerMillimetre);
    }
    for (const pages::Run& run : page.runs)
        PaintRun(painter, run);
    painter.restore();
}

} // namespace paper
