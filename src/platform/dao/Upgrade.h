#pragma once

#include "platform/dao/Engine.h"

struct sqlite3;

namespace dao {

/// Brings a database of an older version up to date, in one transaction: these tables never give a key twice.
///
/// A database that can't be brought up to date now (locked, disk full, made otherwise than expected) is left as it is,
/// to be used as before. Raises 3049 when it turns out to be damaged.
void BringUpToDate(sqlite3* database, const QList<KeyedTable>& tables);

/// Makes the next key of a table that never gives one twice higher than those that references to it hold.
void KeepAboveReferences(sqlite3* database, const KeyedTable& keyed);

} // namespace dao
