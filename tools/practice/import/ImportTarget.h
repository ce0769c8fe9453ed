#pragma once

#include "platform/dao/Database.h"
#include "practice/fields/FieldRules.h"
#include "practice/import/Problems.h"
#include "practice/import/RowTarget.h"

#include <memory>

namespace practice {

/// The numbers of rows that an import adds, changes, finds unchanged, or leaves with other values (the single row of a
/// table, without updates).
struct ImportCounts {
    int added = 0;
    int changed = 0;
    int same = 0;
    int left = 0;
    int noted = 0;          ///< settlements that the feed didn't know the source to have
    QStringList leftFields; ///< that differ in a row that is left
};

/// Receives the rows of a file, compares them with existing rows, then writes them. Only Write changes the practice.
class ImportTarget : public RowTarget {
public:
    /// To be called once, after the last Add. Adds a problem for each row that can't be written.
    virtual void Compare(Problems& problems) = 0;
    const ImportCounts& Counts() const { return counts; }

    /// To be called within a transaction, which must be rolled back if there is a problem: another program has written
    /// one of the rows since Compare.
    virtual void Write(Problems& problems) = 0;

protected:
    ImportCounts counts;
};

/// With `updates`, existing rows with other values get those of the file.
std::unique_ptr<ImportTarget> MakeImportTarget(const dao::Database& database, const TableRule& rule, bool updates);

} // namespace practice
