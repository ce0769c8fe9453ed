#include "data/NewFolder.h"
#include "data/Practice.h"
#include "tools/PracticeCommand.h"

#include <QDir>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr auto Everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;

CommandRun MakeNew(const QString& folder)
{
    return CommandRun({"new", folder, "--code", "12", "--letterhead", "Dr Haddad"});
}

QByteArray BytesOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// Runs the step in a child process, which then exits without cleaning up.
template <typename Step>
void KilledAfter(Step step)
{
    const pid_t child = ::fork();
    if (child == 0) {
        step();
        ::raise(SIGKILL);
    }
    int state = 0;
    ::waitpid(child, &state, 0);
    ASSERT_TRUE(WIFSIGNALED(state));
}

} // namespace

TEST(New, WorksAfterAKilledRun)
{
    const QTemporaryDir place;
    const QString folder = place.filePath("cabinet");
    KilledAfter([&] {
        auto* const half = new data::NewFolder(folder);
        data::MakePracticeFiles(half->Path(), {.accessCode = 12, .letterhead = {"Dr Haddad"}});
    });
    EXPECT_FALSE(QFile::exists(folder));
    EXPECT_EQ(QDir(place.path()).entryList(Everything).size(), 1) << "the half one, under another name";

    const CommandRun made = MakeNew(folder);
    EXPECT_EQ(made.code, 0) << made.errors.toStdString();
    EXPECT_EQ(QDir(place.path()).entryList(Everything), QStringList("cabinet"));
    EXPECT_EQ(CommandRun({"check", folder}).code, 0);
    EXPECT_EQ(MakeNew(folder).code, 1) << "there is one now";
}

TEST(New, AddsToTheFolderOrLeavesItUnchanged)
{
    const QTemporaryDir place;
    const QDir folder(place.path());
    QFile notes(folder.filePath("notes.txt"));
    ASSERT_TRUE(notes.open(QIODevice::WriteOnly));
    notes.close();

    // A run that was killed while it moved its files into the folder.
    QString part;
    KilledAfter([&] {
        auto* const half = new data::NewFolder(place.path());
        data::MakePracticeFiles(half->Path(), {.accessCode = 12, .letterhead = {"Dr Haddad"}});
        QFile moves(half->Path() + "/.practice.moves");
        if (moves.open(QIODevice::WriteOnly))
            moves.write("ARCHIVES\nZEP_CFIG.CFG\nZEP_ONE.MDB");
        moves.close();
        for (const char* const name : {"/ARCHIVES", "/ZEP_CFIG.CFG"})
            QFile::rename(half->Path() + name, place.path() + name);
    });
    ASSERT_TRUE(QFile::exists(folder.filePath("ZEP_CFIG.CFG")));

    const CommandRun made = MakeNew(place.path());
    EXPECT_EQ(made.code, 0) << made.errors.toStdString();
    EXPECT_EQ(CommandRun({"check", place.path()}).code, 0);
    EXPECT_TRUE(QFile::exists(notes.fileName()));
    EXPECT_TRUE(folder.entryList({".practice*"}, Everything).isEmpty());
    EXPECT_EQ(MakeNew(place.path()).code, 1);
}

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

    const QByteArray last = BytesOf(path);
    EXPECT_EQ(CommandRun({"set", practice.Folder(), "--code", "7"}).code, 1);
    EXPECT_EQ(CommandRun({"set", practice.Folder(), "--code", "8", "--letterhead", QString(41, 'x')}).code, 1);
    EXPECT_EQ(CommandRun({"set", practice.Folder()}).code, 2);
    EXPECT_EQ(CommandRun({"set", practice.Folder() + "/ARCHIVES", "--code", "8"}).code, 1);
    EXPECT_EQ(BytesOf(path), last);
}
