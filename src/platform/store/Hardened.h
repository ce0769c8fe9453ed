#pragma once

#include "platform/store/Sqlite.h"

#include <QString>

namespace store {

/// How long to wait for the lock of another process before error 3187, in milliseconds.
inline constexpr int UsualPatience = 5000;

/// The ways to open a database file.
enum class Access : quint8 {
    Immutable, ///< without locks and without its log; creates nothing beside it
    Shared,    ///< through the read marks of the programs that have it open; raises 3027 when none of them fits
    Read,
    Write,
    Create ///< makes the file if there is none
};

/// Opens a hardened connection (defensive, untrusted schema): nothing stored in the file can run code.
///
/// Don't open a database with open(2) while this program has it open: closing that descriptor would release the locks.
SqliteHandle OpenHardened(const QString& path, Access access, int patience = UsualPatience);

/// Whether the path leads to another file by now than the connection has open.
bool IsMoved(sqlite3* database);

/// Whether closing the connection leaves log and file as they are.
void KeepLogAtClose(sqlite3* database, bool keeps);

} // namespace store
