#pragma once

#include <QStringList>

#include <vector>

namespace tests {

/// A moment at which a process can be killed: before its first step, in the middle of a write or after a step. (After a
/// step is before the next one.)
struct Moment {
    enum Kind { MidWrite, AfterWrite, AfterName, AfterOther };
    Kind kind; ///< AfterName: a file was renamed, linked or removed
    int part;  ///< the calls of EndPart before
};

/// Counts the steps of this process on the disk from now on, and kills it at moment `deadly` (from 0), if not negative.
///
/// Steps are writes to files, and the calls that create, cut, rename, link, remove or seal a file or folder, whether by
/// the program or by a library. Where a kill falls depends on these and on nothing else, however busy the machine is.
void DieAtMoment(int deadly);

/// The moments so far.
const std::vector<Moment>& Moments();

/// Marks the end of a part of the work, whose result is reported to the user as saved.
void EndPart();

/// What a power cut could have taken although the program relied on it: files renamed before they were synced, and
/// files and names not synced at the end of a part.
const QStringList& SyncFaults();

} // namespace tests
