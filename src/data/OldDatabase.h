#pragma once

#include <QByteArray>
#include <QString>

namespace data {

/// The first bytes of a file, from which IsOldDatabase decides.
inline constexpr qint64 OldDatabaseHead = 24;

/// Whether these are the first bytes of a database of the format that practices had before: Jet, or its successor.
bool IsOldDatabase(const QByteArray& head);
/// The same for a file; false if it can't be read.
bool IsOldDatabase(const QString& path);

} // namespace data
