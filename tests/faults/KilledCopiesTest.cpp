#include "core/globals.h"
#include "data/Archives.h"
#include "faults/FolderContent.h"
#include "faults/SmallDisk.h"
#include "platform/basic/RuntimeError.h"
#include "support/Globals.h"
#include "support/KillAtEachStep.h"
#include "support/OtherProgram.h"
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
        data::CopyToArchives(practice.Folder());
        Run("insert into Actes (Type, montant) values ('K1', 50)");
        DateCopy();
    }

    void DateCopy() const { tests::DateFile(copy, Yesterday); }

    void Run(const char* sql) const { ASSERT_EQ(tests::OtherProgram(database).Run(sql), SQLITE_OK) << sql; }

    /// Leaves the log of a program that dies beside the database.
    void LeaveLog() const
    {
        tests::FolderContent content;
        {
            tests::OtherProgram program(database);
            program.Run("insert into Actes (Type) values ('K2')");
            content = tests::ContentOf(practice.Folder());
        }
        content.erase("ZEP_ONE.MDB-shm");
        content.erase("ARCHIVES/ZEP_ONE.MDB");
        tests::WriteContent(practice.Folder(), content);
    }

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
                           .work = [this](const tests::Play::Done&) { data::CopyToArchives(practice.Folder()); },
                           .state = [this] { return ActsIn(copy); },
                           .check =
                               [this](const QString& acts) {
                                   EXPECT_EQ(data::FaultOf(copy), "");
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
            LeaveLog();
        const QByteArray before = BytesOf(database);
        tests::KillAtEachStep(
            {.folder = practice.Folder(),
             .work = [this](const tests::Play::Done&) { data::Restore(copy, practice.Folder()); },
             .state = [this] { return ActsAtOpening(); },
             .allowed =
                 [&](int) {
                     return QStringList{hasLog ? "3" : "2", "1"};
                 },
             .check =
                 [&](const QString& acts) {
                     const QStringList kept = Archives("ZEP_ONE avant restauration *.MDB");
                     EXPECT_TRUE(acts != "1" || (kept.size() == 1 && BytesOf(archives + "/" + kept.first()) == before));
                     EXPECT_EQ(data::FaultOf(copy), "");
                 },
             .mayStay = "avant restauration"});
    }
}

TEST_F(KilledCopies, ChangeNothingOnAFullDisk)
{
    const auto fails = [](const std::function<void()>& work) {
        try {
            work();
            return false;
        } catch (const basic::RuntimeError& error) {
            EXPECT_EQ(error.Code(), basic::Error::DiskFull);
            EXPECT_TRUE(error.Description().contains('/')) << "the folder isn't named";
            return true;
        }
    };
    const FolderContent withoutLog = tests::ContentOf(practice.Folder());
    LeaveLog();
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
            if (!fails(work))
                return true;
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
        if (!attempt([this] { data::Restore(copy, practice.Folder()); }, ""))
            GTEST_SKIP() << "no right to mount a disk";
        attempt([this] { data::CopyToArchives(practice.Folder()); }, "ARCHIVES/"); // the log may be moved
    }
    EXPECT_GT(failed, 0);
    EXPECT_LT(failed, 2 * points) << "the largest disk holds both";
}
