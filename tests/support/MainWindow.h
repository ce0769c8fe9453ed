#pragma once

#include "core/Form1.h"
#include "platform/basic/RuntimeError.h"
#include "support/ScriptedDesk.h"

#include <optional>

namespace tests {

/// What a user does at the main window. Messages that come of it are the test's to expect beforehand.

/// Chooses a practice's folder and types a code into the dialog that "Explorer ..." opens; cancels it when the code
/// isn't taken.
void TypeCode(ScriptedDesk& desk, core::Form1& main, const QString& folder, const QString& code);

/// Starts the program and opens the practice in this folder, whose access code is 6.
core::Form1& StartProgram(ScriptedDesk& desk, const QString& folder);

/// Ends the program by its menu and confirms it. `toldError` is the error that comes of it.
void Quit(ScriptedDesk& desk, core::Form1& main, const std::optional<basic::RuntimeError>& toldError = {});

} // namespace tests
