#pragma once

#include "platform/host/SystemFile.h"

#include <optional>

namespace store {

/// Holds the locks of a database file: no program can begin to read or write it, and one that tries waits. Raises 3187
/// when one has it open.
class DatabaseHold {
public:
    explicit DatabaseHold(const QString& database);

    /// Renames a file over the one that is held; durable on return. Where the system can't do that while it is held, it
    /// is let go of just before.
    void ReplaceBy(const QString& other);

private:
    QString path;
    std::optional<host::OpenFile> file; ///< none for a file that is missing or that nobody may write
};

} // namespace store
