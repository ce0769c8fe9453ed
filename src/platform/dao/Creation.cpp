#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"
#include "platform/dao/Opening.h"
#include "platform/dao/OwnerOnly.h"

#include <QFile>
#include <QFileInfo>
#include <sqlite3.h>

namespace dao {
namespace {

/// A file that vanishes, with what the store made beside it, unless it is kept.
class NewFile {
public:
    explicit NewFile(QString made) : path(std::move(made)) {}
    ~NewFile()
    {
        if (kept)
            return;
        for (const char* const part : {"", "-journal", "-wal", "-shm"})
            QFile::remove(path + part);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    void Keep() { kept = true; }

private:
    QString path;
    bool kept = false;
};

} // namespace

void CreateDatabase(const QString& path, const QString& schema)
{
    const QFileInfo file(path);
    if (file.exists())
        throw basic::RuntimeError(basic::Error::DatabaseExists);
    if (!QFileInfo(file.absolutePath()).isDir())
        throw basic::RuntimeError(basic::Error::PathNotFound);

    const OwnerOnly ownerOnly;
    NewFile made(path);
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(SystemPath(path).c_str(), &opened,
                                     SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    StoreHandle handle(opened);
    Check(opened, code);
    RunScript(opened, "begin immediate");
    RunScript(opened, schema.toStdString());
    RunScript(opened, "pragma application_id=" + std::to_string(applicationMark) +
                          "; pragma user_version=" + std::to_string(SchemaVersion) + "; commit");
    RunScript(opened, "pragma journal_mode=wal");
    handle.reset();
    made.Keep();
}

QStringList CheckDatabase(const QString& path)
{
    QStringList damage;
    try {
        const StoreHandle handle = OpenForReading(path);
        Statement check(handle.get(), "pragma integrity_check");
        while (check.Step())
            damage << QString::fromStdString(check.TextAt(0));
    } catch (const basic::RuntimeError& error) {
        if (error.Code() != basic::Error::DamagedDatabase)
            throw;
        damage << error.Description();
    }
    if (damage == QStringList("ok"))
        damage.clear();
    return damage;
}

} // namespace dao
