#include "data/ConfigurationFile.h"
#include "support/Printing.h"

#include <QtEndian>
#include <gtest/gtest.h>

using namespace data;

namespace {

QByteArray Record(std::initializer_list<std::pair<int, qint16>> words)
{
    QByteArray record(ConfigRecordBytes, '\0');
    for (const auto& [number, word] : words)
        qToLittleEndian(word, record.data() + 2 * (number - 1));
    return record;
}

} // namespace

TEST(ConfigurationFile, RoundTripsTexts)
{
    for (const QString text : {"", "Cabinet du Dr D'Angelo", "Élodie Ørsted ÿ", "L’œil – 50 € … “Šž”",
                               "عيادة الدكتورة نادية", "Ħ ű Ω Я", "12345678901234567890123456789012345678901"})
        EXPECT_EQ(DecodeConfigRecord(EncodeConfigRecord(text)), text);
    // Codes below 256 are Windows-1252 and not Unicode: the euro sign is 128, the apostrophe of word processors 146.
    EXPECT_EQ(ConfigWord(EncodeConfigRecord("€’"), 1), 128 * 7);
    EXPECT_EQ(ConfigWord(EncodeConfigRecord("€’"), 2), 146 * 7);
    for (int code = 0; code <= 4681; ++code) {
        const QString text(ConfigCharacter(code));
        EXPECT_EQ(DecodeConfigRecord(EncodeConfigRecord(text)), text) << code;
    }
}

TEST(ConfigurationFile, RefusesCharactersThatDontFitAWord)
{
    for (const QString text : {"診療所", "😀", "123456789012345678901234567890123456789012"})
        EXPECT_EQ(ErrorOf([&] { EncodeConfigRecord(text); }), Error::BadArgument) << text.toStdString();
    EXPECT_EQ(ErrorOf([] { EncodeConfigRecord(QString(QChar(0x80))); }), Error::BadArgument); // 128 is the euro's code
}

TEST(ConfigurationFile, DecodesCorruptRecords)
{
    EXPECT_EQ(DecodeConfigRecord(Record({{42, 0}, {1, 'A' * 7}})), "");
    EXPECT_EQ(DecodeConfigRecord(Record({{42, 6}, {1, 'A' * 7}})), "");
    EXPECT_EQ(DecodeConfigRecord(Record({{42, -7}, {1, 'A' * 7}})), "");
    EXPECT_EQ(DecodeConfigRecord(Record({{42, 13}, {1, 'A' * 7 + 6}})), "A"); // both divisions truncate
    EXPECT_EQ(DecodeConfigRecord(Record({{42, 42 * 7}})).size(), 42);
    EXPECT_EQ(DecodeConfigRecord(Record({{42, 42 * 7}})).back(), QChar(42)); // the length word, read as a character
    EXPECT_EQ(ErrorOf([] { DecodeConfigRecord(Record({{42, 43 * 7}})); }), Error::IndexOutOfRange);
    EXPECT_EQ(ErrorOf([] { DecodeConfigRecord(Record({{42, 32767}})); }), Error::IndexOutOfRange);
    EXPECT_EQ(ErrorOf([] { DecodeConfigRecord(Record({{42, 7}, {1, -7}})); }), Error::BadArgument);
    EXPECT_EQ(DecodeConfigRecord(QByteArray(20, 'x')), ""); // a record cut short by the end of the file
    EXPECT_EQ(DecodeConfigRecord(QByteArray(83, '\xff')), QString(36, QChar(0))); // 255 / 7 characters of code -1 / 7
}

TEST(ConfigurationFile, WritesEveryFieldIntoTheBlockInUse)
{
    Configuration configuration{.language = 1, .accessValue = -3, .letterhead = {}};
    for (std::size_t field = 0; field < configuration.letterhead.size(); ++field)
        configuration.letterhead[field] = QString("champ %1").arg(field + 1);
    const QByteArray file = EncodeConfiguration(configuration);

    ASSERT_EQ(file.size(), 52 * 84);
    EXPECT_EQ(DecodeConfigRecord(file.mid(36 * 84, 84)), "champ 1");
    EXPECT_EQ(DecodeConfigRecord(file.mid(51 * 84, 84)), "champ 16");
    EXPECT_EQ(ConfigWord(file.mid(3 * 84, 84), 5), 1);
    EXPECT_EQ(static_cast<qint8>(file[3 * 84 + 22]), -3); // word 12 is at byte 22
    EXPECT_EQ(ConfigWord(file.mid(3 * 84, 84), 12), -3);
}
