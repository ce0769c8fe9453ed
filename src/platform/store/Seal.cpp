#include "platform/store/Seal.h"

#include "platform/store/Errors.h"
#include "platform/store/FileWork.h"

#include <QCryptographicHash>
#include <QFile>

namespace store {
namespace {

constexpr const char* Attribute = "user.zep.seal";

void OpenToRead(QFile& file)
{
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw RuntimeError(Error::FileNotFound);
}

QByteArray HeaderDigestOf(const QString& path)
{
    constexpr qint64 headerBytes = 100;
    QFile file(path);
    OpenToRead(file);
    return QCryptographicHash::hash(file.read(headerBytes), QCryptographicHash::Sha1).toHex();
}

} // namespace

QByteArray DigestOf(const QString& path)
{
    QFile file(path);
    OpenToRead(file);
    QCryptographicHash digest(QCryptographicHash::Sha1);
    if (!digest.addData(&file))
        throw RuntimeError(Error::DiskOrNetwork);
    return digest.result().toHex();
}

void SealCopy(const QString& path)
{
    SetAttribute(path, Attribute, DigestOf(path) + HeaderDigestOf(path));
}

SealState StateOfSeal(const QString& path)
{
    const QByteArray seal = AttributeOf(path, Attribute);
    if (seal.isEmpty())
        return SealState::None;
    const QByteArray digest = DigestOf(path);
    if (seal.startsWith(digest))
        return SealState::Intact;
    return seal.sliced(qMin(digest.size(), seal.size())) == HeaderDigestOf(path) ? SealState::Broken : SealState::None;
}

} // namespace store
