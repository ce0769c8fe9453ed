#pragma once

#include <QStringList>

class QImage;
class QWidget;

namespace tour {

/// What a user can't read or reach on a window, one sentence for each: cut texts, controls outside their container, and
/// inks too close to their background. `picture` is the window as it was grabbed.
///
/// Left out: what a user has typed and cells of tables, which are elided or reduced on purpose.
QStringList IllegibleParts(const QWidget& window, const QImage& picture);

} // namespace tour
