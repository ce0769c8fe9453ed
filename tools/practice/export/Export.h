#pragma once

#include "platform/store/DatabaseReader.h"
#include "practice/fields/FieldRules.h"
#include "practice/output/OutputFile.h"

#include <vector>

namespace practice {

struct ExportedTable {
    const TableRule* rule = nullptr;
    qint64 rows = 0;
};

/// Writes tables as files TABLE.csv that `import` takes back: UTF-8, semicolons, dates dd/mm/yyyy, amounts with a
/// decimal point, Null an empty cell. Texts are as they are stored; a spreadsheet may take one for a formula.
///
/// Makes the folder if it is missing. No file gets its name before all are written. Raises the errors of OutputFile.
std::vector<ExportedTable> ExportTables(const store::DatabaseReader& practice,
                                        const std::vector<const TableRule*>& tables, const QString& folder,
                                        OutputFile::Existing existing);

} // namespace practice
