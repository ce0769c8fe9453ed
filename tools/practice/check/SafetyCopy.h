#pragma once

#include <QDateTime>
#include <QString>

namespace practice {

/// Copies a database that is about to be repaired into this folder, under a new name that contains `moment`, and
/// returns its path. The pages of a damaged one are copied as they are. Raises the errors of archives::CopyDatabase,
/// described.
QString KeepCopy(const QString& database, bool isDamaged, const QString& archives, const QDateTime& moment);

} // namespace practice
