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
    QString refusal;    ///< why the repair was undone; empty if it wasn't
};

/// Repairs only what has one correct value: creates missing indexes, rebuilds those that are defined otherwise or
/// disagree with their table, converts dates of another form, and takes months and years from the row's date.
///
/// Copies the database into ARCHIVES first, under a new name that contains `moment`, then makes all changes in one
/// transaction, which is rolled back if a check of the result finds damage. Raises 3024 if there is no database, 3187
/// if a program has the practice open, and the errors of store::RepairTransaction and store::CopyDatabase.
RepairReport RepairPractice(const QString& folder, const QDateTime& moment);

} // namespace practice
