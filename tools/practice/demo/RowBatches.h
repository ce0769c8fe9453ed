#pragma once

#include "platform/dao/Database.h"

#include <optional>

namespace practice {

/// Groups a large number of new rows into transactions of 10,000 rows. The destructor rolls back what Finish hasn't
/// committed.
class RowBatches {
public:
    explicit RowBatches(dao::Database target);
    /// Counts a row that was written.
    void Count();
    void Finish();

private:
    dao::Database database;
    std::optional<dao::Transaction> transaction;
    int rows = 0;
};

} // namespace practice
