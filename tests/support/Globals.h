#pragma once

namespace tests {

/// Resets the global state of the program to that before the start, closing what is open.
void ResetGlobals();

} // namespace tests
