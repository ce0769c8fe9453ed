#include "archives/Archives.h"
#include "core/globals.h"
#include "faults/FolderContent.h"
#include "faults/SmallDisk.h"
#include "support/Globals.h"
#include "support/KillAtEachStep.h"
#include "support/OtherProgram.h"
#include "support/Printing.h"
#include "support/ScriptedDesk.h"

#include <QDateTime>
#include <QDir>
#include <QFile>

using tests::BytesOf;
using tests::FolderContent;

namespace {

const QDate Yesterday(2008, 6, 16);
const QString Dated = "ZEP_ONE 2008-06-16.MDB";

/// A practice with two acts, whose copy of yesterday has one.
class KilledCopies : public testing::Test {
protected:
    KilledCopies()
    {
        practice.Act({.montant = 40});
        practice.Open(); // which leaves the file to this program alone
        tests::ResetGlobals();
        archives::CopyToArchives(practice.Folder());
        Run("insert into Actes (Type, montant) values ('K1', 50)");
        DateCopy();
    }

    void DateCopy() const { tests::DateFile(copy, Yesterday); }

    void Run(const char* sql) const { ASSERT_EQ(tests::OtherProgram(database).Run(sql), SQLITE_OK) << sql; }

    QStringList Archives(const QString& pattern) const
    {
        return QDir(archives).entryList({pattern}, QDir::Files | QDir::Hidden);
    }
    static QString ActsIn(const QString& file)
    {
        return tests::OtherProgram("file:" + file + "?immutable=1").Answer("select count(*) from Actes");
    }

    /// Opens the practice without a message; how many acts it has then.
    QString ActsAtOpening()
    {
        const ScriptedDesk desk;
        practice.Open();
        const QString acts = core::TheDatabase.OpenRecordset("select count(num) as S1 from Actes")["S1"].Text();
        tests::ResetGlobals();
        return acts;
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
    const QString database = practice.File("ZEP_ONE.MDB");
    const QString archives = practice.File("ARCHIVES");
    const QString copy = archives + "/ZEP_ONE.MDB";
};

} // namespace

TEST_F(KilledCopies, LoseNoDayAtTheShutdown)
{
    tests::KillAtEachStep({.folder = practice.Folder(),
                           .work = [this](const tests::Play::Done&) { archives::CopyToArchives(practice.Folder()); },
                           .state = [this] { return ActsIn(copy); },
                           .check =
                               [this](const QString& acts) {
                                   EXPECT_EQ(archives::FaultOf(copy), "");
                                   EXPECT_EQ(ActsIn(acts == "2" ? archives + "/" + Dated : copy), "1")
                                       << "yesterday's copy is gone";
                                   EXPECT_EQ(ActsAtOpening(), "2");
                               }});
}

TEST_F(KilledCopies, LeaveTheOldOrTheNewPracticeInARestoration)
{
    for (const bool hasLog : {false, true}) {
        SCOPED_TRACE(hasLog);
        if (hasLog)
            tests::ChangeInLog(database, "insert into Actes (Type) values ('K2')");
        const QByteArray before = BytesOf(database);
        tests::KillAtEachStep(
            {.folder = practice.Folder(),
             .work = [this](const tests::Play::Done&) { archives::Restore(copy, practice.Folder()); },
             .state = [this] { return ActsAtOpening(); },
             .allowed =
                 [&](int) {
                     return QStringList{hasLog ? "3" : "2", "1"};
                 },
             .check =
                 [&](const QString& acts) {
                     const QStringList kept = Archives("ZEP_ONE avant restauration *.MDB");
                     EXPECT_TRUE(acts != "1" || (kept.size() == 1 && BytesOf(archives + "/" + kept.first()) == before));
                     EXPECT_EQ(archives::FaultOf(copy), "");
                 },
             .mayStay = "avant restauration"});
    }
}

TEST_F(KilledCopies, ChangeNothingOnAFullDisk)
{
    const FolderContent withoutLog = tests::ContentOf(practice.Folder());
    tests::ChangeInLog(database, "insert into Actes (Type) values ('K2')");
    const FolderContent withLog = tests::ContentOf(practice.Folder());

    constexpr int points = 20;
    int failed = 0;
    for (int point = 0; point < points; ++point) {
        SCOPED_TRACE(point);
        const FolderContent& start = point % 2 == 0 ? withoutLog : withLog;
        const auto attempt = [&](const std::function<void()>& work, const char* unchanged) {
            const tests::SmallDisk disk(practice.Folder(), tests::SizeOf(start) / 1024 + 60 + point * 20); // KB
            if (!disk.IsMounted())
                return false;
            tests::WriteContent(practice.Folder(), start);
            DateCopy();
            const QString error = Raised(work);
            if (error.isEmpty())
                return true;
            EXPECT_TRUE(error.startsWith("61: ") && error.contains('/')) << "the folder isn't named";
            ++failed;
            FolderContent left = tests::ContentOf(practice.Folder());
            left.erase("ZEP_ONE.MDB-shm");
            FolderContent expected = start;
            const auto mayChange = [&](const auto& file) { return !file.first.startsWith(unchanged); };
            std::erase_if(left, mayChange);
            std::erase_if(expected, mayChange);
            EXPECT_TRUE(left == expected);
            return true;
        };
        if (!attempt([this] { archives::Restore(copy, practice.Folder()); }, ""))
            GTEST_SKIP() << "no right to mount a disk";
        attempt([this] { archives::CopyToArchives(practice.Folder()); }, "ARCHIVES/"); // the log may be moved
    }
    EXPECT_GT(failed, 0);
    EXPECT_LT(failed, 2 * points) << "the largest disk holds both";
}
