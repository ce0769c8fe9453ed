#pragma once

#include "data/Archives.h"

#include <QString>

namespace practice {

/// The copy that a user names: a path, the name of a file in "ARCHIVES", or a day (2026-11-23 or 23/11/2026). Raises 53
/// with the copies that there are when none is so named.
data::ArchivedCopy CopyNamed(const QString& folder, const QString& text);

/// Raises 76 unless the folder is there and 53 unless it holds a practice.
void RequirePractice(const QString& folder);

} // namespace practice
