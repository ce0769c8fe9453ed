#pragma once

#include "practice/check/Check.h"

#include "platform/store/DatabaseReader.h"

namespace practice {

/// Checks pages, tables, indexes and every row that a screen reads. A table that can't be read is reported as a
/// failure, and the check goes on. `name` is that of the file. Raises 3049 if the list of tables can't be read.
void CheckDatabase(store::DatabaseReader& reader, const QString& name, CheckReport& report);

} // namespace practice
