#pragma once

#include <QString>
#include <functional>

namespace dao {

using CopyProgress = std::function<void(int done, int total)>;

/// What is called while a database is copied.
struct CopySteps {
    /// Now and then while the pages are copied, with how many are done and how many there are.
    CopyProgress progress = {};
    /// When the new copy is whole and on the disk, before it replaces the file that is there: with that file's path,
    /// links resolved. What it raises ends the copying; the file that is there stays.
    std::function<void(const QString& present)> beforeReplacing = {};
};

/// Copies a database to `target` so that the target is always whole: yesterday's copy, byte for byte, or the new one.
///
/// The copy is taken through the engine's backup facility into `target` + ".part", set to a form that opens from
/// read-only media, checked (pages, indexes and the same row counts), sealed, synced and renamed over the target. Other
/// connections may read and write meanwhile. A damaged source is never copied. Raises 76 when the folder is missing, 53
/// when the source is, 61 when the disk is full, 70 or 75 when writing is refused, 3049 when source or copy are
/// damaged, 3343 when the source isn't this program's. The ".part" file is gone in every case.
void CopyDatabase(const QString& source, const QString& target, const CopySteps& steps = {});

} // namespace dao
