#pragma once

#include "platform/dao/Dialect.h"
#include "platform/dao/Errors.h"
#include "platform/dao/FileState.h"
#include "platform/dao/Sqlite.h"
#include "platform/dao/Tokenizer.h"

#include <QString>
#include <memory>

namespace dao {

class ListedSet;
class TableSet;

/// How long to wait for the lock of another process before error 3187.
inline int busyMilliseconds = 5000;

/// Version of the data in a file: changes by this connection, and commits of any connection as last seen.
struct DataVersion {
    qint64 ownChanges = -1;
    quint32 commits = 0;
    bool operator==(const DataVersion&) const = default;
};

/// One open database file: SQLite handle, cached plans, tables, transaction.
///
/// A record set that has read only its first row keeps its statement open, and with it the snapshot of its opening.
/// Call FinishReading() before running another statement. Once closed, everything raises 3420.
class Connection {
public:
    /// Takes ownership of an open handle.
    explicit Connection(sqlite3* opened, QString openedPath);
    ~Connection();
    Q_DISABLE_COPY_MOVE(Connection)

    sqlite3* Handle() const;
    bool IsOpen() const { return database != nullptr; }
    const QString& File() const { return path; }
    void Close() noexcept;

    /// The plan for a statement's shape, prepared. `skipsFailures` as for Translate; it must be reflected in the shape.
    const std::shared_ptr<Plan>& PlanOf(QStringView statement, const std::u16string& shape, bool skipsFailures = false);
    /// A statement cached by its text; valid until the next call.
    Statement& Prepared(const std::string& sql);
    Table* FindTable(std::string_view name);
    void ForgetTable(std::string_view name);

    /// The set keeps its statement open until FinishReading.
    void BeginReading(ListedSet& set) { reading.push_back(&set); }
    void EndReading(ListedSet& set) noexcept { std::erase(reading, &set); }
    /// Call before a statement reads: finishes the open sets; within a read transaction, only those that use the plan
    /// `used`.
    void FinishReading(const Plan* used = nullptr);

    /// Raises 3044 when the path no longer leads to the opened file, or an older copy was written over it. The log is
    /// set aside then, and nothing more is written.
    void RequireSameFile();

    /// Runs a plan that changes rows; returns their number.
    int Change(Plan& plan, const std::vector<Value>& literals);
    /// Runs a change, durable on return unless a transaction is open. Ends the lock of an edit.
    void RunChange(Statement& change);

    void BeginTransaction();
    void EndTransaction(bool commits);

    /// Read transactions may be nested, see ReadTransaction.
    void BeginReadTransaction();
    void EndReadTransaction() noexcept;

    /// The write lock of an edit. Only the last set to ask for it holds it.
    void LockForEdit(const TableSet& set);
    void UnlockEdit(const TableSet& set) noexcept;

    /// The version that a statement has just read.
    DataVersion Version();
    /// Whether nothing was written since, by this connection or (as far as noticed) by others.
    bool IsCurrent(const DataVersion& version) const;
    /// Notices changes by others.
    void CheckForChanges();

    /// Releases the snapshot, and checkpoints the log if it is large enough.
    void Idle();

private:
    void CheckForReplacement();
    void DropPlans();
    void FinishAllReading();
    void Begin();
    void Commit();
    void Rollback();
    void Checkpoint(int pages);

    sqlite3* database = nullptr;
    QString path;
    OpenedFile file;
    bool isReplaced = false;
    std::unordered_map<std::u16string, std::shared_ptr<Plan>> plans;
    std::unordered_map<std::string, Statement> prepared;
    Statement holder; // holds the snapshot while open
    Catalog catalog;
    std::vector<ListedSet*> reading;
    bool inTransaction = false;
    int readTransactions = 0;
    const TableSet* editing = nullptr; // the set whose edit holds the write lock
    qint64 rollbacks = 0;
    quint32 commitsSeen = 0;
    int logPages = 0;
};

/// All open connections of the program.
std::vector<Connection*>& OpenConnections();

} // namespace dao
