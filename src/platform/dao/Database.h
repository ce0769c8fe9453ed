#pragma once

#include "platform/dao/Recordset.h"

#include <QStringList>
#include <memory>

namespace dao {

class Connection;

/// Fails the whole statement on an error; the only option of Execute that the screens use.
inline constexpr int FailOnError = 128;

enum class FieldType { Double = 7 };

/// A table's fields, for looking and for adding one.
class TableDef {
public:
    TableDef(std::shared_ptr<Connection> database, const QString& table);
    int FieldCount() const;
    QStringList FieldNames() const;
    /// Adds a field that is `initially` in every row there is and in new ones. Raises 3191 when the name is taken.
    void AppendField(const QString& name, FieldType type, const Value& initially);

private:
    std::shared_ptr<Connection> connection;
    QString tableName;
};

/// One open database file. A handle like Recordset: copies share the connection.
///
/// Statements are in the dialect of the screens (dates between "#", like with * ? # [..], case and accents ignored in
/// text comparisons, "Delete * from"); exactly one statement is taken, anything after it raises 3075. All statements of
/// one shape share one prepared statement.
class Database {
public:
    Database() = default;
    explicit Database(std::shared_ptr<Connection> opened) : connection(std::move(opened)) {}

    bool IsOpen() const { return connection != nullptr; }

    /// Opens the rows of a select statement, or of a table by its name. Raises 3078 for an unknown table, 3061 for an
    /// unknown field in a statement, 3075 for a statement that can't be read (platform/dao/Dialect.h lists those that
    /// can), 3085 for an unknown function, 3219 for a statement that gives no rows.
    Recordset OpenRecordset(const QString& statementOrTable) const;

    /// Runs a statement that gives no rows; returns the number of rows changed. Without FailOnError the rows that can
    /// be changed are; errors of the statement itself are raised in both cases. Raises 3065 for a select.
    int Execute(const QString& statement, int options = 0) const;

    /// Raises 3265 when there is no such table.
    dao::TableDef TableDef(const QString& table) const;

    /// Raises 3044 when the file was replaced, moved or deleted since it was opened. Every change asks by itself.
    void RequireSameFile() const;

    /// One writing transaction around several changes; they don't nest (3246). Ending none raises 3034.
    void BeginTrans() const;
    void CommitTrans() const;
    void Rollback() const;

    /// After rows with keys from elsewhere were written: the next key that each of DBEngine.KeyedTables gives is above
    /// every key that the table or a reference to it holds. To be called within a Transaction.
    void KeepKeysAboveReferences() const;

    /// Closes the file for all handles; record sets over it raise 3420 from then on. A second Close does nothing.
    void Close();

private:
    friend class ReadTransaction;
    friend class StagedRows;
    Connection& Open() const;
    std::shared_ptr<Connection> connection;
};

/// While it lives, everything that is read shows the file as it was at the first reading, own changes included,
/// whatever other programs write meanwhile. The file is locked once and not for each row: a screen's fill that looks up
/// a row for each of its rows takes half the time. A change ends the transaction; what is read after it begins
/// a new one.
class ReadTransaction {
public:
    explicit ReadTransaction(const Database& database);
    ~ReadTransaction();
    Q_DISABLE_COPY_MOVE(ReadTransaction)

private:
    std::shared_ptr<Connection> connection;
};

/// A transaction that is rolled back on every way out but Commit.
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
