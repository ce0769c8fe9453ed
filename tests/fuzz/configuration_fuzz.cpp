// Arbitrary bytes as the configuration file of a practice: reading never fails, and every text has its width.
#include "core/configuration.h"
#include "core/globals.h"
#include "data/ConfigurationFile.h"
#include "fuzz/Fuzz.h"
#include "platform/basic/RuntimeError.h"

#include <QStringList>
#include <optional>

using fuzz::Require;

namespace {

constexpr qsizetype FileBytes = qsizetype{data::ConfigRecordCount} * data::ConfigRecordBytes;
constexpr qsizetype ConfigLineWidth = 40;

/// The state after reading, as text.
QStringList Taken(const QByteArray& content)
{
    core::TakeConfiguration(content);
    QStringList taken{QString::number(int{core::LanguageMode}), QString::number(int{core::StoredAccessValue()})};
    for (int field = 1; field <= data::LetterheadFields; ++field)
        taken << core::LetterheadField(field) << core::ConfigLines[static_cast<std::size_t>(field) - 1];
    return taken;
}

void CheckHeader(const QByteArray& content)
{
    const auto byte = [&](qsizetype at) { return at < content.size() ? std::uint8_t(content[at]) : 0; };
    const auto word = [&](int number) {
        const qsizetype at = 3 * 84 + 2 * (number - 1);
        return std::int16_t(byte(at) + 256 * byte(at + 1));
    };
    Require(int{core::LanguageMode} == (word(5) == 1 ? 1 : -1), "the language is 1 or the usual one");
    Require(int{core::StoredAccessValue()} == word(12), "the access value is that of the file");
}

void CheckWidths()
{
    for (int field = 1; field <= data::LetterheadFields; ++field) {
        const qsizetype width = data::LetterheadWidths[static_cast<std::size_t>(field) - 1];
        const QString stored = core::LetterheadField(field);
        Require(stored.size() == width, "a field fills its width", stored);
        Require(core::ConfigLines[static_cast<std::size_t>(field) - 1].size() == ConfigLineWidth,
                "a line fills its width");
        const QString trimmed = core::TrimLetterheadField(field);
        Require(core::LetterheadField(field) == trimmed.leftJustified(width), "trimming stores the text back");
        Require(core::TrimLetterheadField(field) == trimmed, "trimming twice changes nothing");
    }
}

/// The text of a record; none if it can't be decoded.
std::optional<QString> Decoded(const QByteArray& record)
{
    try {
        return data::DecodeConfigRecord(record);
    } catch (const basic::RuntimeError& error) {
        Require(error.Code() == basic::Error::BadArgument || error.Code() == basic::Error::IndexOutOfRange,
                "a record is refused with 5 or 9", error.Description());
        return {};
    }
}

/// The file as written again from its own texts.
data::Configuration WrittenAnew(const QByteArray& content)
{
    data::Configuration anew;
    anew.language = static_cast<qint16>(int{core::LanguageMode});
    anew.accessValue = static_cast<qint16>(int{core::StoredAccessValue()});
    for (int field = 1; field <= data::LetterheadFields; ++field) {
        const qsizetype place = qsizetype{data::LetterheadRecord(field) - 1} * data::ConfigRecordBytes;
        const std::optional<QString> text = Decoded(content.mid(place, data::ConfigRecordBytes));
        Require(!text || text->size() <= data::ConfigRecordWords, "a text is no longer than its record");
        if (text && text->size() <= data::LongestConfigText)
            anew.letterhead[static_cast<std::size_t>(field) - 1] = *text;
        else // the length read as a character, or unreadable
            anew.letterhead[static_cast<std::size_t>(field) - 1] =
                core::ConfigLines[static_cast<std::size_t>(field) - 1];
    }
    return anew;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QByteArray content(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size));
    const QStringList taken = Taken(content);
    CheckHeader(content);
    Require(Taken(content.leftJustified(FileBytes, '\0', true)) == taken, "what is missing counts as 0");
    Require(Taken(data::EncodeConfiguration(WrittenAnew(content))) == taken, "what was read can be written and read");
    CheckWidths();
    return 0;
}
