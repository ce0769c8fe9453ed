#pragma once

#include "platform/host/SystemFile.h"
#include "platform/store/Marks.h"

namespace store {

/// The file behind an open database. While it lives the file counts as open in this program.
///
/// A copy that is put over the file (same inode) is recognised by the marks of commits: the file must contain every
/// mark that a checkpoint is known to have written, and nothing that wasn't committed through the log. What other
/// programs commit meanwhile is accepted.
class OpenedFile {
public:
    OpenedFile(sqlite3* opened, const QString& path);
    ~OpenedFile();
    Q_DISABLE_COPY_MOVE(OpenedFile)

    /// Whether the path still leads to the opened file and no copy was put over it. Reads only the file's times unless
    /// the file was written since it was last looked at.
    bool IsInPlace();

    bool IsHeldAlone() const { return isHeldAlone; }

    /// Adds a mark to a transaction that is about to be committed; Committed notes it.
    void AddMark();
    void Committed();
    /// Call after a checkpoint of this connection.
    void Checkpointed() noexcept;

private:
    enum class Content : quint8 { Known, Other, Unreadable };
    Content Compare();
    bool IsSoundWithItsLog();
    qint64 CommitsOfOthers() const;

    sqlite3* database;
    QString path;
    bool hasMarks = false;
    bool isHeldAlone = false;    ///< no other connection can read the log
    host::FileIdentity identity; ///< as last looked at
    qint64 lookedAt = 0;         ///< nanoseconds
    Statement addition;          ///< of a mark
    CommitMark known;            ///< the newest committed mark that was written or seen
    CommitMark added;            ///< of the transaction that is open
    CommitMark checkpointed;     ///< the newest one in the file itself, without its log
    qint64 commitsOfOthers = 0;
};

} // namespace store
