#include "platform/dao/Seal.h"

#include "platform/dao/Errors.h"
#include "platform/dao/FileState.h"

#include <QFile>
#include <sys/xattr.h>
#include <xxhash.h>

#include <array>
#include <memory>

namespace dao {
namespace {

constexpr const char* Attribute = "user.zep.seal";

struct FreeState {
    void operator()(XXH3_state_t* state) const noexcept { XXH3_freeState(state); }
};

QByteArray HexOf(const XXH128_hash_t& hash)
{
    XXH128_canonical_t digest;
    XXH128_canonicalFromHash(&digest, hash);
    return QByteArray(reinterpret_cast<const char*>(digest.digest), sizeof digest.digest).toHex();
}

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
    const QByteArray header = file.read(headerBytes);
    return HexOf(XXH3_128bits(header.constData(), std::size_t(header.size())));
}

} // namespace

QByteArray DigestOf(const QString& path)
{
    QFile file(path);
    OpenToRead(file);
    const std::unique_ptr<XXH3_state_t, FreeState> state(XXH3_createState());
    XXH3_128bits_reset(state.get());
    constexpr qsizetype chunkBytes = 1 << 20;
    QByteArray chunk(chunkBytes, Qt::Uninitialized);
    for (qint64 length = 0; (length = file.read(chunk.data(), chunkBytes)) != 0;) {
        if (length < 0)
            throw RuntimeError(Error::DiskOrNetwork);
        XXH3_128bits_update(state.get(), chunk.constData(), std::size_t(length));
    }
    return HexOf(XXH3_128bits_digest(state.get()));
}

void Seal(const QString& path)
{
    const QByteArray seal = DigestOf(path) + HeaderDigestOf(path);
    ::setxattr(SystemPath(path).c_str(), Attribute, seal.constData(), std::size_t(seal.size()), 0);
}

SealState StateOfSeal(const QString& path)
{
    std::array<char, 128> bytes{};
    const ssize_t length = ::getxattr(SystemPath(path).c_str(), Attribute, bytes.data(), bytes.size());
    if (length <= 0)
        return SealState::None;
    const QByteArray seal(bytes.data(), length);
    const QByteArray digest = DigestOf(path);
    if (seal.startsWith(digest))
        return SealState::Intact;
    return seal.sliced(qMin(digest.size(), seal.size())) == HeaderDigestOf(path) ? SealState::Broken : SealState::None;
}

} // namespace dao
