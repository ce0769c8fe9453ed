#include "platform/dao/Workgroup.h"

#include "platform/basic/RuntimeError.h"
#include "platform/dao/Engine.h"

#include <QCryptographicHash>
#include <QFile>
#include <QPasswordDigestor>
#include <QRandomGenerator>
#include <QSaveFile>

namespace dao {
namespace {

constexpr const char* mark = "practice workgroup 1";
constexpr int rounds = 20000;
constexpr int mostRounds = 1000000;
constexpr int saltSize = 16;
constexpr int hashSize = 32;
constexpr qint64 mostBytes = 4096;

QByteArray Hash(const QString& password, const QByteArray& salt, int times)
{
    return QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, password.toUtf8(), salt, times, hashSize);
}

QByteArray NewSalt()
{
    QByteArray salt(saltSize, '\0');
    for (char& byte : salt)
        byte = char(QRandomGenerator::system()->bounded(256));
    return salt;
}

} // namespace

// The file is five lines of text: mark, user, rounds, salt and hash, the last two in hexadecimal figures.
void WriteWorkgroup(const QString& path, const QString& user, const QString& password)
{
    const QByteArray salt = NewSalt();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw basic::RuntimeError(basic::Error::PathAccess);
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    const QByteArrayList lines = {mark, user.toUtf8(), QByteArray::number(rounds), salt.toHex(),
                                  Hash(password, salt, rounds).toHex()};
    file.write(lines.join('\n') + '\n');
    if (!file.commit())
        throw basic::RuntimeError(basic::Error::PathAccess);
}

void RequireAccount(const QString& path, const QString& user, const QString& password)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw basic::RuntimeError(basic::Error::UnreadableWorkgroup);
    const QByteArrayList lines = file.read(mostBytes).split('\n');
    constexpr int lineCount = 6; // the last one is empty
    if (lines.size() != lineCount || lines[0] != mark)
        throw basic::RuntimeError(basic::Error::UnreadableWorkgroup);
    const int times = lines[2].toInt();
    const QByteArray salt = QByteArray::fromHex(lines[3]);
    const QByteArray hash = QByteArray::fromHex(lines[4]);
    if (times < 1 || times > mostRounds || salt.isEmpty() || hash.size() != hashSize)
        throw basic::RuntimeError(basic::Error::UnreadableWorkgroup);

    const bool sameUser = QString::fromUtf8(lines[1]).compare(user, Qt::CaseInsensitive) == 0;
    if (!sameUser || Hash(password, salt, times) != hash)
        throw basic::RuntimeError(basic::Error::AccountRefused);
}

} // namespace dao
