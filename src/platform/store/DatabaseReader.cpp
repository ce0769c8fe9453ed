#include "platform/store/DatabaseReader.h"

#include "platform/host/FileWork.h"
#include "platform/store/Errors.h"
#include "platform/store/FileHeader.h"
#include "platform/store/FileState.h"
#include "platform/store/Hardened.h"
#include "platform/store/TextCheck.h"

#include <QFileInfo>
#include <sqlite3.h>

namespace store {
namespace {

/// Begins a read transaction and reads once, which takes the snapshot.
void BeginReading(sqlite3* database)
{
    RunOnce(database, "pragma cache_size=-65536"); // in KiB: a check of indexes jumps about in all of them
    RunOnce(database, "begin");
    WholeAnswer(database, "select count(*) from sqlite_schema");
}

/// Opens a database that a program has open, reusing one of its read marks in -shm; creates our own only if none fits.
SqliteHandle OpenShared(const QString& path)
{
    try {
        SqliteHandle database = OpenHardened(path, Access::Shared);
        BeginReading(database.get());
        return database;
    } catch (const RuntimeError& error) {
        if (error.Code() != Error::ReadOnly)
            throw;
    }
    SqliteHandle database = OpenHardened(path, Access::Read);
    BeginReading(database.get());
    return database;
}

QStringList Lines(Statement statement)
{
    QStringList lines;
    while (statement.Step())
        lines << QString::fromStdString(statement.TextAt(0));
    return lines;
}

} // namespace

DatabaseReader::DatabaseReader(const QString& linkedPath)
{
    RequireFile(linkedPath);
    const QString path = host::BehindLinks(linkedPath);
    const FileHeader header = HeaderOf(OpenHardened(path, Access::Immutable).get(), QFileInfo(path).fileName());
    if (IsInUse(path)) {
        database = OpenShared(path);
    } else if (QStringList endings = LogsOf(path); !endings.isEmpty()) {
        scratch.emplace();
        endings << "";
        for (const QString& ending : endings)
            host::CopyFile(path + ending, scratch->filePath(QFileInfo(path).fileName() + ending));
        database = OpenHardened(scratch->filePath(QFileInfo(path).fileName()), Access::Write);
        BeginReading(database.get());
    } else {
        RequireWholePages(header, path);
        database = OpenHardened(path, Access::Immutable);
        BeginReading(database.get());
    }
    if (WholeAnswer(database.get(), "pragma user_version") > SchemaVersion)
        RaiseNewer(QFileInfo(path).fileName());
    DefineTextCheck(database.get());
}

Statement DatabaseReader::Select(std::string_view sql) const
{
    return {database.get(), sql};
}

void DatabaseReader::OnRowRead(std::function<void()> callBack)
{
    rowRead = std::make_unique<std::function<void()>>(std::move(callBack));
    const auto call = [](sqlite3_context* context, int /*count*/, sqlite3_value** /*rowId*/) {
        (*static_cast<std::function<void()>*>(sqlite3_user_data(context)))();
        sqlite3_result_int(context, 1);
    };
    Check(database.get(), sqlite3_create_function_v2(database.get(), "row_read", 1, SQLITE_UTF8, rowRead.get(), call,
                                                     nullptr, nullptr, nullptr));
}

QStringList DatabaseReader::Damage(int most) const
{
    try {
        const QStringList found = Lines(Select("pragma integrity_check(" + std::to_string(most) + ")"));
        return found == QStringList("ok") ? QStringList() : found;
    } catch (const RuntimeError& error) {
        if (error.Code() != Error::DamagedDatabase)
            throw;
        return {error.Description()};
    }
}

QStringList DatabaseReader::PlantedCode() const
{
    return Lines(Select("select name from sqlite_schema where type in ('trigger', 'view') order by name"));
}

QStringList CheckDatabase(const QString& path)
{
    try {
        return DatabaseReader(path).Damage();
    } catch (const RuntimeError& error) {
        if (error.Code() != Error::DamagedDatabase)
            throw;
        return {error.Description()};
    }
}

} // namespace store
