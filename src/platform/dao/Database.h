#pragma once

#include "platform/dao/Recordset.h"

#include <QStringList>
#include <memory>

namespace dao {

class Connection;

/// Option of Execute: an error fails the whole statement.
inline constexpr int FailOnError = 128;

/// A table's fields.
class TableDef {
public:
    TableDef(std::shared_ptr<Connection> database, const QString& table);
    int FieldCount() const;
    QStringList FieldNames() const;
    /// Adds a number field with the value `initially` in existing and new rows. Raises 3191 when the name is taken.
    void AppendField(const QString& name, double initially);

private:
    std::shared_ptr<Connection> connection;
    QString tableName;
};

/// One open database file. A handle like Recordset: copies share the connection.
///
/// Statements are in the dialect of the screens (dates between "#", like with * ? # [..], case and accents ignored in
/// text comparisons, "Delete * from"). Anything after the first statement raises 3075. Statements of one shape share
/// one prepared statement.
class Database {
public:
    Database() = default;
    explicit Database(std::shared_ptr<Connection> opened) : connection(std::move(opened)) {}

    bool IsOpen() const { return connection != nullptr; }

    /// Opens a select statement, or a table by name. Raises 3078 for an unknown table, 3061 for an unknown field, 3075
    /// for a syntax error (see platform/dao/Dialect.h), 3085 for an unknown function, 3219 for a statement that isn't a
    /// select.
    Recordset OpenRecordset(const QString& statementOrTable) const;

    /// Runs an update or delete; returns the number of rows changed. Without FailOnError, rows that can't be changed
    /// are skipped; errors of the statement itself are always raised. Raises 3065 for a select.
    int Execute(const QString& statement, int options = 0) const;

    /// Raises 3265 when there is no such table.
    dao::TableDef TableDef(const QString& table) const;

    /// Raises 3044 when the file was replaced, moved or deleted since it was opened. Every change checks this itself.
    void RequireSameFile() const;

    /// A write transaction around several changes; doesn't nest (3246). Ending without one raises 3034.
    void BeginTrans() const;
    void CommitTrans() const;
    void Rollback() const;

    /// To be called within a Transaction after rows with given keys were written: raises the next key of each
    /// of the keyed tables (see store::OpeningRules) above every key that the table or a reference to it holds.
    void KeepKeysAboveReferences() const;

    /// Closes the file for all handles; its record sets then raise 3420. A second Close does nothing.
    void Close();

private:
    friend class DirectStatements;
    friend class ReadTransaction;
    friend class StagedRows;
    Connection& Open() const;
    std::shared_ptr<Connection> connection;
};

/// A read transaction: during its lifetime all reads see one snapshot, taken at the first read, plus own changes. The
/// file is locked once instead of per look-up, which halves the time of a fill that looks up a row for each of its
/// rows. A change ends the transaction; the next read begins a new one.
class ReadTransaction {
public:
    explicit ReadTransaction(const Database& database);
    ~ReadTransaction();
    Q_DISABLE_COPY_MOVE(ReadTransaction)

private:
    std::shared_ptr<Connection> connection;
};

/// A transaction that is rolled back unless committed.
class Transaction {
public:
    explicit Transaction(Database database);
    ~Transaction();
    Q_DISABLE_COPY_MOVE(Transaction)
    void Commit();

private:
    Database target;
    bool open = true;
};

} // namespace dao
