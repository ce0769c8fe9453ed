#include "core/configuration.h"

#include "core/globals.h"
#include "data/ConfigurationFile.h"
#include "platform/host/Host.h"
#include "support/Files.h"
#include "support/Practice.h"
#include "support/ScriptedDesk.h"

namespace {

constexpr int RecordBytes = 84;

class Configuration : public testing::Test {
protected:
    Configuration() { core::DataFolder = practice.Folder(); }

    /// Sets a word of a record, both counted from 1.
    static void SetWord(QByteArray& content, int record, int word, qint16 value)
    {
        const qsizetype at = (record - 1) * RecordBytes + (word - 1) * 2;
        content[at] = static_cast<char>(value & 0xFF);
        content[at + 1] = static_cast<char>((value >> 8) & 0xFF);
    }

    tests::Practice practice;
    ScriptedDesk desk;
    const QString path = practice.File("ZEP_CFIG.CFG");
};

} // namespace

TEST_F(Configuration, DecodesEachFieldCutToItsWidth)
{
    QByteArray content = tests::BytesOf(path);
    for (int character = 1; character <= 35; ++character)
        SetWord(content, 39, character,
                static_cast<qint16>(7 * ('A' + character % 26) + 6)); // not a multiple of 7: truncated
    SetWord(content, 39, 42, 35 * 7);
    SetWord(content, 40, 42, 0);
    SetWord(content, 41, 42, 43 * 7); // beyond the record: skipped
    tests::WriteFile(path, content);

    core::LoadConfiguration();

    EXPECT_EQ(core::LetterheadField(1), QString("Cabinet d'Été").leftJustified(40));
    EXPECT_EQ(core::LetterheadField(3), "BCDEFGHIJKLMNOPQRSTU");
    EXPECT_EQ(core::LetterheadField(4), QString(20, ' '));
    EXPECT_EQ(core::LetterheadField(5), QString(30, ' '));
    EXPECT_EQ(core::ConfigLines[2].trimmed().size(), 35);
}

TEST_F(Configuration, WritesTheLetterheadIntoTheTexts)
{
    practice.Open();
    core::WriteTextesFromConfig();
    EXPECT_EQ(practice.Ask("select ch1 from textes").Text(), "Cabinet d'Été");
    EXPECT_EQ(practice.Ask("select ch30 from textes").Text(), "(021 00 00 00)");

    QByteArray content = tests::BytesOf(path);
    SetWord(content, 40, 42, 0);
    tests::WriteFile(path, content);
    core::LoadConfiguration();
    core::WriteTextesFromConfig();
    EXPECT_EQ(practice.Ask("select ch30 from textes").Text(), "()");

    core::TheDatabase.Execute("Delete * from textes");
    core::TextesTable = core::TheDatabase.OpenRecordset("textes");
    EXPECT_THROW(core::WriteTextesFromConfig(), basic::RuntimeError);
}
