#include "archives/Archives.h"
#include "core/globals.h"
#include "faults/FolderContent.h"
#include "faults/SmallDisk.h"
#include "platform/host/Host.h"
#include "platform/store/DatabaseReader.h"
#include "support/ChildProcess.h"
#include "support/FullDisk.h"
#include "support/Globals.h"
#include "support/MainWindow.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Rounds.h"

#include <QDir>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using basic::RuntimeError;
using core::Form1;
using tests::BytesOf;
using tests::OtherProgram;

namespace {

/// The end of a working day, with yesterday's copy in "ARCHIVES".
class EndOfDay : public testing::Test {
protected:
    EndOfDay()
    {
        practice.Open();
        dao::Transaction filling(core::TheDatabase);
        dao::Recordset acts = core::TheDatabase.OpenRecordset("Actes");
        for (int act = 0; act < Acts; ++act) {
            acts.AddNew();
            acts["Date"] = "17/06/2008";
            acts["Type"] = "C";
            acts.Update();
        }
        filling.Commit();
        tests::ResetGlobals();
        WorkAndQuit();
        yesterday = BytesOf(archive);
    }

    /// A working day without its end: settles an act.
    Form1& Work(ScriptedDesk& desk)
    {
        auto& main = tests::StartProgram(desk, practice.Folder());
        core::TheDatabase.Execute("Update Actes set montant = " + QString::number(++settled) + " where num = 1");
        return main;
    }

    void WorkAndQuit(const std::optional<RuntimeError>& expectedError = {})
    {
        ScriptedDesk desk;
        auto& main = Work(desk);
        tests::Quit(desk, main, expectedError);
        EXPECT_EQ(desk.EndCode(), 0);
    }

    void ExpectYesterdaysCopy() const
    {
        EXPECT_EQ(Archives(), QStringList("ZEP_ONE.MDB")) << "nothing half made stays";
        EXPECT_TRUE(BytesOf(archive) == yesterday);
        EXPECT_EQ(InDatabase("select montant from Actes where num = 1").toDouble(), settled);
    }

    void ExpectTodaysCopy() const
    {
        EXPECT_EQ(Archives(), QStringList("ZEP_ONE.MDB"));
        EXPECT_EQ(store::CheckDatabase(archive), QStringList());
        EXPECT_EQ(InArchive("select montant from Actes where num = 1").toDouble(), settled);
    }

    QString InDatabase(const char* question) const { return OtherProgram(database).Answer(question); }
    QString InArchive(const char* question) const
    {
        return OtherProgram("file:" + archive + "?immutable=1").Answer(question);
    }
    QStringList Archives() const
    {
        QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
        names.removeAll("ZEP_ONE.MDB.sceau");
        return names;
    }
    void Protect(mode_t mode) const { ::chmod(folder.toUtf8().constData(), mode); }

    static constexpr int Acts = 3000;
    tests::Practice practice;
    const QString database = practice.File("ZEP_ONE.MDB");
    const QString folder = practice.File("ARCHIVES");
    const QString archive = folder + "/ZEP_ONE.MDB";
    QByteArray yesterday;
    int settled = 0;
};

} // namespace

TEST_F(EndOfDay, KeepsYesterdaysCopyWhenTheDiskIsFull)
{
    for (const qint64 largest :
         {static_cast<qint64>(0), static_cast<qint64>(65536), QFileInfo(database).size() - 4096}) {
        SCOPED_TRACE(largest);
        ScriptedDesk desk;
        auto& main = Work(desk);
        {
            const tests::FullDisk disk{rlim_t(largest)};
            // With no room at all the database itself can't be read beside its log.
            tests::Quit(desk, main, RuntimeError(Error::DiskFull, largest == 0 ? practice.Folder() : folder));
        }
        ExpectYesterdaysCopy();
    }
    WorkAndQuit();
    ExpectTodaysCopy();
}

TEST_F(EndOfDay, KeepsYesterdaysCopyWithoutWritePermission)
{
    Protect(0555);
    WorkAndQuit(RuntimeError(Error::PermissionDenied));
    ExpectYesterdaysCopy();
    Protect(0700);
    WorkAndQuit();
    ExpectTodaysCopy();
}

TEST_F(EndOfDay, KeepsYesterdaysCopyOnAReadOnlyDisk)
{
    const tests::SmallDisk disk(folder, 4096);
    if (!disk.IsMounted())
        GTEST_SKIP() << "no right to mount a disk";
    tests::WriteContent(folder, {{"ZEP_ONE.MDB", yesterday}});
    disk.MakeReadOnly();
    WorkAndQuit(RuntimeError(Error::PermissionDenied));
    ExpectYesterdaysCopy();
}

// On a disk for six copies, today's is made every day; the newest two dated ones and the kept file stay.
TEST_F(EndOfDay, MakesRoomForTodaysCopyOnAFullDisk)
{
    const tests::SmallDisk disk(folder, 6 * qint64(yesterday.size()) / 1024 + 300);
    if (!disk.IsMounted())
        GTEST_SKIP() << "no right to mount a disk";
    const QString kept = folder + "/ZEP_ONE avant restauration 2008-06-01 10-00-00.MDB";
    tests::WriteContent(folder, {{"ZEP_ONE.MDB", yesterday}, {QFileInfo(kept).fileName(), yesterday}});
    QStringList deleted;
    QDate day(2008, 6, 17);
    for (; day < QDate(2008, 6, 29); day = day.addDays(1)) {
        host::FixToday(day);
        for (const QDate& each : archives::CopyToArchives(practice.Folder()).deletedDays)
            deleted << each.toString("d");
        tests::DateFile(archive, day);
    }
    EXPECT_EQ(deleted.join(' '), "17 18 19 20 21 22 23");
    EXPECT_EQ(Archives().filter(QRegularExpression("[78]\\.MDB$|0\\.MDB$")),
              QStringList({"ZEP_ONE 2008-06-27.MDB", QFileInfo(kept).fileName()}));

    ASSERT_EQ(
        OtherProgram(database).Run("with recursive n(i) as (select 1 union all select i + 1 from n where i < 1000) "
                                   "insert into Recettes (objet) select hex(zeroblob(2000)) from n"),
        SQLITE_OK);
    const tests::FolderContent before = tests::ContentOf(folder);
    host::FixToday(day);
    EXPECT_THROW(archives::CopyToArchives(practice.Folder()), RuntimeError);
    EXPECT_TRUE(tests::ContentOf(folder) == before) << "nothing went in vain";
    host::FixToday({});
}

TEST_F(EndOfDay, CopiesEverySavedRowWhileOthersReadAndWrite)
{
    tests::ChildProcess writer([this](tests::Reports& reports) {
        OtherProgram program(database);
        for (;;) { // each pair is one transaction: a copy may contain both rows or none
            if (program.Run("begin immediate; insert into Actes (Type) values ('K1'); insert into Actes (Type) values "
                            "('K1'); commit") == SQLITE_OK)
                reports.Send('+');
            ::usleep(2000);
        }
    });
    tests::ChildProcess reader([this](tests::Reports& reports) {
        OtherProgram program(database);
        program.Run("begin");
        program.Answer("select count(*) from Actes");
        reports.Send('r');
        ::pause(); // and keeps its snapshot
    });
    ASSERT_TRUE(writer.Next<char>() && reader.Next<char>());

    for (int day = 0; day < tests::Rounds(8); ++day) {
        ScriptedDesk desk;
        auto& main = Work(desk);
        const int saved = core::TheDatabase.OpenRecordset("select count(num) as S1 from Actes")["S1"].Long();
        EXPECT_GT(saved, Acts);
        if (day == 4)
            reader.Kill();
        tests::Quit(desk, main);
        ExpectTodaysCopy();
        const int copied = InArchive("select count(*) from Actes").toInt();
        EXPECT_GE(copied, saved);
        EXPECT_EQ(copied % 2, Acts % 2);
    }
}
