#pragma once

#include "platform/host/SystemFile.h"

#include <QString>
#include <memory>
#include <optional>

namespace host {

/// File operations that Qt lacks, on top of the system's calls.

/// The path with symbolic links resolved; a dangling link counts as a missing file.
QString BehindLinks(const QString& path);

/// Prevents concurrent copies into one folder, each of which would remove the other's partial file. Waits for the other
/// one; raises 70 when that takes longer than any copy does.
class FolderLock {
public:
    enum class Wait : quint8 { No, Yes };
    explicit FolderLock(const QString& path, Wait wait = Wait::Yes);

private:
    std::unique_ptr<const FolderHold> folder;
};

/// Holds the locks of a database file: no program can begin to read or write it, and one that tries waits. Raises 3187
/// when one has it open.
class DatabaseHold {
public:
    explicit DatabaseHold(const QString& database);

    /// Renames a file over the one that is held; durable on return. Where the system can't do that while it is held, it
    /// is let go of just before.
    void ReplaceBy(const QString& other);

private:
    QString path;
    std::optional<OpenFile> file; ///< none for a file that is missing or that nobody may write
};

/// Removes a database with its log, journal and shared-memory file.
void RemoveDatabase(const QString& path);

/// The name under which `target` is prepared: with ".part", or with a number where something that can't be removed has
/// that name. What a killed program left under it is removed.
QString PartOf(const QString& target);

/// Renames a file over another one of the same folder; durable on return.
void Replace(const QString& path, const QString& target);

/// Renames a file to a name with ".set-aside" that no file has yet. False when that is refused.
bool RenameAside(const QString& path);

/// Copies a file byte for byte to a new name, with its time, readable by its owner only; durable on return. Raises 58
/// when the name is taken. A partial copy is removed.
void CopyFile(const QString& path, const QString& target);

/// Creates a hard link, or a copy where links aren't supported. Raises 58 when the name is taken.
void LinkFile(const QString& path, const QString& target);

/// Whether both paths lead to the same inode.
bool IsSameFile(const QString& path, const QString& other);

} // namespace host
