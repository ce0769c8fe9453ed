#include "platform/store/Upgrade.h"

#include "platform/store/Errors.h"
#include "platform/store/FileHeader.h"
#include "platform/store/Marks.h"

#include <QRegularExpression>
#include <QScopeGuard>
#include <sqlite3.h>

#include <algorithm>
#include <limits>

namespace store {
namespace {

/// The text result of a select; empty if there is no row.
QString Ask(sqlite3* database, std::string_view select, const std::vector<Value>& parameters)
{
    Statement statement(database, select);
    statement.Bind(parameters);
    return statement.Step() ? QString::fromStdString(statement.TextAt(0)) : QString();
}

/// The SQL that created a table; empty if there is no such table.
QString DefinitionOf(sqlite3* database, const QString& table)
{
    return Ask(database, "select sql from sqlite_schema where type='table' and name=? collate nocase", {table});
}

/// The highest key in a column, 0 if none. Ignores values that aren't 32-bit numbers.
qint64 HighestKey(sqlite3* database, const KeyedTable::Column& column)
{
    constexpr auto isThere = "select 1 from pragma_table_info(?) where name=? collate nocase";
    if (Ask(database, isThere, {column.table, column.name}).isEmpty())
        return 0;
    const std::string key = Quoted(column.name.toStdString());
    return WholeAnswer(database, "select " + key + " from " + Quoted(column.table.toStdString()) + " where " + key +
                                     ">0 and " + key + "<=" + std::to_string(std::numeric_limits<qint32>::max()) +
                                     " order by " + key + " desc limit 1");
}

/// Recreates the table with AUTOINCREMENT, with the same columns, rows, indexes and triggers.
void AddAutoincrement(sqlite3* database, const KeyedTable& keyed)
{
    static const QRegularExpression key(R"(\binteger\s+primary\s+key\b(?!\s+autoincrement))",
                                        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression head(R"(^\s*create\s+table\s+("[^"]*"|\w+))",
                                         QRegularExpression::CaseInsensitiveOption);
    QString definition = DefinitionOf(database, keyed.table);
    if (!key.match(definition).hasMatch() || !head.match(definition).hasMatch())
        return;
    const std::string table = Quoted(keyed.table.toStdString());
    const std::string copy = Quoted(keyed.table.toStdString() + "_new");
    const QString others = Ask(database,
                               "select group_concat(sql, ';') from sqlite_schema where type in ('index','trigger') and "
                               "sql is not null and tbl_name=? collate nocase",
                               {keyed.table});
    definition.replace(key, "INTEGER PRIMARY KEY AUTOINCREMENT");
    definition.replace(head, "CREATE TABLE " + QString::fromStdString(copy));

    RunScript(database, definition.toStdString() + "; insert into " + copy + " select * from " + table +
                            "; drop table " + table + "; alter table " + copy + " rename to " + table + ";" +
                            others.toStdString());
}

void ChangeTables(sqlite3* database, const OpeningRules& rules)
{
    RunOnce(database, "begin immediate");
    const auto rollBack = qScopeGuard([database] {
        if (sqlite3_get_autocommit(database) == 0)
            sqlite3_exec(database, "rollback", nullptr, nullptr, nullptr);
    });
    if (WholeAnswer(database, "pragma user_version") >= SchemaVersion) // another program was first
        return;
    for (const KeyedTable& keyed : rules.keyedTables) {
        AddAutoincrement(database, keyed);
        KeepAboveReferences(database, keyed);
    }
    CreateMarks(database);
    RunScript(database, rules.addedTables.toStdString());
    RunOnce(database, "pragma user_version=" + std::to_string(SchemaVersion));
    RunOnce(database, "commit");
}

} // namespace

void RaiseNextKey(sqlite3* database, const QString& table, qint64 above)
{
    Statement raise(database, "update sqlite_sequence set seq=max(seq,?2) where name=?1 collate nocase");
    Statement add(database, "insert into sqlite_sequence (name, seq) select name, ?2 from sqlite_schema where "
                            "type='table' and name=?1 collate nocase and name not in (select name from "
                            "sqlite_sequence)"); // a table without rows
    for (Statement* const statement : {&raise, &add}) {
        statement->Bind(1, table);
        statement->Bind(2, above);
        statement->Run();
    }
}

void KeepAboveReferences(sqlite3* database, const KeyedTable& keyed)
{
    if (!DefinitionOf(database, keyed.table).contains("autoincrement", Qt::CaseInsensitive))
        return;
    qint64 highest = 0;
    for (const KeyedTable::Column& reference : keyed.references)
        highest = std::max(highest, HighestKey(database, reference));
    RaiseNextKey(database, keyed.table, highest);
}

void BringUpToDate(sqlite3* database, const OpeningRules& rules)
{
    if (rules.keyedTables.isEmpty() || WholeAnswer(database, "pragma user_version") >= SchemaVersion)
        return;
    // Renaming a table must not rewrite views and triggers.
    sqlite3_db_config(database, SQLITE_DBCONFIG_LEGACY_ALTER_TABLE, 1, nullptr);
    const auto restore =
        qScopeGuard([database] { sqlite3_db_config(database, SQLITE_DBCONFIG_LEGACY_ALTER_TABLE, 0, nullptr); });
    try {
        ChangeTables(database, rules);
    } catch (const RuntimeError& error) {
        if (error.Code() == Error::DamagedDatabase)
            throw;
    }
}

} // namespace store
