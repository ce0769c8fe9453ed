#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <string>

namespace store {

/// File operations that Qt lacks. All system calls of this module are in FileWork.cpp.

/// The path in the system's encoding.
std::string SystemPath(const QString& path);

/// What distinguishes a file from another one put in its place, and from itself before a change.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modified = 0; ///< nanoseconds
    qint64 changed = 0;  ///< nanoseconds: of content, name or rights; no program can set it
    bool operator==(const FileIdentity&) const = default;
    bool IsSameFile(const FileIdentity& other) const { return device == other.device && inode == other.inode; }
};
/// All zero when there is no such file.
FileIdentity IdentityOf(const QString& path);

/// Whether the file or folder is writable by its mode bits as well as by our rights; root would ignore the mode bits.
bool IsWritable(const QString& path);

/// Whether another process has the database open. Don't call it while this one has: closing the file would release the
/// locks.
bool IsOpenElsewhere(const QString& path);

/// The room on the disk that removing a file makes, in bytes: none while the file has another name.
qint64 RoomOf(const QString& path);

/// Raises the run-time error of a system error: 61 with the name of the folder, 70, 76 or 75.
[[noreturn]] void RaiseFileError(int systemError, const QString& path);

/// A file or folder that is open until the end of the scope. Raises as RaiseFileError does.
class OpenFile {
public:
    OpenFile(const QString& path, int flags);
    ~OpenFile();
    Q_DISABLE_COPY_MOVE(OpenFile)

    /// fsync: written data, or new entries of a folder, are durable on return.
    void Sync() const;

    /// Appends all of another file.
    void AppendAll(const OpenFile& from) const;

    /// Sets the time of the last change to that of another file.
    void SetTimeOf(const OpenFile& other) const;

    /// Takes an exclusive lock unless another program holds it. Always succeeds on file systems without locks.
    bool TryLock() const;

    /// The same for the bytes that SQLite locks in a database.
    bool TryLockDatabase() const;

private:
    QString name;
    int file;
};

/// Flushes a file, or the entries of a folder, to the disk.
void Sync(const QString& path);

/// Prevents concurrent copies into one folder, each of which would remove the other's partial file. Waits for the other
/// one; raises 70 when that takes longer than any copy does.
class FolderLock {
public:
    enum class Wait : quint8 { No, Yes };
    explicit FolderLock(const QString& path, Wait wait = Wait::Yes);

private:
    OpenFile folder; // closing it lets go of the lock
};

/// Holds the locks of a database file: no program can begin to read or write it, and one that tries waits. Raises 3187
/// when one has it open.
class DatabaseHold {
public:
    explicit DatabaseHold(const QString& path);

private:
    std::optional<OpenFile> file; ///< none for a file that nobody may write
};

/// Removes a database with its log, journal and shared-memory file.
void RemoveDatabase(const QString& path);

/// The name under which `target` is prepared: with ".part", or with a number where something that can't be removed has
/// that name. What a killed program left under it is removed.
QString PartOf(const QString& target);

/// Renames a file over another one of the same folder; durable on return.
void Replace(const QString& path, const QString& target);

/// Copies a file byte for byte to a new name, with its time, readable by its owner only; durable on return. Raises 58
/// when the name is taken. A partial copy is removed.
void CopyFile(const QString& path, const QString& target);

/// Creates a hard link, or a copy where links aren't supported. Raises 58 when the name is taken.
void LinkFile(const QString& path, const QString& target);

/// Whether both paths lead to the same inode.
bool IsSameFile(const QString& path, const QString& other);

} // namespace store
