#pragma once

#include "practice/Command.h"

namespace practice {

/// Runs the command as a user types it, without the program's name. Returns the exit code: 0 done, 1 refused or
/// something is wrong with the practice, 2 arguments that make no sense (with the usage on the stream of errors).
int RunCommand(const QStringList& arguments, const Streams& streams);

} // namespace practice
