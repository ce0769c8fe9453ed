#pragma once

#include <QByteArray>
#include <QStringList>

namespace practice {

/// What a program of the package mdbtools has written.
struct JetToolRun {
    QByteArray output;
    QString trouble; ///< why it can't be relied on, in French without a full stop; empty if it can
};

/// Runs a program of the package in a process of its own: on a damaged file it may crash, never end, or write without
/// end, which is stopped beyond `mostBytes`. Raises 53, naming the package, if it isn't installed.
JetToolRun RunJetTool(const QString& program, const QStringList& arguments, qint64 mostBytes);

} // namespace practice
