#pragma once

#include "platform/dao/Engine.h"

#include <optional>

namespace practice {

/// A practice opened the way the program opens it: through its workgroup, with the password of the workspace.
class PracticeData {
public:
    /// Raises 76 when the folder is missing, 3028 or 3029 for a workgroup that doesn't open, and what
    /// Workspace::OpenDatabase raises.
    explicit PracticeData(const QString& folder);
    ~PracticeData();
    PracticeData(const PracticeData&) = delete;
    PracticeData& operator=(const PracticeData&) = delete;

    const dao::Database& Database() const { return database; }

private:
    dao::Workspace workspace;
    dao::Database database;
};

/// A long run of new rows, bundled into transactions of 10,000 rows. What hasn't been committed by Finish when the run
/// is left is rolled back.
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
