#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace forms {

/// The SVG text of an icon of resources/icons (name without ".svg") in the current colours. An unknown one ends the
/// program with a message.
QByteArray IconText(const QString& name);

/// The icon as a square of `side` device-independent pixels, rendered for this pixel ratio.
QPixmap IconPixmap(const QString& name, int side, double pixelRatio);

/// The icon for Qt's own controls, in the sizes they use.
QIcon NamedIcon(const QString& name);

} // namespace forms
