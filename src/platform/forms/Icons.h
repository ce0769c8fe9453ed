#pragma once

#include <QBrush>
#include <QIcon>
#include <QList>
#include <QPainterPath>
#include <QPen>
#include <QPixmap>
#include <QString>

class QPainter;

namespace forms {

/// A drawing of resources/icons, recorded as paths when the program is built.
struct Drawing {
    struct Shape {
        QPen pen;
        QBrush brush;
        QPainterPath path;
    };

    QSizeF size;
    QList<Shape> shapes;

    /// Draws it as large as it fits into the rectangle, in the middle.
    void Paint(QPainter& painter, const QRectF& rectangle) const;
};

/// An icon (name without ".svg") in the current colours. An unknown one ends the program with a message.
Drawing DrawingOf(const QString& name);

QStringList IconNames();

/// The icon as a square of `side` device-independent pixels, rendered for this pixel ratio.
QPixmap IconPixmap(const QString& name, int side, double pixelRatio);

/// The program's icon, in its own colours.
QIcon ProgramIcon();

/// The icon for Qt's own controls, in the sizes they use.
QIcon NamedIcon(const QString& name);

} // namespace forms
