#pragma once

#include "platform/dao/Engine.h"

#include <optional>

namespace practice {

/// A practice opened as by the program: through its workgroup, with the workspace password.
class PracticeData {
public:
    /// Raises 76 when the folder is missing, 3028 or 3029 when the workgroup can't be opened, and the errors of
    /// Workspace::OpenDatabase.
    explicit PracticeData(const QString& folder);
    ~PracticeData();
    PracticeData(const PracticeData&) = delete;
    PracticeData& operator=(const PracticeData&) = delete;

    const dao::Database& Database() const { return database; }

private:
    dao::Workspace workspace;
    dao::Database database;
};

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
