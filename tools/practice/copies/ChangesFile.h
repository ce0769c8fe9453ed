#pragma once

#include "practice/copies/Differences.h"

namespace practice {

/// Writes one line for each field that differs, in the CSV format of French spreadsheets. Raises 75 if the file can't
/// be written.
void WriteChanges(const QList<TableChanges>& changes, const QString& path);

} // namespace practice
