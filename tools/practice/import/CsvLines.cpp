#include "practice/import/CsvLines.h"

#include "platform/basic/RuntimeError.h"

#include <QStringDecoder>
#include <algorithm>

namespace practice {
namespace {

constexpr qsizetype BlockBytes = qsizetype{1} << 16;

} // namespace

bool CsvLines::Next()
{
    const qsizetype end = FindEnd();
    line = QByteArrayView(buffer).sliced(start, end - start);
    start = end;
    number += line.isEmpty() ? 0 : 1;
    return !line.isEmpty();
}

/// Finds the end of the line that begins at `start`, reading on as far as needed.
qsizetype CsvLines::FindEnd()
{
    const auto isEnd = [](char byte) { return byte == '\n' || byte == '\r'; };
    qsizetype at = start;
    for (;;) {
        at = std::find_if(buffer.cbegin() + at, buffer.cend(), isEnd) - buffer.cbegin();
        // A CR at the end of the buffer may be the first half of a CR LF.
        if (at + 1 < buffer.size() || (at < buffer.size() && buffer.at(at) == '\n'))
            break;
        at -= start; // ReadOn moves the line to the beginning of the buffer
        if (!ReadOn())
            break;
    }
    if (at == buffer.size())
        return at;
    return at + (buffer.at(at) == '\r' && at + 1 < buffer.size() && buffer.at(at + 1) == '\n' ? 2 : 1);
}

/// Removes the lines already read and appends a block; false at the end of the file.
bool CsvLines::ReadOn()
{
    buffer.remove(0, start);
    start = 0;
    if (buffer.size() > LongestCsvRow)
        throw basic::RuntimeError::Described(
            basic::Error::BadArgument,
            QString("Ligne %1 : plus d'un mégaoctet sans fin de ligne ; ce n'est pas un fichier CSV.").arg(number + 1));
    const QByteArray block = file.read(BlockBytes);
    buffer += block;
    return !block.isEmpty();
}

qint64 CountLines(QIODevice& file)
{
    qint64 feeds = 0;
    qint64 returns = 0;
    for (QByteArray block = file.read(BlockBytes); !block.isEmpty(); block = file.read(BlockBytes)) {
        feeds += block.count('\n');
        returns += block.count('\r');
    }
    file.seek(0);
    return std::max(feeds, returns);
}

CsvEncoding EncodingOf(QIODevice& file)
{
    constexpr char16_t lastAscii = 0x7F;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    qint64 good = 0;
    qint64 bad = 0;
    bool hasMark = false;
    while (!file.atEnd()) {
        const QByteArray block = file.read(BlockBytes);
        if (block.isEmpty())
            break;
        const QString text = utf8(block);
        hasMark = hasMark || (good + bad == 0 && text.startsWith(QChar::ByteOrderMark));
        for (const QChar character : text) {
            bad += character == QChar::ReplacementCharacter;
            good += character.unicode() > lastAscii && character != QChar::ReplacementCharacter;
        }
    }
    file.seek(0);
    return utf8.hasError() && bad > good && !hasMark ? CsvEncoding::Windows1252 : CsvEncoding::Utf8;
}

} // namespace practice
