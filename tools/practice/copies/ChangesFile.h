#pragma once

#include "practice/copies/Differences.h"

#include <QIODevice>

namespace practice {

/// Writes one line for each field that differs, in the CSV format of French spreadsheets. A text that a spreadsheet
/// would run as a formula gets an apostrophe in front.
void WriteChanges(const QList<TableChanges>& changes, QIODevice& file);

} // namespace practice
