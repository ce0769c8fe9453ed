#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <string>

namespace host {

/// System calls on files, databases among them; each system has a file of its own behind this header.

/// The path as SQLite and the system take it: on Windows with backslashes, in UTF-8 and of any length.
std::string SystemPath(const QString& path);

/// The part of SQLite that calls the system: the usual one, or on Windows the one for paths of any length.
extern const char* const SqliteSystem;

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

/// Whether the file or folder is writable by its own setting (mode bits, read-only attribute) as well as by our rights;
/// an administrator's would pass over the setting.
bool IsWritable(const QString& path);

/// Whether another process has the database open. Don't call it while this one has: closing the file would release the
/// locks.
bool IsOpenElsewhere(const QString& path);

/// Whether the path is on a network share.
bool IsOnShare(const QString& path);

/// The room on the disk that removing a file makes, in bytes: none while the file has another name.
qint64 RoomOf(const QString& path);

/// An extended attribute of a file; empty when it has none, always on Windows.
QByteArray AttributeOf(const QString& path, const char* name);

/// A file that is open until the end of the scope. Raises as RaiseFileError does.
class OpenFile {
public:
    enum class Access : quint8 {
        Read,
        Write,    ///< and read
        Create,   ///< write, and make the file if there is none
        CreateNew ///< raises 58 if the name is taken
    };
    OpenFile(const QString& path, Access access);
    ~OpenFile();
    Q_DISABLE_COPY_MOVE(OpenFile)

    /// Written data are durable on return.
    void Sync() const;

    /// Appends all of another file.
    void AppendAll(const OpenFile& from) const;

    /// Sets the time of the last change to that of another file.
    void SetTimeOf(const OpenFile& other) const;

    /// Takes an exclusive lock on the bytes that SQLite locks in a database unless another program holds one of them.
    /// Always succeeds on file systems without locks.
    bool TryLockDatabase() const;

private:
    QString name;
    qintptr file;
};

/// Flushes a file, or the entries of a folder, to the disk. Windows flushes entries by itself.
void Sync(const QString& path);

/// Holds a folder against other programs that do the same; it is let go of with the object. None if another one holds
/// it.
class FolderHold {
public:
    virtual ~FolderHold() = default;
};
std::unique_ptr<const FolderHold> TryToHold(const QString& folder);

/// Removes a file if there is one. Waits for a program that holds it for a moment.
void RemoveFile(const QString& path);

/// Renames a file over another one of the same folder; durable once the folder is flushed. Waits for a program that
/// holds one of them for a moment.
void RenameOver(const QString& path, const QString& target);

/// The same while the other one is held open by this program. False where that can't be.
bool TryRenameOverHeld(const QString& path, const QString& target);

/// Renames a folder, also over an empty one.
bool TryRenameFolder(const QString& path, const QString& target);

/// Makes a hard link. False where there are none; raises 58 when the name is taken.
bool TryLink(const QString& path, const QString& target);

} // namespace host
