#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace practice {

/// The result of a repair, in French, one line each.
struct RepairReport {
    QString copy; ///< path of the safety copy; empty if nothing was changed
    QStringList changes;
    QStringList doubts; ///< values that differed from those of an index before it was rebuilt
    QStringList lost;   ///< rows on unreadable pages
    QString refusal;    ///< why nothing was repaired; empty if it was
};

/// Repairs a practice: in place what can be (see MendInPlace), otherwise by a new file with all rows that can be read
/// (see Rebuild).
///
/// Copies the database into ARCHIVES first, under a new name that contains `moment`. At every moment the database is
/// complete under its name, as it was or repaired. Raises 3024 if there is no database, 3187 if a program has the
/// practice open, and the errors of store::RepairTransaction and archives::CopyDatabase.
RepairReport RepairPractice(const QString& folder, const QDateTime& moment);

} // namespace practice
