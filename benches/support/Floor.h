#pragma once

#include <QString>

struct sqlite3;
struct sqlite3_stmt;

/// The floor of the benches: the same work as plain prepared statements on a connection of their own. A failure of the
/// floor ends the bench with 2.
namespace bench {

/// Ends the bench with 2 and says why when what it rests on doesn't hold.
void Require(bool holds, const QString& what);

/// A connection with the durability that the program keeps: write-ahead log, synchronous FULL.
class PlainDatabase {
public:
    explicit PlainDatabase(const QString& path);
    ~PlainDatabase();
    PlainDatabase(const PlainDatabase&) = delete;
    PlainDatabase& operator=(const PlainDatabase&) = delete;

    void Run(const QString& statements);
    /// A copy of the whole database by the backup interface, then a quick check of the copy.
    void CopyChecked(const QString& target);

private:
    friend class PlainStatement;
    sqlite3* handle = nullptr;
};

/// One prepared statement. Places and columns are counted as SQLite counts them: parameters from 1, columns from 0.
class PlainStatement {
public:
    PlainStatement(const PlainDatabase& database, const QString& text);
    ~PlainStatement();
    PlainStatement(const PlainStatement&) = delete;
    PlainStatement& operator=(const PlainStatement&) = delete;

    PlainStatement& Bind(int place, qint64 number);
    PlainStatement& Bind(int place, int number) { return Bind(place, qint64(number)); }
    PlainStatement& Bind(int place, double number);
    PlainStatement& Bind(int place, const QString& text);
    /// Whether there is a row.
    bool Step();
    void Reset();
    /// Runs a statement that gives no rows, or reads the first row of one that does, for the next Bind.
    void Run();

    bool IsNull(int column) const;
    qint64 Number(int column) const;
    double Real(int column) const;
    QString Text(int column) const;

private:
    sqlite3_stmt* statement = nullptr;
};

} // namespace bench
