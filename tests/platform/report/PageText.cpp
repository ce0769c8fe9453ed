#include "platform/report/PageText.h"

#include <QTextStream>
#include <algorithm>
#include <cmath>

namespace tests {
namespace {

char LetterOf(Qt::Alignment alignment)
{
    return alignment == Qt::AlignLeft ? 'L' : alignment == Qt::AlignRight ? 'R' : 'C';
}

qint64 Tenths(double millimetres)
{
    return std::lround(millimetres * 10);
}

QString BoundsOf(const pages::Shape& shape)
{
    QRectF box(shape.points.front(), shape.points.front());
    for (const QPointF& point : shape.points)
        box = {QPointF(std::min(box.left(), point.x()), std::min(box.top(), point.y())),
               QPointF(std::max(box.right(), point.x()), std::max(box.bottom(), point.y()))};
    return QStringLiteral("%1 %2 %3 %4")
        .arg(Tenths(box.left()))
        .arg(Tenths(box.top()))
        .arg(Tenths(box.width()))
        .arg(Tenths(box.height()));
}

} // namespace

QString PagesAsText(const pages::PageLayout& layout)
{
    QString text;
    QTextStream out(&text);
    for (int index = 0; index < layout.PageCount(); ++index) {
        const pages::Page page = layout.MakePage(index);
        out << "=== page " << index + 1 << ", " << page.paper.width() << " x " << page.paper.height() << ", "
            << page.shades.size() << " shades, " << page.rules.size() << " rules\n";
        for (const QRectF& shade : page.shades)
            out << "shade " << Tenths(shade.left()) << " " << Tenths(shade.top()) << " " << Tenths(shade.width()) << " "
                << Tenths(shade.height()) << "\n";
        for (const pages::Rule& rule : page.rules)
            out << "rule " << Tenths(rule.line.x1()) << " " << Tenths(rule.line.y1()) << " " << Tenths(rule.line.dx())
                << " " << Tenths(rule.line.dy()) << " " << rule.thickness << (rule.faint ? " faint" : "") << "\n";
        for (const pages::Shape& shape : page.shapes)
            if (shape.points.size() > 2)
                out << "shape " << BoundsOf(shape) << " fill " << static_cast<int>(shape.fill) << " line "
                    << static_cast<int>(shape.line) << (shape.dashed ? " dashed" : "") << "\n";
        for (const pages::Run& run : page.runs)
            out << Tenths(run.box.left()) << " " << Tenths(run.box.top()) << " " << Tenths(run.box.width()) << " "
                << LetterOf(run.alignment) << " " << run.points << (run.bold ? " bold" : "")
                << (run.italic ? " italic" : "") << (run.faint ? " faint" : "") << " |" << run.text << "|\n";
    }
    return text;
}

QStringList TextsOf(const pages::PageLayout& layout, int page)
{
    QStringList texts;
    for (const pages::Run& run : layout.MakePage(page).runs)
        texts << run.text;
    return texts;
}

} // namespace tests
