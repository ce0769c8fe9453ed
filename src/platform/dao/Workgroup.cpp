#include "platform/dao/Workgroup.h"

#include "platform/basic/PasswordHash.h"
#include "platform/basic/RuntimeError.h"

#include <QFile>
#include <QRandomGenerator>
#include <QSaveFile>

namespace dao {
namespace {

constexpr const char* FileMark = "practice workgroup 1";
/// Few, since the password is built into the program: more would only slow each opening down.
constexpr int HashRounds = 1000;
constexpr int MostRounds = 1000000;
constexpr int SaltSize = 16;
constexpr int HashSize = 32;
constexpr qint64 MostBytes = 4096;

QByteArray NewSalt()
{
    QByteArray salt(SaltSize, '\0');
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
    const QByteArrayList lines = {FileMark, user.toUtf8(), QByteArray::number(HashRounds), salt.toHex(),
                                  basic::PasswordHash(password, salt, HashRounds).toHex()};
    file.write(lines.join('\n') + '\n');
    if (!file.commit())
        throw basic::RuntimeError(basic::Error::PathAccess);
}

void RequireAccount(const QString& path, const QString& user, const QString& password)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw basic::RuntimeError(basic::Error::UnreadableWorkgroup);
    const QByteArrayList lines = file.read(MostBytes).split('\n');
    constexpr int lineCount = 6; // including an empty last one
    if (lines.size() != lineCount || lines[0] != FileMark)
        throw basic::RuntimeError(basic::Error::UnreadableWorkgroup);
    const int times = lines[2].toInt();
    const QByteArray salt = QByteArray::fromHex(lines[3]);
    const QByteArray hash = QByteArray::fromHex(lines[4]);
    if (times < 1 || times > MostRounds || salt.isEmpty() || hash.size() != HashSize)
        throw basic::RuntimeError(basic::Error::UnreadableWorkgroup);

    const bool sameUser = QString::fromUtf8(lines[1]).compare(user, Qt::CaseInsensitive) == 0;
    if (!sameUser || basic::PasswordHash(password, salt, times) != hash)
        throw basic::RuntimeError(basic::Error::AccountRefused);
}

} // namespace dao
