#pragma once

#include <QString>

struct sqlite3;
struct sqlite3_stmt;

/// The floor of the benches: the same work as plain prepared statements on a separate connection. A failure ends the
/// bench with 2.
namespace bench {

/// Ends the bench with 2 and the message unless `holds`.
void Require(bool holds, const QString& what);

/// A connection with the program's durability: write-ahead log, synchronous FULL.
class PlainDatabase {
public:
    explicit PlainDatabase(const QString& path);
    ~PlainDatabase();
    PlainDatabase(const PlainDatabase&) = delete;
    PlainDatabase& operator=(const PlainDatabase&) = delete;

    void Run(const QString& statements);
    /// Copies the database through the backup interface, then runs a quick check of the copy.
    void CopyChecked(const QString& target);

private:
    friend class PlainStatement;
    sqlite3* handle = nullptr;
};

/// One prepared statement. Parameters are numbered from 1, columns from 0.
class PlainStatement {
public:
    PlainStatement(const PlainDatabase& database, const QString& text);
    ~PlainStatement();
    PlainStatement(const PlainStatement&) = delete;
    PlainStatement& operator=(const PlainStatement&) = delete;

    PlainStatement& Bind(int parameter, qint64 number);
    PlainStatement& Bind(int parameter, int number) { return Bind(parameter, static_cast<qint64>(number)); }
    PlainStatement& Bind(int parameter, double number);
    PlainStatement& Bind(int parameter, const QString& text);
    /// Whether there is a row.
    bool Step();
    void Reset();
    /// Runs a statement, or reads its first row, and resets it.
    void Run();

    bool IsNull(int column) const;
    qint64 Number(int column) const;
    double Real(int column) const;
    QString Text(int column) const;

private:
    sqlite3_stmt* statement = nullptr;
};

} // namespace bench
