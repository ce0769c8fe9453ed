#include "platform/dao/SmallPractice.h"

#include "archives/ArchiveCopy.h"
#include "platform/host/FileWork.h"
#include "platform/store/DatabaseReader.h"
#include "support/Unix.h"

#include <QDir>
#include <algorithm>

#include <chrono>
#include <thread>

namespace dao::test {
namespace {

class Archive : public SmallPractice {
protected:
    Archive() { EXPECT_TRUE(QDir(folder.path()).mkdir("ARCHIVES")); }
    ~Archive() override { ::chmod(folder.filePath("ARCHIVES").toUtf8().constData(), 0700); }

    std::optional<Error> CopyError() const
    {
        return ErrorOf([&] { archives::CopyDatabase(path, target); });
    }
    QStringList ArchiveContent() const
    {
        QStringList names = QDir(folder.filePath("ARCHIVES")).entryList(QDir::Files | QDir::Hidden);
        names.removeAll("ZEP_ONE.MDB.sceau");
        return names;
    }

    const QString target = folder.filePath("ARCHIVES/ZEP_ONE.MDB");
};

TEST_F(Archive, ContainsAllSavedDataAndOpensFromReadOnlyMedia)
{
    NEEDS_UNIX("mode bits");
    database.Execute("update Actes set montant = 42 where num = 2");
    EXPECT_EQ(CopyError(), std::nullopt) << "while the database is open";
    database.Close();
    EXPECT_EQ(CopyError(), std::nullopt);
    EXPECT_EQ(ArchiveContent(), QStringList("ZEP_ONE.MDB")) << "nothing half made stays";
    EXPECT_EQ(QFile::permissions(target) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_TRUE(store::CheckDatabase(target).isEmpty());

    ASSERT_EQ(::chmod(folder.filePath("ARCHIVES").toUtf8().constData(), 0555), 0);
    Other medium("file:" + target + "?mode=ro");
    EXPECT_EQ(medium.Answer("select montant from Actes where num = 2"), "42.0");
    ASSERT_EQ(::chmod(folder.filePath("ARCHIVES").toUtf8().constData(), 0700), 0);

    // Restored, it can be used like any other.
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::copy(target, path));
    const Database again = workspace.OpenDatabase(path);
    again.Execute("update Actes set montant = 43 where num = 2");
    EXPECT_EQ(again.OpenRecordset("select * from Actes where num = 2")["montant"].Double(), 43);
}

TEST_F(Archive, FollowsASymbolicLink)
{
    NEEDS_UNIX("links that anyone may make");
    const QString elsewhere = folder.filePath("ailleurs.MDB");
    ASSERT_EQ(CopyError(), std::nullopt);
    ASSERT_TRUE(QFile::rename(target, elsewhere));
    ASSERT_TRUE(QFile::link(elsewhere, target));
    database.Execute("update Actes set montant = 42 where num = 2");
    ASSERT_EQ(CopyError(), std::nullopt);
    EXPECT_TRUE(QFileInfo(target).isSymLink());
    EXPECT_EQ(Other(elsewhere).Answer("select montant from Actes where num = 2"), "42.0");
}

TEST_F(Archive, WaitsForAnotherCopyIntoTheSameFolder)
{
    auto other = std::make_unique<host::FolderLock>(folder.filePath("ARCHIVES"));
    WriteFile(target + ".part"); // half written by the other program
    std::thread otherProgram([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        EXPECT_TRUE(QFile::exists(target + ".part")) << "taken away";
        other.reset();
    });
    EXPECT_EQ(CopyError(), std::nullopt);
    otherProgram.join();
    EXPECT_EQ(ArchiveContent(), QStringList("ZEP_ONE.MDB"));
}

TEST_F(Archive, ReportsItsProgress)
{
    Other(path).Run("with recursive n(i) as (select 100 union all select i + 1 from n where i < 9000) "
                    "insert into Patients (num, nom) select i, hex(zeroblob(1000)) from n");
    std::vector<int> done;
    int pages = 0;
    archives::CopyDatabase(path, target, {.progress = [&](int copied, int total) {
                               done.push_back(copied);
                               pages = total;
                           }});
    EXPECT_GT(done.size(), 1U);
    EXPECT_TRUE(std::ranges::is_sorted(done));
    EXPECT_EQ(done.back(), pages);
}

TEST_F(Archive, OverwritesNothingByACopyOrLink)
{
    WriteFile(target, "other");
    EXPECT_EQ(ErrorOf([&] { host::CopyFile(path, target); }), Error::FileExists);
    EXPECT_EQ(ErrorOf([&] { host::LinkFile(path, target); }), Error::FileExists);
    EXPECT_EQ(BytesOf(target), "other");
}

TEST_F(Archive, IsUnchangedWithoutADatabase)
{
    ASSERT_EQ(CopyError(), std::nullopt);
    const QByteArray yesterday = BytesOf(target);
    database.Close();
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(CopyError(), Error::FileNotFound);
    EXPECT_EQ(BytesOf(target), yesterday);
    EXPECT_EQ(ArchiveContent(), QStringList("ZEP_ONE.MDB"));
    EXPECT_FALSE(QFile::exists(path)) << "no empty file takes its place";
}

TEST_F(Archive, ReportsAMissingFolder)
{
    ASSERT_TRUE(QDir(folder.path()).rmdir("ARCHIVES"));
    EXPECT_EQ(CopyError(), Error::PathNotFound);
    EXPECT_FALSE(QDir(folder.filePath("ARCHIVES")).exists());
    ASSERT_TRUE(QDir(folder.path()).mkpath("ARCHIVES/ZEP_ONE.MDB"));
    EXPECT_EQ(CopyError(), Error::PathAccess);
}

} // namespace
} // namespace dao::test
