#pragma once

#include "platform/dao/Dialect.h"
#include "platform/dao/Tokenizer.h"

#include <QString>
#include <array>
#include <memory>

namespace dao {

class TableSet;

/// How long a lock of another process is waited for before error 3187.
inline int busyMilliseconds = 5000;

/// A moment in the life of a database file: two equal ones have no write between them, whoever wrote.
struct Moment {
    qint64 ownChanges = 0;
    std::array<quint64, 6> logHead{};
    bool known = false; ///< an unknown moment is equal to none
};

/// One open database file: the store's handle, the plans of the statements seen so far, the tables, the transaction.
///
/// At most one record set may still be reading (its statement open, which holds the file as it was at the set's
/// opening); whoever runs a statement calls Settle() first. Everything raises 3420 once it is closed.
class Connection {
public:
    /// Takes over an opened handle.
    explicit Connection(sqlite3* opened, QString file);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    sqlite3* Handle() const;
    bool IsOpen() const { return database != nullptr; }
    const QString& File() const { return path; }
    void Close() noexcept;

    /// The plan of a statement's shape, with its statement prepared. `skipsFailures` as for Translate; the caller makes
    /// it a part of the shape.
    Plan& PlanOf(QStringView statement, const std::u16string& shape, bool skipsFailures = false);
    /// A statement kept by its text; it must have been reset when it is asked for again.
    Statement& Kept(const std::string& sql);
    /// Lets go of the kept statements when they have become many; none may be in use.
    void BoundKept();
    Table* FindTable(std::string_view name);
    void ForgetTable(std::string_view name);

    /// The set that begins reading; it is told to settle before any other statement runs.
    void BeginReading(TableSet& set);
    /// A set over a whole table, which is settled to its last key before rows are added to that table or taken from it.
    void WatchGrowth(TableSet& set);
    void Leave(TableSet& set) noexcept;
    void Settle();
    /// To be called before rows of this table are added or taken away other than at its end.
    void SettleWhole(const Table& table);

    /// Runs a plan that changes rows; returns how many.
    int Change(Plan& plan, const std::vector<Datum>& literals);
    /// Runs a change so that it is durable at return, unless a transaction of the caller is open. The lock of an edit
    /// is given up with the change that `endsEdit`.
    void RunChange(Statement& change, bool endsEdit = false);

    void BeginTransaction();
    void CommitTransaction();
    void RollbackTransaction();

    /// The write lock of an edit, several of which may be held at a time.
    void LockForEdit();
    void UnlockEdit() noexcept;

    Moment Now();
    bool IsStill(const Moment& moment) const;

    /// Brings changes that wait in the log into the file, once there are enough of them.
    void Idle();

private:
    void RequireTransaction() const;
    void Begin();
    void BeginAgain() noexcept;
    void Commit();
    const void* LogHead();
    void Checkpoint(int pages);

    sqlite3* database = nullptr;
    QString path;
    std::unordered_map<std::u16string, std::unique_ptr<Plan>> plans;
    std::vector<std::unique_ptr<Plan>> retired; // of tables that were changed: sets may still point at them
    std::unordered_map<std::string, Statement> kept;
    Catalog catalog;
    TableSet* reading = nullptr;
    std::vector<TableSet*> watching;
    bool inTransaction = false;
    int editLocks = 0;
    qint64 rollbacks = 0;
    int logPages = 0;
    const void* logHead = nullptr;
};

/// The write lock of one edit, given back on every way out.
class EditLock {
public:
    explicit EditLock(Connection& locked) : connection(locked) { connection.LockForEdit(); }
    ~EditLock() { connection.UnlockEdit(); }
    EditLock(const EditLock&) = delete;
    EditLock& operator=(const EditLock&) = delete;

private:
    Connection& connection;
};

/// Every connection of the program that is open now.
const std::vector<Connection*>& OpenConnections();

} // namespace dao
