#pragma once

#include "platform/store/Backup.h"

#include <QString>
#include <functional>

namespace archives {

/// Callbacks of a copy.
struct CopySteps {
    store::CopyProgress progress = {};
    /// Called when the new copy is complete and synced, before it replaces the existing file, with that file's path
    /// (links resolved). Throwing cancels the copy; the existing file stays.
    std::function<void(const QString& present)> beforeReplacing = {};
};

/// Copies a database to `target` so that the target is always whole: yesterday's copy, byte for byte, or the new one.
///
/// The copy is made through SQLite's backup API into `target` + ".part", set to rollback-journal mode so that it opens
/// from read-only media, checked (pages, indexes and the same row counts), sealed, synced and renamed over the target.
/// Other connections may read and write meanwhile. A damaged source is never copied. Raises 76 when the folder is
/// missing, 53 when the source is, 61 when the disk is full, 70 or 75 when writing is refused, 3049 when source or copy
/// are damaged, 3343 when the source isn't this program's. The ".part" file is gone in every case.
void CopyDatabase(const QString& source, const QString& target, const CopySteps& steps = {});

/// The same for a source that is damaged: its pages are copied as they are, and the copy isn't checked.
void CopyDamagedDatabase(const QString& source, const QString& target);

} // namespace archives
