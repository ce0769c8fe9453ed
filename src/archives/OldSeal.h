#pragma once

#include "archives/Seal.h"

namespace archives {

/// The state by the seal of earlier versions: an extended attribute of the copy, its XXH3 digest of 128 bits. Copies
/// made by them keep it; new ones have a file beside them. Raises what `DigestOf` raises.
SealState StateByAttribute(const QString& path);

/// The XXH3 digest of 128 bits of a file of whole database pages, in hexadecimal digits; empty for any other file.
QByteArray PagesDigestOf(const QString& path);

} // namespace archives
