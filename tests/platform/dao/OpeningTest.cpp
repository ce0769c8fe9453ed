#include "platform/store/Opening.h"
#include "SmallPractice.h"
#include "platform/store/Creation.h"
#include "platform/store/DatabaseReader.h"
#include "support/Unix.h"

#include <QDir>

namespace dao::test {
namespace {

/// A closed database, to be damaged and reopened.
class OpenedFile : public SmallPractice {
protected:
    OpenedFile()
    {
        database.Close();
        sound = BytesOf(path);
    }
    ~OpenedFile() override
    {
        ::chmod(path.toUtf8().constData(), 0600);
        ::chmod(folder.path().toUtf8().constData(), 0700);
    }

    std::optional<Error> OpeningError() const
    {
        return ErrorOf([&] { workspace.OpenDatabase(path); });
    }

    QByteArray sound;
    static constexpr int PageSize = 4096;
};

TEST_F(OpenedFile, IsRefusedWithATriggerOrView)
{
    Other(path).Run("create trigger gift after update on Actes begin update Actes set montant = 0; end");
    const QByteArray planted = BytesOf(path);
    const QString refusal = Raised([&] { workspace.OpenDatabase(path); });
    EXPECT_TRUE(refusal.startsWith("3343: ") && refusal.contains("'gift'")) << refusal.toStdString();
    EXPECT_EQ(BytesOf(path), planted) << "a refused file is left as it was";
    Other(path).Run("drop trigger gift");
    const Database again = workspace.OpenDatabase(path);
    Other(path).Run("create trigger gift after update on Actes begin update Actes set montant = 0; end");
    again.Execute("update Actes set montant = 43 where num = 2");
    EXPECT_EQ(Other(path).Answer("select montant from Actes where num = 2"), "43.0") << "planted while it is open";
}

TEST_F(OpenedFile, IsResolvedThroughALink)
{
    NEEDS_UNIX("links that anyone may make");
    const QString linked = folder.filePath("LIEN.MDB");
    ASSERT_TRUE(QFile::link(path, linked));
    Database behind = workspace.OpenDatabase(linked);
    behind.Execute("update Actes set montant = 44 where num = 2");
    EXPECT_FALSE(QFile::exists(linked + "-wal"));
    behind.Close();
    EXPECT_EQ(Other(path).Answer("select montant from Actes where num = 2"), "44.0");
    EXPECT_TRUE(QFileInfo(linked).isSymLink());
}

TEST_F(OpenedFile, IsRefusedWhereAnIndexDisagreesWithItsTable)
{
    for (const char* const spoil :
         {"delete from sqlite_schema where type = 'index' and tbl_name = 'Actes' and sql is not null",
          "update sqlite_schema set sql = 'CREATE INDEX Actes_Date_Presta ON Actes (num_presta, Date)' "
          "where name = 'Actes_Date_Presta'"}) {
        WriteFile(path, sound);
        Other(path).Run((std::string("pragma writable_schema = on; ") + spoil).c_str());
        EXPECT_EQ(OpeningError(), Error::DamagedDatabase) << spoil;
    }
}

TEST_F(OpenedFile, IsNotChangedByReadOnlyAccess)
{
    NEEDS_UNIX("mode bits");
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0555), 0);
    EXPECT_TRUE(store::CheckDatabase(path).isEmpty()) << "a look doesn't ask for more than reading";
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0700), 0);
    WriteFile(path, QByteArray(sound).replace(2 * PageSize, PageSize, QByteArray(PageSize, '\x5A')));
    EXPECT_FALSE(store::CheckDatabase(path).isEmpty());
    WriteFile(path, QByteArray("ZEP\n").repeated(2000));
    EXPECT_EQ(ErrorOf([&] { store::CheckDatabase(path); }), Error::UnrecognizedFormat);
    QFile::remove(path);
    EXPECT_EQ(OpeningError(), Error::DatabaseNotFound);
    EXPECT_FALSE(QFile::exists(path)) << "no empty file takes its place";
}

TEST_F(OpenedFile, RecoversTheLogOfACrashedProgram)
{
    // The folder as it was while the database was open: as after a kill.
    const QString saved = folder.filePath("saved");
    ASSERT_TRUE(QDir().mkdir(saved));
    {
        Other other(path);
        ASSERT_EQ(other.Run("update Actes set montant = 77 where num = 1"), SQLITE_OK);
        for (const char* const part : {"", "-wal", "-shm"})
            ASSERT_TRUE(QFile::copy(path + part, saved + "/ZEP_ONE.MDB" + part));
    }
    {
        const store::SqliteHandle reading = store::OpenForReading(saved + "/ZEP_ONE.MDB");
        EXPECT_EQ(store::WholeAnswer(reading.get(), "select montant from Actes where num = 1"), 77);
    }
    {
        const Database found = workspace.OpenDatabase(saved + "/ZEP_ONE.MDB");
        EXPECT_EQ(found.OpenRecordset("Actes")["montant"].Double(), 77);
    }
    // Garbage instead of a log is ignored.
    WriteFile(path + "-wal", QByteArray(10000, '\x37'));
    EXPECT_EQ(workspace.OpenDatabase(path).OpenRecordset("Actes")["montant"].Double(), 77);
}

TEST_F(OpenedFile, KeepsTheLogOfADamagedFile)
{
    {
        Other other(path);
        ASSERT_EQ(other.Run("update Actes set montant = 77 where num = 1"), SQLITE_OK);
        ASSERT_TRUE(QFile::copy(path + "-wal", folder.filePath("log")));
    }
    WriteFile(path, sound.first(3 * PageSize) + QByteArray(sound.size() - 3 * PageSize, '\x5A'));
    ASSERT_TRUE(QFile::rename(folder.filePath("log"), path + "-wal"));
    const qint64 size = QFileInfo(path + "-wal").size();
    const auto openFiles = QDir("/proc/self/fd").count();
    EXPECT_EQ(OpeningError(), Error::DamagedDatabase);
    EXPECT_EQ(QDir("/proc/self/fd").count(), openFiles) << "a failed opening closes its files";
    EXPECT_EQ(QFileInfo(path + "-wal").size(), size);
    EXPECT_EQ(BytesOf(path).mid(3 * PageSize, 4), "ZZZZ");
}

TEST_F(OpenedFile, KeepsAStaleLogOutOfARestoredArchiveCopy)
{
    {
        Other other(path);
        ASSERT_EQ(other.Run("pragma journal_mode = delete"), SQLITE_OK);
        sound = BytesOf(path);
        ASSERT_EQ(other.Run("pragma journal_mode = wal; delete from Actes"), SQLITE_OK);
        ASSERT_TRUE(QFile::copy(path + "-wal", folder.filePath("log")));
    }
    WriteFile(path, sound);
    ASSERT_TRUE(QFile::rename(folder.filePath("log"), path + "-wal"));
    EXPECT_EQ(workspace.OpenDatabase(path).OpenRecordset("select count(*) as S1 from Actes")["S1"].Long(), 6);
    EXPECT_TRUE(QFile::exists(path + "-wal.set-aside")) << "nothing is thrown away";
}

TEST_F(OpenedFile, IsCheckedAgainAfterChangesByOthers)
{
    const QByteArray damaged = QByteArray(sound).replace(2 * PageSize, PageSize, QByteArray(PageSize, '\x5A'));
    Database first = workspace.OpenDatabase(path);
    Database second = workspace.OpenDatabase(path);
    first.Close();
    second.Close();
    WriteFile(path, damaged);
    EXPECT_EQ(OpeningError(), Error::DamagedDatabase);

    NEEDS_UNIX("files that are removed while they are open");
    WriteFile(path, sound);
    Database replaced = workspace.OpenDatabase(path);
    ASSERT_TRUE(QFile::remove(path));
    WriteFile(path, damaged); // another file in place of the open one
    replaced.Close();
    EXPECT_EQ(OpeningError(), Error::DamagedDatabase);
}

TEST_F(OpenedFile, IsCreatedForItsOwnerOnly)
{
    database = workspace.OpenDatabase(path);
    database.Execute("delete * from Prov where num = 1");
    EXPECT_EQ(ErrorOf([&] { store::CreateDatabase(path, "create table T (a)"); }), Error::DatabaseExists);
    EXPECT_EQ(ErrorOf([&] { store::CreateDatabase(folder.filePath("none/x"), "create table T (a)"); }),
              Error::PathNotFound);
    EXPECT_EQ(ErrorOf([&] { store::CreateDatabase(folder.filePath("half"), "create table T (a); create tble"); }),
              Error::SyntaxError);
    EXPECT_FALSE(QFile::exists(folder.filePath("half")));
    NEEDS_UNIX("mode bits");
    for (const char* const file : {"ZEP_ONE.MDB", "ZEP_ONE.MDB-wal", "system.mdw"}) {
        const QFile::Permissions others = QFile::permissions(folder.filePath(file)) &
                                          (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther);
        EXPECT_FALSE(others) << file;
    }
}

TEST_F(OpenedFile, RequiresTheWorkgroupAccount)
{
    Engine engine;
    engine.SystemDB = folder.filePath("system.mdw");
    const auto error = [&](const char* user, const char* password) {
        return ErrorOf([&] { engine.CreateWorkspace("Special", user, password); });
    };
    EXPECT_EQ(error("admin", "secret"), std::nullopt);
    EXPECT_EQ(error("ADMIN", "Secret"), Error::AccountRefused);
    EXPECT_EQ(error("ADMIN", ""), Error::AccountRefused);
    EXPECT_EQ(error("OTHER", "secret"), Error::AccountRefused);

    const QByteArray whole = BytesOf(engine.SystemDB);
    EXPECT_FALSE(whole.contains("secret"));
    for (const QByteArray& bytes : {QByteArray(), whole.first(whole.size() / 2), QByteArray(8000, '\n'),
                                    QByteArray(whole).replace("\n1000\n", "\n2000000000\n")}) {
        WriteFile(engine.SystemDB, bytes);
        EXPECT_EQ(error("ADMIN", "secret"), Error::UnreadableWorkgroup);
    }
    QFile::remove(engine.SystemDB);
    EXPECT_EQ(error("ADMIN", "secret"), Error::UnreadableWorkgroup);
}

} // namespace
} // namespace dao::test
