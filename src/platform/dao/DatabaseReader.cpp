#include "platform/dao/DatabaseReader.h"

#include "platform/dao/Engine.h"
#include "platform/dao/Errors.h"
#include "platform/dao/FileHeader.h"
#include "platform/dao/FileState.h"
#include "platform/dao/FileWork.h"
#include "platform/dao/Opening.h"

#include <QFileInfo>
#include <sqlite3.h>

namespace dao {
namespace {

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
    const QString path = BehindLinks(linkedPath);
    const FileHeader header = HeaderOf(OpenImmutable(path).get(), QFileInfo(path).fileName());
    if (IsInUse(path)) {
        database = OpenHardened(path, SQLITE_OPEN_READONLY);
    } else if (QStringList endings = LogsOf(path); !endings.isEmpty()) {
        scratch.emplace();
        endings << "";
        for (const QString& ending : endings)
            CopyFile(path + ending, scratch->filePath(QFileInfo(path).fileName() + ending));
        database = OpenHardened(scratch->filePath(QFileInfo(path).fileName()), SQLITE_OPEN_READWRITE);
    } else {
        RequireWholePages(header, path);
        database = OpenImmutable(path);
    }
    RunOnce(database.get(), "begin");
    if (WholeAnswer(database.get(), "pragma user_version") > SchemaVersion)
        RaiseNewer(QFileInfo(path).fileName());
    WholeAnswer(database.get(), "select count(*) from sqlite_schema"); // the moment that is read
}

Statement DatabaseReader::Select(std::string_view sql) const
{
    return {database.get(), sql};
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

} // namespace dao
