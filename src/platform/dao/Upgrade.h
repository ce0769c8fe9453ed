#pragma once

#include "platform/dao/Engine.h"

struct sqlite3;

namespace dao {

/// Upgrades a database of an older version in one transaction: these tables never reuse a key.
///
/// A database that can't be upgraded now (locked, disk full, unexpected schema) is left unchanged and remains usable.
/// Raises 3049 when it turns out to be damaged.
void BringUpToDate(sqlite3* database, const QList<KeyedTable>& tables);

} // namespace dao
