#pragma once

#include "practice/check/Check.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace practice {

/// What was taken of a table.
struct AdoptedTable {
    QString name;
    qint64 taken = 0;    ///< rows
    qint64 leftOut = 0;  ///< rows
    QStringList losses;  ///< what couldn't be taken, in French, one line each: the first thousand
    qint64 unlisted = 0; ///< losses beyond those
};

struct AdoptionReport {
    std::vector<AdoptedTable> tables;
    QStringList otherTables; ///< of the old database, which aren't taken
    bool hasOldTemplates = false;
    CheckReport check; ///< of the new practice

    /// Whether everything was taken and the new practice is in order.
    bool IsWhole() const;
};

/// Makes a practice from the folder of an old one: all tables with their keys, the configuration as it is, templates of
/// the program. The old folder is only read. The new one is made whole or not at all, even if the program is killed.
///
/// A value that can't be taken becomes Null where the field may be Null; otherwise its row is left out. Raises 76 if
/// there is no such folder, 53 if its database or configuration is missing, 58 if the new folder contains anything, 75
/// if it lies in the old one, and the errors of JetFile and CreatePractice.
AdoptionReport Adopt(const QString& oldFolder, const QString& newFolder);

} // namespace practice
