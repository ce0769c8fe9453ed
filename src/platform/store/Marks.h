#pragma once

#include "platform/store/Sqlite.h"

namespace store {

/// Identifies one commit: each commit of this program adds a mark to a table of its own in the file, so that a file is
/// told from an older or another copy of itself by the marks that it lacks.
/// A default one stands for no commit.
struct CommitMark {
    qint64 number = 0; ///< ascending
    qint64 random = 0;
    bool operator==(const CommitMark&) const = default;
};

inline constexpr const char* MarksTable = "ZEP marks";

/// Creates the table of the marks if there is none.
void CreateMarks(sqlite3* database);
bool HasMarks(sqlite3* database);

/// Adds a mark within the present transaction, by a statement that can be used again.
Statement PrepareMark(sqlite3* database);
CommitMark AddMark(sqlite3* database, Statement& prepared);

/// No commit in a file without marks.
CommitMark NewestMark(sqlite3* database);
/// Always true for no commit.
bool HasMark(sqlite3* database, const CommitMark& mark);

/// Deletes all marks but those of the last few thousand commits, more than another program makes during one session.
void DeleteOldMarks(sqlite3* database);

} // namespace store
