#pragma once

#include <QString>
#include <QStringList>

namespace practice {

/// What an import did: the rows added, or else every line that was refused and why (in French), and nothing added.
struct ImportResult {
    int added = 0;
    QStringList problems;
};

/// Adds the rows of a CSV file to Patients, Actes, Plani or Actes_suppr: all of them or none.
///
/// The first row names the fields, in any order and case. MM and AA of an act follow from its day; Flag_H is 0 when it
/// is missing. Raises 5 for a table that can't be imported into, and what ReadCsv and PracticeData raise.
ImportResult ImportCsv(const QString& folder, const QString& table, const QString& file);

} // namespace practice
