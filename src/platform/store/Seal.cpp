#include "platform/store/Seal.h"

#include "platform/store/Errors.h"
#include "platform/store/FileWork.h"
#include "platform/store/OldSeal.h"
#include "platform/store/SystemErrors.h"

#include <QCryptographicHash>
#include <QFile>

namespace store {
namespace {

/// Before the digest of a copy that is replaced and had no seal.
constexpr const char* Unsealed = "- ";
constexpr qint64 MostBytes = 4096;

/// The lines of a seal: one digest, or several while one copy replaces another. Empty without a seal.
QByteArrayList LinesOf(const QString& path)
{
    QFile seal(path + SealEnding);
    if (!seal.open(QIODevice::ReadOnly))
        return {};
    QByteArrayList lines = seal.read(MostBytes).split('\n');
    lines.removeAll(QByteArray());
    return lines.isEmpty() ? QByteArrayList{"?"} : lines; // an emptied seal fits nothing
}

void WriteSeal(const QString& path, const QByteArrayList& lines)
{
    const QString part = path + SealEnding + ".part";
    QFile seal(part);
    if (!seal.open(QIODevice::WriteOnly | QIODevice::Truncate) || seal.write(lines.join('\n') + '\n') < 0 ||
        !seal.flush())
        RaiseFileError(LastSystemError(), part);
    seal.close();
    Sync(part);
    Replace(part, path + SealEnding);
}

} // namespace

QByteArray DigestOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw RuntimeError(Error::FileNotFound);
    QCryptographicHash digest(QCryptographicHash::Sha1);
    constexpr qsizetype chunkBytes = 1 << 20;
    QByteArray chunk(chunkBytes, Qt::Uninitialized);
    for (qint64 length = 0; (length = file.read(chunk.data(), chunkBytes)) != 0;) {
        if (length < 0)
            throw RuntimeError(Error::DiskOrNetwork);
        digest.addData(QByteArrayView(chunk).first(length));
    }
    return digest.result().toHex();
}

SealCheck CheckSeal(const QString& path)
{
    const QByteArrayList lines = LinesOf(path);
    if (lines.isEmpty())
        return {StateByAttribute(path), {}};
    const QByteArray digest = DigestOf(path);
    const SealState state = lines.contains(digest)              ? SealState::Intact
                            : lines.contains(Unsealed + digest) ? StateByAttribute(path)
                                                                : SealState::Changed;
    return {state, digest};
}

void ReplaceSealed(const QString& path, const QString& target, const QByteArray& digest)
{
    QByteArrayList lines = LinesOf(target);
    if (lines.isEmpty() && QFile::exists(target))
        lines << Unsealed + DigestOf(target);
    lines << (digest.isEmpty() ? Unsealed + DigestOf(path) : digest);
    WriteSeal(target, lines);
    Replace(path, target);
    if (digest.isEmpty())
        RemoveFile(target + SealEnding);
    else
        WriteSeal(target, {digest});
}

void RemoveSealed(const QString& path)
{
    RemoveFile(path);
    RemoveFile(path + SealEnding);
}

} // namespace store
