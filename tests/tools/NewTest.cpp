#include "data/Practice.h"
#include "tools/PracticeCommand.h"

TEST(Set, ChangesOnlyWhatIsGiven)
{
    const NewPractice practice;
    const QString path = practice.Folder() + "/ZEP_CFIG.CFG";
    const QByteArray before = BytesOf(path);
    const auto record = [&path](int number) { return BytesOf(path).mid((number - 1) * 84, 84); };

    ASSERT_EQ(CommandRun({"set", practice.Folder(), "--language", "ar"}).code, 0);
    EXPECT_EQ(data::ConfigWord(record(4), data::ConfigLanguageWord), 1);
    ASSERT_EQ(CommandRun({"set", practice.Folder(), "--language", "fr"}).code, 0);
    EXPECT_EQ(BytesOf(path), before);

    ASSERT_EQ(CommandRun({"set", practice.Folder(), "--code", "-010"}).code, 0);
    EXPECT_EQ(data::ConfigWord(record(4), data::ConfigAccessWord), -5) << "not read as octal";
    ASSERT_EQ(CommandRun({"set", practice.Folder(), "--code", "2468"}).code, 0);
    EXPECT_EQ(BytesOf(path), before);

    ASSERT_EQ(CommandRun({"set", practice.Folder(), "--letterhead", "Dr Haddad"}).code, 0);
    EXPECT_EQ(data::DecodeConfigRecord(record(37)), "Dr Haddad");
    EXPECT_EQ(data::DecodeConfigRecord(record(38)), "") << "the whole letterhead is replaced";
    EXPECT_EQ(BytesOf(path).first(36 * 84), before.first(36 * 84));

    const QStringList lettered{"set", practice.Folder(), "--letterhead"};
    ASSERT_EQ(CommandRun(lettered + QStringList(16, "x")).code, 0);
    const QByteArray last = BytesOf(path);
    EXPECT_EQ(CommandRun(lettered + QStringList(17, "y")).code, 1);
    EXPECT_EQ(CommandRun({"set", practice.Folder(), "--code", "7"}).code, 1);
    EXPECT_EQ(CommandRun({"set", practice.Folder(), "--code", "8", "--letterhead", QString(41, 'x')}).code, 1);
    EXPECT_EQ(CommandRun({"set", practice.Folder()}).code, 2);
    EXPECT_EQ(CommandRun({"set", practice.Folder() + "/ARCHIVES", "--code", "8"}).code, 1);
    EXPECT_EQ(BytesOf(path), last);
}
