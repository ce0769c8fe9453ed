#pragma once

namespace tests {

/// Kills this process at write `number` (from 1) to a database, its log or its copy: in the middle of an odd one, right
/// after an even one. Deterministic, however busy the machine is. For child processes only.
void DieAtWrite(int number);

/// The number of such writes so far.
int WritesMade();

} // namespace tests
