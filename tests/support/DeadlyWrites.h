#pragma once

namespace tests {

/// Kills this process at its write number `number` (from 1) to a database, its log or its copy: in the middle of an odd
/// one, right after an even one. Files that are renamed, linked, removed or copied whole count as well: the process
/// dies before an odd one of these. To be called in a process of its own; where a kill falls depends on what is written
/// and on nothing else, however busy the machine is.
void DieAtWrite(int number);

/// The number of such writes so far.
int WritesMade();

} // namespace tests
