#pragma once

#include "platform/store/OpeningRules.h"

namespace store {

struct FileHeader;

/// Opens a database for reading and writing after checking it: missing 3024, foreign, empty or of another engine 3343,
/// newer than this program 3343, damaged 3049, read-only file or folder 3027, locked by another process 3187.
///
/// A refused file is unchanged, and no file is created beside it as far as the checks can avoid that. A file that this
/// program had open before is checked again only if somebody else has changed it.
SqliteHandle OpenForWork(const QString& path, const OpeningRules& rules);

/// Renames a log beside a file in rollback mode, so that its pages don't get into the file: it belongs to an earlier
/// file of this name, before an archive copy was put back. Raises 75 when renaming is refused.
void SetForeignLogAside(const QString& path, const FileHeader& header);

/// Checkpoints the whole log and removes it. Raises 3049 when the file or the log is damaged.
void MoveLogIntoFile(const QString& path);

/// Opens a database of this program for reading, whatever its condition: 3024, 3343. Creates no file beside it unless a
/// log is there.
SqliteHandle OpenForReading(const QString& path);

} // namespace store
