#include "platform/basic/PasswordHash.h"

#include <QCryptographicHash>
#include <QMessageAuthenticationCode>

#include <algorithm>

namespace basic {

QByteArray PasswordHash(const QString& password, const QByteArray& salt, int rounds)
{
    constexpr QByteArrayView firstBlock("\0\0\0\1", 4); // whose hash is as long as the result
    QMessageAuthenticationCode code(QCryptographicHash::Sha256, password.toUtf8());
    code.addData(salt);
    code.addData(firstBlock.data(), firstBlock.size());
    QByteArray part = code.result();
    QByteArray hash = part;
    for (int round = 1; round < rounds; ++round) {
        code.reset();
        code.addData(part);
        part = code.result();
        std::ranges::transform(hash, part, hash.begin(), [](char left, char right) { return char(left ^ right); });
    }
    return hash;
}

} // namespace basic
