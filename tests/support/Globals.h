#pragma once

namespace tests {

/// Puts every global of the program back to its state before the start, closing what is open: a run of the program does
/// this once, a test program once for each test.
void ResetGlobals();

} // namespace tests
