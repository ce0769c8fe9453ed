#include "platform/store/OpenedFile.h"

#include "platform/store/DamageCheck.h"
#include "platform/store/Errors.h"
#include "platform/store/FileHeader.h"
#include "platform/store/FileState.h"
#include "platform/store/Hardened.h"

#include <QDateTime>
#include <QThread>

namespace store {
namespace {

/// Times of files are no finer than a tick of the system's clock: a file written later within it looks the same.
constexpr qint64 TickOfFileTimes = 10'000'000; // nanoseconds

qint64 Now()
{
    return QDateTime::currentMSecsSinceEpoch() * 1'000'000;
}

/// The newest mark in the file itself, without its log.
CommitMark NewestMarkInFile(const QString& path)
{
    return NewestMark(OpenHardened(path, Access::Immutable).get());
}

} // namespace

OpenedFile::OpenedFile(sqlite3* opened, const QString& openedPath) : database(opened), path(openedPath)
{
    NoteOpened(path);
    identity = host::IdentityOf(path);
    hasMarks = HasMarks(database);
    isHeldAlone = TextAnswer(database, "pragma locking_mode") == "exclusive";
    if (!hasMarks)
        return;
    commitsOfOthers = CommitsOfOthers();
    known = NewestMark(database);
    Checkpointed();
}

OpenedFile::~OpenedFile()
{
    NoteClosed(path);
}

void OpenedFile::AddMark()
{
    if (!hasMarks)
        return;
    if (!addition)
        addition = PrepareMark(database);
    added = store::AddMark(database, addition);
}

void OpenedFile::Committed()
{
    if (hasMarks)
        known = added;
}

void OpenedFile::Checkpointed() noexcept
{
    try {
        if (hasMarks)
            checkpointed = NewestMarkInFile(path);
    } catch (const RuntimeError&) {
        // Another program is in the middle of a checkpoint: what is known of an earlier one still holds.
    }
}

qint64 OpenedFile::CommitsOfOthers() const
{
    return WholeAnswer(database, "pragma data_version");
}

bool OpenedFile::IsInPlace()
{
    constexpr int mostTries = 500;
    constexpr int tries = 3;  // of a file that nobody is writing
    constexpr int pause = 10; // ms
    for (int attempt = 1;; ++attempt) {
        const qint64 now = Now();
        const host::FileIdentity present = host::IdentityOf(path);
        if (!present.IsSameFile(identity))
            return false;
        const bool isUnchanged = present == identity && present.changed < lookedAt - TickOfFileTimes;
        if (!hasMarks || isUnchanged)
            return true;
        const Content content = Compare();
        const bool isLastTry = attempt >= mostTries || (attempt >= tries && host::IdentityOf(path) == present);
        if (content == Content::Known || (isLastTry && content == Content::Unreadable && IsSoundWithItsLog())) {
            identity = present;
            lookedAt = now;
            return true;
        }
        // Another program may be in the middle of a checkpoint.
        if (isLastTry)
            return false;
        QThread::msleep(pause);
    }
}

/// Reads the file with and without its log, by connections that have nothing cached unless the file is held alone.
OpenedFile::Content OpenedFile::Compare()
{
    try {
        const SqliteHandle alone = OpenHardened(path, Access::Immutable);
        const SqliteHandle another = isHeldAlone ? nullptr : OpenHardened(path, Access::Read);
        sqlite3* const withLog = isHeldAlone ? database : another.get();
        FileHeader header;
        const CommitMark newestAlone = NewestMark(alone.get());
        const CommitMark newest = NewestMark(withLog);
        const qint64 commits = CommitsOfOthers();
        const bool isKnown = ReadHeader(alone.get(), header) && !header.IsInRollbackMode() &&
                             HasMark(alone.get(), checkpointed) && // no older copy
                             HasMark(withLog, newestAlone) &&      // nothing that wasn't committed through the log
                             HasMark(withLog, known) &&            // every commit that this program knows of
                             (newest == known || commits != commitsOfOthers); // a newer one is another program's
        if (!isKnown)
            return Content::Other;
        known = newest;
        checkpointed = newestAlone;
        commitsOfOthers = commits;
        return Content::Known;
    } catch (const RuntimeError&) {
        return Content::Unreadable;
    }
}

/// A program that is killed in a checkpoint leaves a file that only its log completes. All pages are checked, since a
/// file that was half overwritten can't be read either.
bool OpenedFile::IsSoundWithItsLog()
{
    try {
        if (isHeldAlone)
            return false; // no other program makes checkpoints
        const SqliteHandle withLog = OpenHardened(path, Access::Read);
        if (!HasMark(withLog.get(), known) || !FirstDamage(withLog.get(), Thoroughness::Indexes).isEmpty())
            return false;
        known = NewestMark(withLog.get());
        commitsOfOthers = CommitsOfOthers();
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

} // namespace store
