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

/// How long a lock of another process is waited for before error 3187.
inline int busyMilliseconds = 5000;

/// What was written to a database file up to a moment: by this connection, and by any as far as this one has read.
struct DataVersion {
    qint64 ownChanges = -1;
    quint32 commits = 0;
    bool operator==(const DataVersion&) const = default;
};

/// One open database file: SQLite's handle, the plans of the statements seen so far, the tables, the transaction.
///
/// A record set that has read its first row keeps its statement open, which holds the file as it was at the set's
/// opening. Whoever runs another statement calls FinishReading() first. Everything raises 3420 once it is closed.
class Connection {
public:
    /// Takes over an opened handle.
    explicit Connection(sqlite3* opened, QString openedPath);
    ~Connection();
    Q_DISABLE_COPY_MOVE(Connection)

    sqlite3* Handle() const;
    bool IsOpen() const { return database != nullptr; }
    const QString& File() const { return path; }
    void Close() noexcept;

    /// The plan of a statement's shape, with its statement prepared. `skipsFailures` as for Translate; the caller makes
    /// it a part of the shape.
    const std::shared_ptr<Plan>& PlanOf(QStringView statement, const std::u16string& shape, bool skipsFailures = false);
    /// A statement that is prepared once for its text, valid until the next call.
    Statement& Prepared(const std::string& sql);
    Table* FindTable(std::string_view name);
    void ForgetTable(std::string_view name);

    /// The set keeps its statement open; the connection has it finish before others run.
    void BeginReading(ListedSet& set) { reading.push_back(&set); }
    void EndReading(ListedSet& set) noexcept { std::erase(reading, &set); }
    /// To be called before a statement reads. Within a read transaction the others stay open, unless it is the one of
    /// the plan `used` that is to run.
    void FinishReading(const Plan* used = nullptr);

    /// Raises 3044 when the file under the database's name isn't any more the one that was opened, or an older copy was
    /// written over it. The log is set aside then, and nothing more gets into any file.
    void RequireSameFile();

    /// Runs a plan that changes rows; returns how many.
    int Change(Plan& plan, const std::vector<Value>& literals);
    /// Runs a change so that it is durable at return, unless a transaction of the caller is open. It ends the lock of
    /// an edit.
    void RunChange(Statement& change);

    void BeginTransaction();
    void EndTransaction(bool commits);

    /// Read transactions, which may be nested: see ReadTransaction.
    void BeginReadTransaction();
    void EndReadTransaction() noexcept;

    /// The write lock of an edit. One set has it at a time: the last that asked.
    void LockForEdit(const TableSet& set);
    void UnlockEdit(const TableSet& set) noexcept;

    /// To be called after a statement has read: the version that it read.
    DataVersion Version();
    /// Whether nothing was written since: nothing by this connection, and nothing by another that it has noticed.
    bool IsCurrent(const DataVersion& version) const;
    /// Notices what others have written.
    void LookForChanges();

    /// Lets go of the file and moves changes from the log into it, once there are enough of them.
    void Idle();

private:
    void LookForReplacement();
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
    Statement holder; // while it is open the file is seen as it was
    Catalog catalog;
    std::vector<ListedSet*> reading;
    bool inTransaction = false;
    int readTransactions = 0;
    const TableSet* editing = nullptr; // the set whose edit has the write lock
    qint64 rollbacks = 0;
    quint32 commitsSeen = 0;
    int logPages = 0;
};

/// Every connection of the program that is open now.
std::vector<Connection*>& OpenConnections();

} // namespace dao
