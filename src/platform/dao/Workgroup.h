#pragma once

#include <QString>

namespace dao {

/// Raises 3028 when the workgroup file is missing or unreadable, 3029 for a wrong user or password.
void RequireAccount(const QString& path, const QString& user, const QString& password);

} // namespace dao
