#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace practice {

/// What was mended, in French, a line each.
struct RepairReport {
    QString copy; ///< the safety copy; empty when nothing was changed
    QStringList changes;
    QStringList doubts; ///< values that an index contradicted before it was rebuilt from them
    QString refusal;    ///< why nothing was changed although something was to be mended
};

/// Mends what can be mended with certainty: indexes that are missing, made otherwise or not of their table's rows,
/// dates in another form, months and years that aren't those of the row's date. All else stays as it is.
///
/// One transaction, after a copy into ARCHIVES whose name holds `moment` and that replaces no file. When the result
/// isn't sound nothing is changed. Raises 3024 when there is no database, 3187 when a program has the practice open,
/// what dao::RepairTransaction raises, and what dao::CopyDatabase raises.
RepairReport RepairPractice(const QString& folder, const QDateTime& moment);

} // namespace practice
