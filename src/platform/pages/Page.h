#pragma once

#include <QByteArray>
#include <QLineF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <vector>

namespace pages {

/// One line of text in a box: never wrapped, elided if wider than the box. Millimetres and points.
struct Run {
    QRectF box;
    QString text;
    Qt::Alignment alignment = Qt::AlignLeft;
    double points = 9;
    bool bold = false;
    bool italic = false;
    bool faint = false;
};

struct Rule {
    QLineF line;
    double thickness = 0.2;
    bool faint = false;
};

/// The role of a shape's colour. Paper and screens have colours of their own for it.
enum class Tint : quint8 { None, Paper, Text, Faint, First, Second, Third, Loss };

/// A polygon or a line through points, in a chart.
struct Shape {
    std::vector<QPointF> points;
    Tint fill = Tint::None; ///< the area between the points, closed
    Tint line = Tint::None;
    double thickness = 0.2;
    bool dashed = false;
};

/// A picture, as high as its box.
struct Picture {
    QRectF box;
    QByteArray file; ///< PNG or JPEG
    Qt::Alignment alignment = Qt::AlignLeft;
};

/// The content of one sheet, in millimetres from its upper left corner: everything that screen, printer and PDF paint.
struct Page {
    QSizeF paper;
    std::vector<QRectF> shades; ///< light grey backgrounds, painted first
    std::vector<Picture> pictures;
    std::vector<Rule> rules;
    std::vector<Shape> shapes; ///< over the rules, in their order
    std::vector<Run> runs;
};

} // namespace pages
