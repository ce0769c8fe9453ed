#pragma once

#include "core/Form1.h"
#include "platform/basic/RuntimeError.h"
#include "support/ScriptedDesk.h"

#include <optional>

namespace tests {

/// User actions on the main window. The test must expect the resulting messages beforehand.

/// Chooses a practice's folder and types a code into the dialog "Explorer ..."; cancels the dialog when the code is
/// refused.
void TypeCode(ScriptedDesk& desk, core::Form1& main, const QString& folder, const QString& code);

/// Starts the program and opens the practice in this folder, whose access code is 6.
core::Form1& StartProgram(ScriptedDesk& desk, const QString& folder);

/// Ends the program through its menu and confirms. `expectedError` is the error that is shown.
void Quit(ScriptedDesk& desk, core::Form1& main, const std::optional<basic::RuntimeError>& expectedError = {});

} // namespace tests
