#pragma once

#include "platform/dao/Database.h"

#include <QString>

namespace dao {

/// A session of one user, through which databases are opened. A handle; the last one closes what is still open.
class Workspace {
public:
    bool IsOpen() const { return session != nullptr; }

    /// Opens a database for reading and writing after checking it: missing 3024, foreign, empty or of another engine
    /// 3343, newer than this program 3343, damaged 3049, read-only file or folder 3027, locked by another process 3187.
    /// A file that this program had open before isn't looked over again unless somebody else has changed it. A log
    /// beside an archive copy that was put back belongs to the file from before: it is set aside as "-wal.set-aside".
    Database OpenDatabase(const QString& path) const;

    /// Closes every database that was opened through it.
    void Close();

private:
    friend class Engine;
    struct Session;
    std::shared_ptr<Session> session;
};

/// A table whose rows the program adds, and where else the keys of its rows are held.
struct KeyedTable {
    struct Column {
        QString table;
        QString name;
    };
    QString table;
    QList<Column> references;
};

/// An index with a day and an amount, from which sums are read.
struct SummedIndex {
    QString table;
    QString index;
    QString date;
    QString amount;
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
    /// Tables that must never give a key twice. At the opening of a database of an older version they are changed so:
    /// the next key is above every key that the table or a reference to it holds.
    QList<KeyedTable> KeyedTables;
    /// Checked at the opening of a large database, whose other indexes aren't.
    QList<SummedIndex> SummedIndexes;

    /// Opens a session for `user`. Raises 3028 when the workgroup file is missing or can't be read, 3029 when user or
    /// password are not those it holds.
    Workspace CreateWorkspace(const QString& name, const QString& user, const QString& password) const;

    /// With RefreshCache: releases snapshots, so that the next statement sees all changes, and checkpoints a log of
    /// more than a megabyte if no reader prevents it. Not needed for durability.
    void Idle(int option) const;
};

inline Engine DBEngine;

/// Makes the workgroup file: the user and a salted hash of the password. Replaces one that is there.
void WriteWorkgroup(const QString& path, const QString& user, const QString& password);

/// Makes an empty database from the statements of `schema`, readable by its owner alone, marked as this program's.
/// Raises 3204 when the file exists.
void CreateDatabase(const QString& path, const QString& schema);

/// The damage that a full check of the file finds, one line each; empty for a sound file. Opens it read-only.
QStringList CheckDatabase(const QString& path);

} // namespace dao
