#pragma once

#include "platform/dao/Database.h"
#include "platform/store/OpeningRules.h"

#include <QString>

namespace dao {

/// A session of one user, through which databases are opened. A handle; the last one closes what is still open.
class Workspace {
public:
    bool IsOpen() const { return session != nullptr; }

    /// Opens a database for reading and writing after the checks of store::OpenForWork: 3024, 3343, 3049, 3027, 3187.
    Database OpenDatabase(const QString& path, const store::OpeningRules& rules = {}) const;

    /// Closes every database that was opened through it.
    void Close();

private:
    friend class Engine;
    struct Session;
    std::shared_ptr<Session> session;
};

/// The option of Engine::Idle.
inline constexpr int RefreshCache = 1;

/// The database engine: how workspaces are made, and the flush that every update ends with.
class Engine {
public:
    QString IniPath;
    QString DefaultUser;
    QString DefaultPassword;
    QString SystemDB; ///< path of the workgroup file

    /// Opens a session for `user`. Raises 3028 when the workgroup file is missing or can't be read, 3029 when user or
    /// password are not those it holds.
    Workspace CreateWorkspace(const QString& name, const QString& user, const QString& password) const;

    /// With RefreshCache: releases snapshots, so that the next statement sees all changes, and checkpoints a log of
    /// more than a megabyte if no reader prevents it. Not needed for durability.
    void Idle(int option) const;
};

inline Engine DBEngine;

} // namespace dao
