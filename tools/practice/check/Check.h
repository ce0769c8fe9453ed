#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace practice {

/// What a look at a practice found, in French, one line each.
struct CheckReport {
    bool isFolder = true;
    QStringList facts;    ///< what is there
    QStringList remarks;  ///< unusual, and the screens cope with it
    QStringList failures; ///< wrong: a screen or the opening would stop on it, or a figure be wrong

    /// Runs a step of the check; a run-time error becomes a failure.
    void Run(const QString& subject, const std::function<void()>& step);

    /// All of it, and a last line that says whether all is in order.
    QString Text() const;
};

/// Looks at the files of a practice, the integrity of its database, its tables and indexes, its values and keys, and
/// the rows that must exist; or at a database alone, when the path is that of a file.
///
/// Nothing in the folder is changed or made, also while a program has the practice open. What can't be looked at is a
/// failure in the report and raises nothing.
CheckReport CheckPractice(const QString& path);

} // namespace practice
