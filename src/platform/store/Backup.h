#pragma once

#include <QString>
#include <functional>

struct sqlite3;

namespace store {

/// Called from time to time with the pages copied and their total.
using CopyProgress = std::function<void(int done, int total)>;

/// Writes all pages of an open database into a new file, through SQLite's backup API. The file is in rollback-journal
/// mode, so that it opens from read-only media, and isn't synced. What stops the writing is raised as a file error.
void BackUp(sqlite3* source, const QString& path, const CopyProgress& progress);

} // namespace store
