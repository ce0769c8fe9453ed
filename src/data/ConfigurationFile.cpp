#include "data/ConfigurationFile.h"

#include "platform/basic/RuntimeError.h"

#include <QtEndian>
#include <algorithm>
#include <limits>
#include <optional>

namespace data {
namespace {

/// The characters of codes 128 to 159. Five codes have none: they are the control character of the same number.
constexpr std::array<char16_t, 32> UpperControls{
    u'\u20AC', 0x81,      u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', 0x8D,      u'\u017D', 0x8F,
    0x90,      u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', 0x9D,      u'\u017E', u'\u0178'};
constexpr int FirstUpperControl = 128;

void SetWord(QByteArray& record, int number, qint16 word)
{
    qToLittleEndian(word, record.data() + 2 * (number - 1));
}

/// The code under which a character is stored; none when it has no code that fits a word.
std::optional<int> ConfigCode(QChar character)
{
    const auto* const upper = std::ranges::find(UpperControls, character.unicode());
    if (upper != UpperControls.end())
        return FirstUpperControl + static_cast<int>(upper - UpperControls.begin());
    const int code = character.unicode();
    const bool takenByAnother =
        code >= FirstUpperControl && code < FirstUpperControl + static_cast<int>(UpperControls.size());
    const bool fits = code * ConfigCodeFactor <= std::numeric_limits<qint16>::max();
    return fits && !takenByAnother ? std::optional(code) : std::nullopt;
}

} // namespace

qint16 ConfigWord(const QByteArray& record, int number)
{
    const qsizetype place = 2 * (number - 1);
    const auto byte = [&record](qsizetype at) {
        return at < record.size() ? static_cast<quint8>(record[at]) : quint8{0};
    };
    return static_cast<qint16>(byte(place) | byte(place + 1) << 8);
}

QChar ConfigCharacter(int code)
{
    if (code < 0)
        throw basic::RuntimeError(basic::Error::BadArgument);
    const std::size_t upper = static_cast<std::size_t>(code) - FirstUpperControl;
    if (code >= FirstUpperControl && upper < UpperControls.size())
        return UpperControls[upper];
    return static_cast<char16_t>(code);
}

QString DecodeConfigRecord(const QByteArray& record)
{
    const int length = ConfigWord(record, ConfigLengthWord) / ConfigCodeFactor;
    if (length > ConfigRecordWords)
        throw basic::RuntimeError(basic::Error::IndexOutOfRange);
    QString text;
    for (int word = 1; word <= length; ++word)
        text += ConfigCharacter(ConfigWord(record, word) / ConfigCodeFactor);
    return text;
}

QByteArray EncodeConfigRecord(const QString& text)
{
    if (text.size() > LongestConfigText)
        throw basic::RuntimeError::Described(
            basic::Error::BadArgument,
            QString("La ligne « %1 » dépasse %2 caractères.").arg(text, QString::number(LongestConfigText)));
    QByteArray record(ConfigRecordBytes, '\0');
    for (qsizetype position = 0; position < text.size(); ++position) {
        const std::optional<int> code = ConfigCode(text[position]);
        if (!code)
            throw basic::RuntimeError::Described(
                basic::Error::BadArgument,
                QString("La ligne « %1 » contient un caractère qui ne peut pas être enregistré "
                        "(le %2e).")
                    .arg(text, QString::number(position + 1)));
        SetWord(record, static_cast<int>(position) + 1, static_cast<qint16>(*code * ConfigCodeFactor));
    }
    SetWord(record, ConfigLengthWord, static_cast<qint16>(text.size() * ConfigCodeFactor));
    return record;
}

QByteArray EncodeConfiguration(const Configuration& configuration)
{
    QByteArray header(ConfigRecordBytes, '\0');
    SetWord(header, ConfigLanguageWord, configuration.language);
    SetWord(header, ConfigAccessWord, configuration.accessValue);

    QByteArray file(ConfigRecordCount * ConfigRecordBytes, '\0');
    const auto place = [](int record) { return (record - 1) * ConfigRecordBytes; };
    file.replace(place(ConfigHeaderRecord), ConfigRecordBytes, header);
    for (int field = 1; field <= LetterheadFields; ++field) {
        const QString& text = configuration.letterhead[static_cast<std::size_t>(field) - 1];
        file.replace(place(LetterheadRecord(field)), ConfigRecordBytes, EncodeConfigRecord(text));
    }
    return file;
}

} // namespace data
