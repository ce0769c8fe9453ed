#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace forms {

/// The text of an icon of resources/icons (its name without ".svg") in the colours in force. An unknown one ends the
/// program with a message.
QByteArray IconText(const QString& name);

/// The icon in a square of `side` device-independent pixels, crisp on a display with this pixel ratio.
QPixmap IconPixmap(const QString& name, int side, double pixelRatio);

/// The icon for Qt's own controls, in the sizes they use.
QIcon NamedIcon(const QString& name);

} // namespace forms
