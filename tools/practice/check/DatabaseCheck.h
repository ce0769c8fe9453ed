#pragma once

#include "practice/check/Check.h"

#include "platform/dao/DatabaseReader.h"

namespace practice {

/// Looks at a database: its pages, tables, indexes, and every row of what the screens read. A table that can't be read
/// is a failure in the report, and the rest is looked at all the same. `name` is that of the file. Raises 3049 when not
/// even its list of tables can be read.
void CheckDatabase(const dao::DatabaseReader& reader, const QString& name, CheckReport& report);

} // namespace practice
