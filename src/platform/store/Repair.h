#pragma once

#include "platform/store/Upgrade.h"

#include <QString>

namespace store {

/// One transaction over a database that may be damaged, as far as SQLite can read it. It has the write lock from the
/// beginning, and is rolled back on every way out but Commit.
class RepairTransaction {
public:
    /// Raises 3024 when the file is missing, 70 when it may not be read, 3343 when it isn't this program's or of a
    /// newer version, 3027 when file or folder are read-only, 3187 when a program has it open, 3049 when it is too
    /// damaged to be read at all.
    explicit RepairTransaction(const QString& path);
    ~RepairTransaction();
    Q_DISABLE_COPY_MOVE(RepairTransaction)

    /// Prepares a statement in SQLite's language; valid as long as the transaction. No trigger runs.
    Statement Prepare(std::string_view sql) const;

    /// See the functions of the same names.
    void RaiseNextKey(const QString& table, qint64 above) const;
    void KeepAboveReferences(const KeyedTable& keyed) const;

    /// Raises 3049 when a check of all pages and indexes finds damage, so that nothing that isn't sound is saved.
    void Commit();

private:
    SqliteHandle database;
};

} // namespace store
