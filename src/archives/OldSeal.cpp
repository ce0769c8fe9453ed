#include "archives/OldSeal.h"

#include "platform/basic/RuntimeError.h"
#include "platform/host/SystemFile.h"

#include <QFile>
#include <QtEndian>

#include <array>

namespace archives {
namespace {

constexpr const char* Attribute = "user.zep.seal";
constexpr qsizetype DigestDigits = 32;

constexpr qint64 StripeBytes = 64;
constexpr qint64 BlockBytes = 1024;
constexpr qint64 SmallestPage = 512;

constexpr quint64 Prime32[] = {0x9E3779B1, 0x85EBCA77, 0xC2B2AE3D};
constexpr quint64 Prime64[] = {0x9E3779B185EBCA87, 0xC2B2AE3D27D4EB4F, 0x165667B19E3779F9, 0x85EBCA77C2B2AE63,
                               0x27D4EB2F165667C5};
__extension__ using Product = unsigned __int128;

constexpr quint64 MixPrime = 0x165667919E3779F9;

/// The algorithm's default secret of 192 bytes.
const QByteArray Secret = QByteArray::fromHex(
    "b8fe6c3923a44bbe7c01812cf721ad1cded46de9839097db7240a4a4b7b3671fcb79e64eccc0e578825ad07dccff7221"
    "b8084674f743248ee03590e6813a264c3c2852bb91c300cb88d0658b1b532ea371644897a20df94e3819ef46a9deacd8"
    "a8fa763fe39c343ff9dcbbc7c70b4f1d8a51e04bcdb45931c89f7ec9d9787364eac5ac8334d3ebc3c581a0fffa1363eb"
    "170ddd51b7f0da49d316552629d4689e2b16be587d47a1fc8ff8b8d17ad031ce45cb3a8f95160428afd7fbcabb4b407e");

quint64 WordOf(QByteArrayView bytes, qsizetype at)
{
    return qFromLittleEndian<quint64>(bytes.sliced(at, sizeof(quint64)).data());
}

/// XXH3 for inputs of more than 240 bytes.
class LongDigest {
public:
    void AddBlock(QByteArrayView block)
    {
        AddStripes(block);
        for (std::size_t i = 0; i < sums.size(); ++i) {
            sums[i] ^= sums[i] >> 47;
            sums[i] ^= WordOf(Secret, Secret.size() - StripeBytes + qsizetype(i) * 8);
            sums[i] *= Prime32[0];
        }
    }

    /// `block`: the last one, which may be shorter.
    QByteArray End(QByteArrayView block, qint64 size)
    {
        AddStripes(block.first((block.size() - 1) / StripeBytes * StripeBytes));
        AddStripe(block.last(StripeBytes), Secret.size() - StripeBytes - 7);
        const quint64 low = Merge(11, quint64(size) * Prime64[0]);
        const quint64 high = Merge(Secret.size() - StripeBytes - 11, ~(quint64(size) * Prime64[1]));
        const std::array<quint64, 2> words{qToBigEndian(high), qToBigEndian(low)};
        return QByteArray(reinterpret_cast<const char*>(words.data()), sizeof words).toHex();
    }

private:
    void AddStripes(QByteArrayView bytes)
    {
        for (qsizetype at = 0; at < bytes.size(); at += StripeBytes)
            AddStripe(bytes.sliced(at, StripeBytes), at / 8);
    }

    void AddStripe(QByteArrayView stripe, qsizetype secretAt)
    {
        for (std::size_t i = 0; i < sums.size(); ++i) {
            const quint64 word = WordOf(stripe, qsizetype(i) * 8);
            const quint64 key = word ^ WordOf(Secret, secretAt + qsizetype(i) * 8);
            sums[i ^ 1] += word;
            sums[i] += quint64(quint32(key)) * (key >> 32);
        }
    }

    quint64 Merge(qsizetype secretAt, quint64 start) const
    {
        for (std::size_t i = 0; i < sums.size(); i += 2) {
            const auto keyed = [&](std::size_t at) { return sums[at] ^ WordOf(Secret, secretAt + qsizetype(at) * 8); };
            const auto product = Product(keyed(i)) * keyed(i + 1);
            start += quint64(product) ^ quint64(product >> 64);
        }
        start ^= start >> 37;
        start *= MixPrime;
        return start ^ (start >> 32);
    }

    std::array<quint64, 8> sums{Prime32[2], Prime64[0], Prime64[1], Prime64[2],
                                Prime64[3], Prime32[1], Prime64[4], Prime32[0]};
};

} // namespace

QByteArray PagesDigestOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw basic::RuntimeError(basic::Error::FileNotFound);
    const qint64 size = file.size();
    if (size == 0 || size % SmallestPage != 0)
        return {};
    LongDigest digest;
    const auto read = [&] {
        const QByteArray block = file.read(BlockBytes);
        if (block.size() != qMin(BlockBytes, size - file.pos() + block.size()))
            throw basic::RuntimeError(basic::Error::DiskOrNetwork);
        return block;
    };
    for (qint64 left = size; left > BlockBytes; left -= BlockBytes)
        digest.AddBlock(read());
    return digest.End(read(), size);
}

SealState StateByAttribute(const QString& path)
{
    const QByteArray seal = host::AttributeOf(path, Attribute);
    if (seal.isEmpty())
        return SealState::None;
    return seal.first(qMin(DigestDigits, seal.size())) == PagesDigestOf(path) ? SealState::Intact : SealState::Changed;
}

} // namespace archives
