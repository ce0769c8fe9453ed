#pragma once

#include "platform/dao/Dialect.h"
#include "platform/dao/Store.h"
#include "platform/store/OpenedFile.h"
#include "platform/store/OpeningRules.h"

#include <QString>
#include <initializer_list>
#include <memory>
#include <utility>

namespace dao {

class RecordsetState;

/// Version of the data in a file: changes by this connection, and commits of any connection as last seen.
struct DataVersion {
    qint64 ownChanges = -1;
    quint32 commits = 0;
    bool operator==(const DataVersion&) const = default;
};

/// A select that is being read; its statement is reset at the end of the scope.
class Rows {
public:
    explicit Rows(Statement& started) : statement(&started) {}
    Rows(Rows&& other) noexcept : statement(std::exchange(other.statement, nullptr)) {}
    Rows& operator=(Rows&&) = delete;
    ~Rows()
    {
        if (statement != nullptr)
            statement->Reset();
    }

    /// Moves to the next row; false at the end.
    bool Step() { return statement->Step(); }
    const Statement& Row() const { return *statement; }

private:
    Statement* statement;
};

/// A record set that has read only its first rows: its open select holds the snapshot of its opening.
class HalfReadSet {
public:
    HalfReadSet() = default;
    virtual ~HalfReadSet() = default;
    Q_DISABLE_COPY_MOVE(HalfReadSet)

    /// Reads the remaining rows and releases the snapshot.
    virtual void FinishReading() = 0;
    virtual bool Reads(const Plan* plan) const = 0;
    virtual void Close() noexcept = 0;
};

/// A statement for many runs with different values.
class RepeatedStatement {
public:
    void Bind(int parameter, const Value& value) { statement.Bind(parameter, value); }

private:
    friend class Connection;
    explicit RepeatedStatement(Statement prepared) : statement(std::move(prepared)) {}
    Statement statement;
};

/// One open database file: SQLite handle, cached plans, tables, transaction. Once closed, everything raises 3420.
///
/// All statements on the handle are started here: half-read sets are finished first, so that each statement sees the
/// current state of the file. Within a read transaction, which has one snapshot anyway, only sets of the same plan are
/// finished.
class Connection {
public:
    Connection(store::SqliteHandle opened, QString openedPath, store::OpeningRules openedBy);
    ~Connection();
    Q_DISABLE_COPY_MOVE(Connection)

    bool IsOpen() const { return database != nullptr; }
    void Close() noexcept;

    /// The plan for a statement's shape, prepared. `skipsFailures` as for Translate; it must be reflected in the shape.
    const std::shared_ptr<Plan>& PlanOf(QStringView statement, const std::u16string& shape, bool skipsFailures = false);
    Table* FindTable(std::string_view name);
    void ForgetTable(std::string_view name);

    /// Starts a select, whose statement is cached by its text. Valid until the next one is started.
    Rows Select(const std::string& sql, std::initializer_list<Value> parameters = {});
    /// Starts the select of a plan. Register a set that doesn't read it to the end as half read.
    Rows Select(Plan& plan, const std::vector<Value>& literals);
    void AddHalfRead(HalfReadSet& set) { halfRead.push_back(&set); }
    void RemoveHalfRead(HalfReadSet& set) noexcept { std::erase(halfRead, &set); }

    /// Raises 3044 when the path no longer leads to the opened file, or an older copy was written over it. The log is
    /// set aside then, and nothing more is written.
    void RequireSameFile();

    /// Runs a change, durable on return unless a transaction is open, and returns the number of rows changed. Ends the
    /// lock of an edit.
    int Change(Plan& plan, const std::vector<Value>& literals);
    int Change(const std::string& sql, const std::vector<Value>& parameters = {});
    /// The key of the row added last.
    qint64 LastAddedKey() const { return lastAddedKey; }

    /// For temporary tables: runs a statement without looking for a replaced file and without a commit of its own.
    /// Returns the number of rows changed.
    int Run(const std::string& sql);
    RepeatedStatement Prepare(const std::string& sql);
    void Run(RepeatedStatement& repeated);
    /// Ends a transaction begun with Run.
    void RollBackIfOpen();
    /// The folder of SQLite's temporary files.
    QString TemporaryFolder();

    void BeginTransaction();
    void EndTransaction(bool commits);
    /// See Database::KeepKeysAboveReferences.
    void KeepKeysAboveReferences();

    /// Read transactions may be nested, see ReadTransaction.
    void BeginReadTransaction();
    void EndReadTransaction() noexcept;

    /// The write lock of an edit. Only the last set to ask for it holds it.
    void LockForEdit(const RecordsetState& set);
    void UnlockEdit(const RecordsetState& set) noexcept;

    /// The version that a statement has just read.
    DataVersion Version();
    /// Whether nothing was written since, by this connection or (as far as noticed) by others.
    bool IsCurrent(const DataVersion& version) const;
    /// Notices changes by others, except while a list is half read.
    void CheckForChanges();
    /// Notices them in any case, except within a read transaction.
    void LookForChanges();

    /// Whether no other connection can read this file. MoveLogIntoFile makes it readable as it is on the disk.
    bool HoldsAlone(const QString& canonicalPath) const;
    void MoveLogIntoFile();

    /// Releases the snapshot, and checkpoints the log if it is large enough.
    void Idle();

private:
    sqlite3* Handle() const;
    Statement& Prepared(const std::string& sql);
    void FinishReading(const Plan* read = nullptr);
    void FinishAllReading();
    void RunChange(Statement& change);
    void CheckForReplacement();
    void DropPlans();
    void Begin();
    void Commit();
    void Rollback();
    void NoteLogSize(int pages);
    void Checkpoint();

    store::SqliteHandle database;
    QString path;
    store::OpeningRules rules;
    std::optional<store::OpenedFile> file;
    bool isReplaced = false;
    std::unordered_map<std::u16string, std::shared_ptr<Plan>> plans;
    std::unordered_map<std::string, Statement> prepared;
    Statement holder; // holds the snapshot of a read transaction while open
    Catalog catalog;
    std::vector<HalfReadSet*> halfRead;
    bool inTransaction = false;
    int readTransactions = 0;
    const RecordsetState* editing = nullptr; // the set whose edit holds the write lock
    int changedRows = 0;                     // by the latest change
    qint64 lastAddedKey = 0;                 // by the latest change
    qint64 changesAtBegin = 0;
    qint64 rollbacks = 0;
    quint32 commitsSeen = 0;
    int logPages = 0;
};

/// All open connections of the program.
std::vector<Connection*>& OpenConnections();

} // namespace dao
