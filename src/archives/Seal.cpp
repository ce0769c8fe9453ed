#include "archives/Seal.h"

#include "archives/OldSeal.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "platform/host/SystemErrors.h"

#include <QCryptographicHash>
#include <QFile>

namespace archives {
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
        host::RaiseFileError(host::LastSystemError(), part);
    seal.close();
    host::Sync(part);
    host::Replace(part, path + SealEnding);
}

} // namespace

QByteArray DigestOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        throw basic::RuntimeError(basic::Error::FileNotFound);
    QCryptographicHash digest(QCryptographicHash::Sha1);
    constexpr qsizetype chunkBytes = 1 << 20;
    QByteArray chunk(chunkBytes, Qt::Uninitialized);
    for (qint64 length = 0; (length = file.read(chunk.data(), chunkBytes)) != 0;) {
        if (length < 0)
            throw basic::RuntimeError(basic::Error::DiskOrNetwork);
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
    host::Replace(path, target);
    if (digest.isEmpty())
        host::RemoveFile(target + SealEnding);
    else
        WriteSeal(target, {digest});
}

void RemoveSealed(const QString& path)
{
    host::RemoveFile(path);
    host::RemoveFile(path + SealEnding);
}

} // namespace archives
