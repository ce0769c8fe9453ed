#pragma once

#include "platform/dao/Database.h"

#include <optional>

namespace practice {

/// Groups new rows into transactions of 10,000. Without Finish, the destructor rolls back the last one.
class RowBatches {
public:
    explicit RowBatches(dao::Database target);
    /// To be called after each row.
    void Count();
    void Finish();

private:
    dao::Database database;
    std::optional<dao::Transaction> transaction;
    int rows = 0;
};

} // namespace practice
