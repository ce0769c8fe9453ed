#pragma once

#include <QByteArray>
#include <QString>

namespace basic {

/// PBKDF2 with HMAC-SHA-256: 32 bytes that are slow to compute from a password.
QByteArray PasswordHash(const QString& password, const QByteArray& salt, int rounds);

} // namespace basic
