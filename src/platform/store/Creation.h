#pragma once

#include <QString>

namespace store {

/// Creates an empty database of this program from the statements of `schema`, readable by its owner only. On failure no
/// file is left. Raises 3204 when the file exists, 76 when the folder is missing.
void CreateDatabase(const QString& path, const QString& schema);

} // namespace store
