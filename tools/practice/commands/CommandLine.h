#pragma once

#include "practice/commands/Command.h"

namespace practice {

/// Runs a command line, given without the program's name, and returns the exit code.
int RunCommand(const QStringList& arguments, const Streams& streams);

} // namespace practice
