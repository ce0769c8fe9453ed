#include "core/globals.h"
#include "data/Archives.h"
#include "faults/FolderContent.h"
#include "faults/SmallDisk.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/Host.h"
#include "support/ChildProcess.h"
#include "support/DeadlyWrites.h"
#include "support/FolderInMemory.h"
#include "support/Globals.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Rounds.h"
#include "support/ScriptedDesk.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <gtest/gtest.h>

using tests::BytesOf;
using tests::FolderContent;

namespace {

const QDate Today(2008, 6, 17);
const QDate Yesterday(2008, 6, 16);
const QString Dated = "ZEP_ONE 2008-06-16.MDB";

/// A practice with two acts, whose copy of yesterday has one. Its folder is put back to that before each round.
class KilledCopies : public testing::Test {
protected:
    KilledCopies()
    {
        practice.Act({.montant = 40});
        practice.Open(); // which leaves the file to this program alone
        tests::ResetGlobals();
        data::CopyToArchives(practice.Folder());
        Run("insert into Actes (Type, montant) values ('K1', 50)");
        start = tests::ContentOf(practice.Folder());
        StartAgain();
    }

    void Run(const char* sql) const { ASSERT_EQ(tests::OtherProgram(database).Run(sql), SQLITE_OK) << sql; }

    void StartAgain() const
    {
        QDirIterator files(practice.Folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext())
            QFile::remove(files.next());
        tests::WriteContent(practice.Folder(), start);
        QFile file(copy);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime(Yesterday, QTime(18, 2)), QFileDevice::FileModificationTime));
    }

    QStringList Archives(const QString& pattern) const
    {
        return QDir(archives).entryList({pattern}, QDir::Files | QDir::Hidden);
    }
    QStringList HalfFiles() const
    {
        QStringList half = Archives("*.part*");
        half << QDir(practice.Folder()).entryList({"*.part*"}, QDir::Files | QDir::Hidden);
        return half;
    }
    static QString ActsIn(const QString& file)
    {
        return tests::OtherProgram("file:" + file + "?immutable=1").Answer("select count(*) from Actes");
    }

    /// Opens the practice without a message; how many acts it has then.
    int ActsAtOpening()
    {
        const ScriptedDesk desk;
        practice.Open();
        const int acts = core::TheDatabase.OpenRecordset("select count(num) as S1 from Actes")["S1"].Long();
        tests::ResetGlobals();
        return acts;
    }

    /// Does a piece of work to its end once, then kills it at one of its writes after the other; `check` looks at what
    /// is left.
    void KillAtEachWrite(const std::function<void()>& work, const std::function<void()>& check)
    {
        const auto run = [&work](tests::Reports& reports, int deadlyWrite) {
            tests::DieAtWrite(deadlyWrite);
            work();
            reports.Send(tests::WritesMade());
        };
        tests::ChildProcess undisturbed([&](tests::Reports& reports) { run(reports, 0); });
        const int writes = undisturbed.Next<int>().value_or(0);
        undisturbed.Wait();
        ASSERT_GT(writes, 5);
        const int step = tests::IsLongForm() ? 1 : qMax(1, writes / 20);
        const int rounds = tests::IsLongForm() ? qMax(200, writes) : writes;
        for (int round = 1; round <= rounds; round += step) {
            const int deadly = (round - 1) % writes + 1;
            SCOPED_TRACE(deadly);
            StartAgain();
            tests::ChildProcess program([&](tests::Reports& reports) { run(reports, deadly); });
            EXPECT_EQ(program.Next<int>(), std::nullopt);
            EXPECT_TRUE(program.Kill());
            check();
        }
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
    const QString database = practice.File("ZEP_ONE.MDB");
    const QString archives = practice.File("ARCHIVES");
    const QString copy = archives + "/ZEP_ONE.MDB";
    FolderContent start;
};

} // namespace

TEST_F(KilledCopies, LoseNoDayAtTheShutdown)
{
    int replaced = 0;
    const auto work = [this] { data::CopyToArchives(practice.Folder()); };
    KillAtEachWrite(work, [&] {
        ASSERT_EQ(data::FaultOf(copy), "");
        const bool isNew = ActsIn(copy) == "2";
        replaced += isNew;
        EXPECT_EQ(ActsIn(isNew ? archives + "/" + Dated : copy), "1") << "yesterday's copy is gone";
        EXPECT_EQ(ActsAtOpening(), 2);
        work(); // the next evening clears up
        EXPECT_EQ(HalfFiles(), QStringList());
        EXPECT_EQ(ActsIn(copy), "2");
    });
    EXPECT_GT(replaced, 0);
}

TEST_F(KilledCopies, LeaveTheOldOrTheNewPracticeInARestoration)
{
    int restored = 0;
    for (const bool hasLog : {false, true}) {
        StartAgain();
        if (hasLog) {
            tests::OtherProgram program(database); // which dies, its log beside the file
            program.Run("insert into Actes (Type) values ('K2')");
            start = tests::ContentOf(practice.Folder());
            start.erase("ZEP_ONE.MDB-shm");
        }
        const QByteArray before = start.at("ZEP_ONE.MDB");
        KillAtEachWrite([this] { data::Restore(copy, practice.Folder()); },
                        [&] {
                            const int acts = ActsAtOpening();
                            EXPECT_TRUE(acts == 1 || acts == (hasLog ? 3 : 2)) << acts;
                            if (acts == 1) {
                                ++restored;
                                const QStringList kept = Archives("ZEP_ONE avant restauration *.MDB");
                                ASSERT_EQ(kept.size(), 1);
                                EXPECT_TRUE(BytesOf(archives + "/" + kept.first()) == before);
                            }
                            EXPECT_EQ(data::FaultOf(copy), "");
                            data::Restore(copy, practice.Folder());
                            EXPECT_EQ(HalfFiles(), QStringList());
                            EXPECT_EQ(ActsAtOpening(), 1);
                        });
    }
    EXPECT_GT(restored, 0);
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
    const FolderContent withoutLog = start;
    FolderContent withLog;
    {
        tests::OtherProgram program(database); // which dies, its log beside the file
        program.Run("insert into Actes (Type) values ('K2')");
        withLog = tests::ContentOf(practice.Folder());
        withLog.erase("ZEP_ONE.MDB-shm");
    }

    constexpr int points = 20;
    int failed = 0;
    for (int point = 0; point < points; ++point) {
        SCOPED_TRACE(point);
        start = point % 2 == 0 ? withoutLog : withLog;
        const tests::SmallDisk disk(practice.Folder(),
                                    tests::SizeOf(start) / 1024 + 60 + point * 20); // KB, from none to enough
        if (!disk.IsMounted())
            return;
        StartAgain();
        if (fails([this] { data::Restore(copy, practice.Folder()); })) {
            ++failed;
            EXPECT_TRUE(BytesOf(database) == start.at("ZEP_ONE.MDB"));
            const bool hasLog = start.contains("ZEP_ONE.MDB-wal");
            EXPECT_TRUE(!hasLog || BytesOf(database + "-wal") == start.at("ZEP_ONE.MDB-wal"));
            EXPECT_EQ(Archives("*avant*"), QStringList());
        }
        EXPECT_EQ(HalfFiles(), QStringList());
        StartAgain();
        if (fails([this] { data::CopyToArchives(practice.Folder()); })) {
            ++failed;
            EXPECT_TRUE(BytesOf(copy) == start.at("ARCHIVES/ZEP_ONE.MDB"));
            EXPECT_EQ(Archives("*"), QStringList("ZEP_ONE.MDB"));
        }
        EXPECT_EQ(HalfFiles(), QStringList());
    }
    EXPECT_GT(failed, 0);
    EXPECT_LT(failed, 2 * points) << "the largest disk holds both";
}
