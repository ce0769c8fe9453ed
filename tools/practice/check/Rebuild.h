#pragma once

#include "practice/check/Repair.h"

namespace practice {

/// Replaces a damaged database by a new one with all rows that can be read, mended in place, after a copy of the old
/// one. No key of a row is given again, as far as it is known. Refuses when no row of a table can be read.
///
/// The new file is made as the database's name with ".part", checked and renamed. Raises 3187 if a program opens the
/// database meanwhile, 3049 if it is too damaged to be read at all; nothing has changed then.
RepairReport Rebuild(const QString& database, const QString& archives, const QDateTime& moment);

} // namespace practice
