#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace practice {

/// What was mended, in French, one line each.
struct Mending {
    QStringList changes;
    QStringList doubts; ///< values that differed from those of an index before it was rebuilt
};

/// Mends within a database what has one correct value: creates missing indexes, rebuilds those that are defined
/// otherwise or disagree with their table, converts dates of another form, and takes months and years from the row's
/// date.
///
/// If there is anything to mend, `beforeChange` is called, then all changes are made in one transaction. Raises 3049,
/// having changed nothing, when damage would be left, and the errors of store::RepairTransaction.
Mending MendInPlace(const QString& database, const std::function<void(bool isDamaged)>& beforeChange);

} // namespace practice
