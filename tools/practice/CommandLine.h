#pragma once

#include <QStringList>
#include <QTextStream>

namespace practice {

/// Runs the command as a user types it, without the program's name. Returns the exit code: 0 done, 1 refused or
/// something is wrong with the practice, 2 arguments that make no sense (with the usage on `errors`).
int RunCommand(const QStringList& arguments, QTextStream& output, QTextStream& errors);

} // namespace practice
