#include "SmallPractice.h"

#include "platform/dao/Connection.h"
#include "support/FullDisk.h"
#include "support/Unix.h"

#include <QProcess>

namespace dao::test {
namespace {

/// Sets that share a file with each other and with another program, without a busy timeout.
class SharedFile : public SmallPractice {
protected:
    SharedFile() { other.Run("pragma busy_timeout = 0"); }

    bool OtherCanWrite() { return other.Run("update Presta set denom = denom") == SQLITE_OK; }
    Recordset LockedAct(int key = 1)
    {
        Recordset rows = Open("select * from Actes where num = " + QString::number(key));
        rows.LockEdits(true);
        return rows;
    }

    /// Writes the first page of another file over one of the practice, without SQLite.
    void WritePage(const QString& from, int page) const
    {
        const QStringList arguments{"if=" + from, "of=" + path, QString("seek=%1").arg(page - 1),
                                    "bs=4096",    "count=1",    "conv=notrunc",
                                    "status=none"};
        EXPECT_EQ(QProcess::execute("dd", arguments), 0);
    }

    /// What a program leaves that is killed in a checkpoint: the file has the first page of a larger one, whose others
    /// are in the log alone.
    void WriteHalfACheckpoint()
    {
        const QString copy = folder.filePath("copy.MDB");
        const QString patients =
            "with recursive n(i) as (select 1 union all select i + 1 from n where i < %1) insert into Patients (nom) "
            "select printf('%0500d', i) from n";
        EXPECT_EQ(other.Run("pragma wal_autocheckpoint = 0"), SQLITE_OK);
        EXPECT_EQ(other.Run(patients.arg(200).toUtf8().constData()), SQLITE_OK);
        for (const char* const part : {"", "-wal"})
            EXPECT_TRUE(QFile::copy(path + part, copy + part));
        EXPECT_EQ(Other(copy).Answer("pragma wal_checkpoint(truncate)"), "0");
        WritePage(copy, 1);
        for (const char* const part : {"", "-wal", "-shm"})
            QFile::remove(copy + part);
    }

    Other other{path};
};

TEST_F(SharedFile, IsLockedFromEditHoweverThatEnds)
{
    ASSERT_EQ(other.Run("insert into Actes (num, montant) values (999, 5);"
                        "create unique index Refusal on Actes (montant) where montant = 5"),
              SQLITE_OK);
    const std::pair<const char*, std::function<void(Recordset&)>> ends[] = {
        {"cancelled", [](Recordset& rows) { rows.CancelUpdate(); }},
        {"moved", [](Recordset& rows) { rows.MoveFirst(); }},
        {"closed", [](Recordset& rows) { rows.Close(); }},
        {"left behind", [](Recordset& rows) { rows = {}; }},
        {"refused", [](Recordset& rows) { EXPECT_EQ(ErrorOf([&] { rows.Update(); }), Error::DuplicateKey); }},
        {"updated",
         [](Recordset& rows) {
             rows["montant"] = 100.5;
             rows.Update();
         }},
        {"dropped", [this](Recordset&) { database.Close(); }},
    };
    for (const auto& [how, end] : ends) {
        Recordset rows = LockedAct();
        EXPECT_TRUE(OtherCanWrite()) << how;
        rows.Edit();
        rows["montant"] = 5;
        EXPECT_FALSE(OtherCanWrite()) << how;
        end(rows);
        EXPECT_TRUE(OtherCanWrite()) << how;
        EXPECT_EQ(other.Answer("select montant from Actes where num = 1"), "100.5") << how;
    }
}

TEST_F(SharedFile, KeepsWhatAnotherSetWroteDuringALockedEdit)
{
    Recordset first = LockedAct();
    Recordset second = LockedAct(2);
    first.Edit();
    first["montant"] = 1;
    second.Edit();
    second["montant"] = 2;
    second.Update();
    EXPECT_TRUE(OtherCanWrite()) << "one edit at a time has the lock, up to the next change";
    EXPECT_EQ(other.Answer("select montant from Actes where num = 2"), "2.0");
    first.Update();
    first.Edit();
    database.Execute("update Actes set montant = 3 where num = 3");
    EXPECT_TRUE(OtherCanWrite()) << "the edit is ended by the change";
    first.CancelUpdate();
    EXPECT_EQ(other.Answer("select group_concat(montant) from Actes where num < 4"), "1.0,2.0,3.0");
}

TEST_F(SharedFile, IsASnapshotWithinAReadTransaction)
{
    Recordset acts = Open("Actes");
    {
        const ReadTransaction reading(database);
        const Recordset day = Open("select * from Actes where num < 4");
        ASSERT_EQ(other.Run("update Actes set montant = 99; delete from Actes where num = 3"), SQLITE_OK)
            << "others aren't kept from writing";
        EXPECT_EQ(Walk(day), "1 2 3");
        acts.FindFirst(2);
        acts.Edit();
        EXPECT_EQ(acts["montant"].Double(), 50);
        acts["flag_R"] = 5;
        acts.Update();
        EXPECT_EQ(acts["montant"].Double(), 99) << "a change starts from what is there now";
        EXPECT_EQ(Keys("Actes"), "1 2 4 5 6");
        ASSERT_EQ(other.Run("update Actes set montant = 100"), SQLITE_OK);
        EXPECT_EQ(Open("Actes")["montant"].Double(), 99);
        DBEngine.Idle(RefreshCache);
        EXPECT_EQ(Open("Actes")["montant"].Double(), 100);
        Transaction bundle(database);
        database.Execute("update Actes set montant = 101");
        EXPECT_EQ(Open("Actes")["montant"].Double(), 101);
    }
    EXPECT_EQ(Open("Actes")["montant"].Double(), 100);
    EXPECT_EQ(other.Answer("select flag_R from Actes where num = 2"), "5");
    DBEngine.Idle(RefreshCache);
    EXPECT_EQ(other.Answer("pragma wal_checkpoint(truncate)"), "0") << "nothing holds the file any more";

    const ReadTransaction outlives(database);
    database.Close();
}

TEST_F(SharedFile, CommitsTransactionsAtomically)
{
    NEEDS_UNIX("limit of the size of files");
    Recordset rows = Open("Actes");
    rows.LockEdits(true);
    {
        Transaction bundle(database);
        EXPECT_EQ(ErrorOf([&] { database.BeginTrans(); }), Error::NestedTransaction);
        for (; !rows.IsEOF(); rows.MoveNext()) {
            rows.Edit();
            rows["Flag_H"] = 1;
            rows.Update();
        }
        rows.MoveFirst();
        EXPECT_EQ(rows["Flag_H"].Long(), 1);
    }
    EXPECT_EQ(other.Answer("select count(*) from Actes where Flag_H = 1"), "0");
    rows.MoveFirst();
    EXPECT_TRUE(rows["Flag_H"].IsNull()) << "what was rolled back isn't shown";

    Transaction bundle(database);
    database.Execute("update Actes set Flag_H = 1");
    bundle.Commit();
    EXPECT_EQ(other.Answer("select count(*) from Actes where Flag_H = 1"), "6");
    EXPECT_EQ(ErrorOf([&] { database.CommitTrans(); }), Error::NoTransaction);
    EXPECT_EQ(ErrorOf([&] { database.Rollback(); }), Error::NoTransaction);

    Transaction failing(database);
    database.Execute("update Actes set Flag_H = 2");
    {
        const tests::FullDisk disk(0);
        EXPECT_EQ(ErrorOf([&] { failing.Commit(); }), Error::DiskOrNetwork);
    }
    EXPECT_TRUE(OtherCanWrite()) << "a commit that failed is rolled back";
    EXPECT_EQ(Open("Actes")["Flag_H"].Long(), 1);
}

TEST_F(SharedFile, SurvivesHalfACheckpointOfAnotherProgram)
{
    NEEDS_UNIX("dd");
    WriteHalfACheckpoint();
    database.Execute("update Actes set montant = 77 where num = 1");
    EXPECT_EQ(other.Answer("select montant from Actes where num = 1"), "77.0");

    WriteHalfACheckpoint();
    database.Close();
    other.Run("begin immediate"); // so that the opening makes no checkpoint
    database = workspace.OpenDatabase(path);
    other.Run("commit");
    database.Execute("update Actes set montant = 78 where num = 1");
    EXPECT_EQ(other.Answer("select (select montant from Actes where num = 1) || '/' || count(*) from Patients"),
              "78.0/405");
    EXPECT_EQ(other.Answer("pragma integrity_check"), "ok");
}

TEST_F(SharedFile, IsNotSavedToWhenItIsUnsoundWithItsLog)
{
    NEEDS_UNIX("dd");
    WriteHalfACheckpoint();
    WritePage("/dev/zero", other.Answer("select rootpage from sqlite_schema where name = 'Tarif'").toInt());
    EXPECT_EQ(ErrorOf([&] { database.Execute("update Actes set montant = 77 where num = 1"); }), Error::FileReplaced);
    EXPECT_TRUE(QFile::exists(path + "-wal.set-aside"));
}

TEST_F(SharedFile, IsNotSavedToWhenItsLogLacksACommitOfThisProgram)
{
    NEEDS_UNIX("dd");
    database.Execute("update Actes set montant = 77 where num = 1");
    EXPECT_EQ(other.Run("delete from \"ZEP marks\""), SQLITE_OK);
    WriteHalfACheckpoint();
    EXPECT_EQ(ErrorOf([&] { database.Execute("update Actes set montant = 78 where num = 1"); }), Error::FileReplaced);
}

TEST_F(SharedFile, SharesChangesBetweenHandlesAndClosesWithTheLast)
{
    Database second = workspace.OpenDatabase(path);
    Recordset rows = second.OpenRecordset("select * from Actes order by date desc");
    database.Execute("update Actes set montant = 3 where num = 1");
    DBEngine.Idle(RefreshCache);
    rows.FindFirst(1);
    EXPECT_EQ(rows["montant"].Double(), 3);
    database.Close();
    EXPECT_EQ(second.OpenRecordset("Actes")["montant"].Double(), 3);
    workspace.Close();
    EXPECT_FALSE(rows.IsOpen());
    EXPECT_EQ(ErrorOf([&] { second.OpenRecordset("Actes"); }), Error::ObjectClosed);
    EXPECT_EQ(ErrorOf([&] { workspace.OpenDatabase(path); }), Error::ObjectClosed);
}

TEST_F(SharedFile, HasNoReaderOnceASetWasRead)
{
    Recordset walked = Open("select * from Actes where num > 0");
    Recordset looked = Open("Patients");
    DBEngine.Idle(RefreshCache);
    // A remaining reader would keep the log from being emptied.
    EXPECT_TRUE(OtherCanWrite());
    EXPECT_EQ(other.Answer("pragma wal_checkpoint(truncate)"), "0");
    EXPECT_EQ(Walk(walked), "1 2 3 4 5 6");
    EXPECT_EQ(looked["num"].Key(), 1);
}

} // namespace
} // namespace dao::test
