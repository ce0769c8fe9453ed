#pragma once

struct sqlite3;

namespace store {

/// Defines the function is_well_formed(text) for the connection: whether a text is UTF-8 without a NUL, behind which
/// SQLite's own functions don't look. True for Null.
void DefineTextCheck(sqlite3* database);

} // namespace store
