#pragma once

#include "platform/store/OpeningRules.h"

namespace store {

/// Upgrades a database of an older version in one transaction: these tables never reuse a key (version 2), commits are
/// marked (version 3), and tables are added (version 4).
///
/// A database that can't be upgraded now (locked, disk full, unexpected schema) is left unchanged and remains usable.
/// Raises 3049 when it turns out to be damaged.
void BringUpToDate(sqlite3* database, const OpeningRules& rules);

/// Raises the next key of an AUTOINCREMENT table above this key, if it isn't yet.
void RaiseNextKey(sqlite3* database, const QString& table, qint64 above);

/// Raises the next key of an AUTOINCREMENT table above every key that a reference to it holds.
void KeepAboveReferences(sqlite3* database, const KeyedTable& keyed);

} // namespace store
