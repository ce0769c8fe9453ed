#pragma once

#include "practice/commands/Command.h"

namespace practice {

/// Runs a command line, without the program's name. Returns the exit code: 0 done, 1 refused or the practice has a
/// fault, 2 invalid arguments (with the usage on the error stream).
int RunCommand(const QStringList& arguments, const Streams& streams);

} // namespace practice
