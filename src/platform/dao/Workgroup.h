#pragma once

#include <QString>

namespace dao {

/// Creates or replaces the workgroup file: the user and a salted hash of the password.
void WriteWorkgroup(const QString& path, const QString& user, const QString& password);

/// Raises 3028 when the workgroup file is missing or unreadable, 3029 for a wrong user or password.
void RequireAccount(const QString& path, const QString& user, const QString& password);

} // namespace dao
