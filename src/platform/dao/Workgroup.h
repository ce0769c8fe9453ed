#pragma once

#include <QString>

namespace dao {

/// Raises 3028 when the workgroup file is missing or can't be read, 3029 when it holds another user or password.
void RequireAccount(const QString& path, const QString& user, const QString& password);

} // namespace dao
