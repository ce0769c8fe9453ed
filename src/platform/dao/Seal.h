#pragma once

#include <QByteArray>
#include <QString>

namespace dao {

/// A copy that was checked whole is sealed: the digests of its bytes and of its header are kept in an extended
/// attribute of the file, which renames and hard links keep. The seal tells whether the file is still what was checked,
/// in a tenth of the time of that check and down to the last letter of a name. It tells damage and not forgery. A file
/// system without extended attributes keeps no seals.
enum class SealState {
    None,   ///< never sealed, or another database was written over it
    Intact, ///< byte for byte what was sealed
    Broken  ///< damaged since: other bytes under the same header, which every change by a program renews
};

/// The digest of the bytes of a file. Raises 53 when it can't be opened, 3043 when it can't be read.
QByteArray DigestOf(const QString& path);

/// Seals a file; nothing happens where that isn't possible.
void Seal(const QString& path);

SealState StateOfSeal(const QString& path);

} // namespace dao
