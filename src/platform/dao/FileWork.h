#pragma once

#include <QString>
#include <QtGlobal>

namespace dao {

/// Raises the run-time error of a system error: 61 with the name of the folder, 70, 76 or 75.
[[noreturn]] void RaiseFileError(int systemError, const QString& path);

/// A file or folder that is open until the end of the scope. Raises as RaiseFileError does.
class OpenFile {
public:
    OpenFile(const QString& path, int flags);
    ~OpenFile();
    Q_DISABLE_COPY_MOVE(OpenFile)

    /// What was written of the file, or made in the folder, is on the disk when this returns.
    void Sync() const;

    /// Appends all of another file.
    void AppendAll(const OpenFile& from) const;

    /// Locks it unless another program has. A file system without locks counts as one on which nobody else is.
    bool TryLock() const;

private:
    QString name;
    int file;
};

/// Keeps other programs from copying into the same folder: each would take the other's half copy for one that was left
/// behind. Waits for the other one; raises 70 when it takes longer than any copy does.
class FolderLock {
public:
    explicit FolderLock(const QString& path);

private:
    OpenFile folder; // closing it lets go of the lock
};

/// The files that SQLite keeps under a database's name, the database itself included.
void RemoveDatabase(const QString& path);

/// Renames a file over another one of the same folder, and returns when that is on the disk.
void Replace(const QString& path, const QString& target);

/// Copies a file byte for byte to a new name, open to its owner alone, and returns when it is on the disk. Raises 58
/// when the name is taken. A half copy is removed.
void CopyFile(const QString& path, const QString& target);

/// Gives a file a second name without a second copy of its bytes, where the file system can; copies it otherwise.
/// Raises 58 when the name is taken.
void LinkFile(const QString& path, const QString& target);

/// Whether two names are of the same file.
bool IsSameFile(const QString& path, const QString& other);

} // namespace dao
