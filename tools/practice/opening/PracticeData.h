#pragma once

#include "platform/dao/Engine.h"

namespace practice {

/// A practice that is opened the way the program does: through its workgroup, with the workspace password.
class PracticeData {
public:
    /// Raises 76 if the folder is missing, 3028 or 3029 if the workgroup can't be opened, and the errors of
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

} // namespace practice
