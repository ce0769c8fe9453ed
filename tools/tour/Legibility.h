#pragma once

#include <QStringList>

class QImage;
class QWidget;

namespace tour {

/// The faults of a window, one sentence each: cut texts, controls outside their container, too little contrast.
/// `picture` is a grab of the window.
///
/// Typed text and table cells aren't checked: they are elided or shrunk on purpose.
QStringList IllegibleParts(const QWidget& window, const QImage& picture);

} // namespace tour
