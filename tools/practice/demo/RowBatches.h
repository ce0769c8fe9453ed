#pragma once

#include "platform/dao/Database.h"
#include "practice/output/Progress.h"

#include <optional>

namespace practice {

/// Groups new rows into transactions of 10,000. Without Finish, the destructor rolls back the last one.
class RowBatches {
public:
    /// `rows` is how many there will be, for the terminal.
    RowBatches(dao::Database target, const QString& table, qint64 rows);
    /// To be called after each row.
    void Count();
    void Finish();

private:
    dao::Database database;
    Progress progress;
    std::optional<dao::Transaction> transaction;
    int rows = 0;
};

} // namespace practice
