#pragma once

#include <QString>

namespace archives {

/// Removes the leftovers of a killed restoration: a partial copy, and a kept file that is a hard link to the database.
/// Call it with the copies' folder locked.
void RemoveUnfinishedRestoration(const QString& folder);

} // namespace archives
