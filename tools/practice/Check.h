#pragma once

#include <QString>
#include <QStringList>

namespace practice {

/// What a look at a data folder found, in French, one line each.
struct CheckReport {
    QStringList facts;    ///< what is there
    QStringList remarks;  ///< unusual, and the screens cope with it
    QStringList failures; ///< wrong: a screen or the opening would stop on it
};

/// Looks at the files of a practice, the integrity of its database, its codes and keys, and the rows that must exist.
/// Writes nothing; what can't be looked at is a failure in the report and raises nothing.
CheckReport CheckPractice(const QString& folder);

} // namespace practice
