#include "platform/store/Hardened.h"

#include "platform/host/SystemFile.h"

#include <QFileInfo>
#include <QUrl>
#include <sqlite3.h>

namespace store {
namespace {

/// The path as an address with a parameter.
std::string AddressOf(const QString& path, const char* parameter)
{
    const std::string whole = host::SystemPath(QFileInfo(path).absoluteFilePath());
    return "file:" + QUrl::toPercentEncoding(QString::fromStdString(whole), "/").toStdString() + "?" + parameter;
}

SqliteHandle Open(const QString& path, Access access)
{
    const auto open = [](const std::string& name, int flags) {
        sqlite3* opened = nullptr;
        const int code = sqlite3_open_v2(name.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, host::SqliteSystem);
        SqliteHandle handle(opened);
        Check(opened, code);
        return handle;
    };
    switch (access) {
    case Access::Immutable:
        return open(AddressOf(path, "immutable=1"), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    case Access::Shared:
        return open(AddressOf(path, "readonly_shm=1"), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    case Access::Read:
        return open(host::SystemPath(path), SQLITE_OPEN_READONLY);
    case Access::Write:
        return open(host::SystemPath(path), SQLITE_OPEN_READWRITE);
    case Access::Create:
        break;
    }
    return open(host::SystemPath(path), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

} // namespace

SqliteHandle OpenHardened(const QString& path, Access access, int patience)
{
    SqliteHandle handle = Open(path, access);
    sqlite3* const opened = handle.get();
    sqlite3_extended_result_codes(opened, 1);
    sqlite3_busy_timeout(opened, patience);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    // Words between double quotes are names or errors, never text by mistake.
    for (const int option : {SQLITE_DBCONFIG_TRUSTED_SCHEMA, SQLITE_DBCONFIG_DQS_DML, SQLITE_DBCONFIG_DQS_DDL,
                             SQLITE_DBCONFIG_ENABLE_TRIGGER, SQLITE_DBCONFIG_ENABLE_VIEW,
                             SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER})
        sqlite3_db_config(opened, option, 0, nullptr);
    RunOnce(opened, "pragma cell_size_check=on");
    return handle;
}

bool IsMoved(sqlite3* database)
{
    int isMoved = 0;
    return sqlite3_file_control(database, "main", SQLITE_FCNTL_HAS_MOVED, &isMoved) == SQLITE_OK && isMoved != 0;
}

void KeepLogAtClose(sqlite3* database, bool keeps)
{
    sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, keeps ? 1 : 0, nullptr);
}

} // namespace store
