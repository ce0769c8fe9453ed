#pragma once

#include <QString>
#include <QStringList>
#include <functional>

namespace practice {

/// The findings of a check, in French, one line each.
struct CheckReport {
    bool isFolder = true;
    QStringList facts;    ///< letterhead, numbers of rows
    QStringList remarks;  ///< unusual, without effect on any screen or figure
    QStringList failures; ///< stops the opening or a screen, or makes a figure wrong

    /// Runs a step of the check and records a run-time error as a failure.
    void Run(const QString& subject, const std::function<void()>& step);

    /// All findings, then a verdict.
    QString Text() const;
};

/// Checks a practice: its files, pages and indexes of its database, tables, values, keys, required rows. If the path is
/// that of a file, checks it as a database alone.
///
/// Reads only, even while a program has the practice open. What can't be read is reported as a failure; nothing is
/// raised.
CheckReport CheckPractice(const QString& path);

} // namespace practice
