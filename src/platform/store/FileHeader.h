#pragma once

#include "platform/store/Sqlite.h"

#include <QString>
#include <QtEndian>
#include <array>

namespace store {

/// What marks a database as this program's, and the newest version of its tables that this program knows.
inline constexpr int ApplicationId = 0x5A455031;
inline constexpr int SchemaVersion = 4;

/// The header in the file itself. After an interrupted checkpoint it is valid only together with the log, so a pragma
/// can't read it from the file.
struct FileHeader {
    std::array<unsigned char, 100> bytes{};

    quint32 NumberAt(std::size_t offset) const { return qFromBigEndian<quint32>(bytes.data() + offset); }
    qint64 PageSize() const { return bytes[16] == 0 && bytes[17] == 1 ? 65536 : bytes[16] << 8 | bytes[17]; }
    /// A file in this mode has no log of its own.
    bool IsInRollbackMode() const { return bytes[18] == 1; }
};

/// Reads the raw header of the file behind a connection. False when the file is shorter or can't be read.
bool ReadHeader(sqlite3* database, FileHeader& header);

/// Raises 3343 unless the file is a database of this program, and not of a newer one; 3049 when it is empty or begins
/// with zeros, as a failing disk leaves it: nothing in it is foreign.
FileHeader HeaderOf(sqlite3* immutable, const QString& name);

/// Raises 3343: the file is of a newer version of this program.
[[noreturn]] void RaiseNewer(const QString& name);

/// Raises 3049 when the file ends within a page: SQLite would read the missing part as zeros, for example as amounts.
void RequireWholePages(const FileHeader& header, const QString& path);

} // namespace store
