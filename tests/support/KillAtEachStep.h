#pragma once

#include "support/FolderInMemory.h"
#include "support/Practice.h"

#include <QStringList>

#include <functional>
#include <gtest/gtest.h>

namespace tests {

/// A piece of work on the files of a folder, and what a kill may leave of it.
struct Play {
    using Done = std::function<void()>;

    QString folder; ///< put back before each kill, and at the end, to what it was at first
    /// Does the work, or what is left to be done of it after a kill; calls `done` after each part whose result is
    /// reported to the user as saved. No database may be open before or after it.
    std::function<void(const Done& done)> work;
    /// What a user finds, in one text.
    std::function<QString()> state;
    /// The states that are allowed once so many parts were reported; by default that before the work, unless it
    /// was reported, and that after.
    std::function<QStringList(int reported)> allowed = {};
    /// What else must hold after a kill that has left this state.
    std::function<void(const QString& state)> check = {};
    /// Files with this in their path may stay, partial or damaged.
    QString mayStay = {};
};

/// Plays to the end once, then kills the process before the first step on the disk, in the middle of each write and
/// after each step. Every time the state must be allowed and every database sound; played again, the work reaches its
/// end and no partial file is left. Everything must be synced before it is renamed or reported.
///
/// The short form kills at some moments only, evenly spread: as many of each kind in each part of the work, and three
/// times as many after a file's name was changed. So does the long one where there are thousands.
void KillAtEachStep(const Play& play);

/// A practice whose work is killed.
class KilledPractice : public testing::Test {
protected:
    /// Sets the globals for it and leaves it to other processes.
    void Close();
    /// The rows of a statement after the program has opened the practice without a message, each as its fields
    /// separated by "|".
    static QString Found(const QString& statement);
    /// Kills work at each step; a statement finds its state.
    void Kill(const std::function<void(const Play::Done&)>& work, const QString& statement,
              const std::function<QStringList(int)>& allowed = {});

    FolderInMemory memory;
    Practice practice;
    const QString database = practice.File("ZEP_ONE.MDB");
};

} // namespace tests
