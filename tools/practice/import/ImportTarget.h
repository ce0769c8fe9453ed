#pragma once

#include "platform/dao/Database.h"
#include "practice/fields/FieldRules.h"
#include "practice/import/Problems.h"

#include <memory>
#include <vector>

namespace practice {

/// What an import does to one table. Rows that the practice has already with the same values count as `same`; `left` is
/// a single row with other values that stays as it is.
struct ImportCounts {
    int added = 0;
    int changed = 0;
    int same = 0;
    int left = 0;
    QStringList leftFields; ///< in which it differs
};

/// Where the rows of one file go. They are gathered first, then compared with those that the practice has, then
/// written; nothing but Write changes the practice.
class ImportTarget {
public:
    ImportTarget() = default;
    virtual ~ImportTarget() = default;
    Q_DISABLE_COPY_MOVE(ImportTarget)

    virtual void Begin(const QStringList& fields) = 0;
    /// Returns why the row can't be taken, or an empty text.
    virtual QString Add(const std::vector<dao::Value>& values, qint64 line) = 0;
    /// To be called once, after Begin and the last Add. Notes what can't be written as a problem.
    virtual void Compare(Problems& problems) = 0;
    const ImportCounts& Counts() const { return counts; }

    /// To be called within a transaction. When another program has written one of the rows since Compare, that is noted
    /// as a problem, and the transaction is to be given up.
    virtual void Write(Problems& problems) = 0;

protected:
    ImportCounts counts;
};

/// `updates`: whether a row that is there with other values gets those of the file.
std::unique_ptr<ImportTarget> MakeImportTarget(const dao::Database& database, const TableRule& rule, bool updates);

} // namespace practice
