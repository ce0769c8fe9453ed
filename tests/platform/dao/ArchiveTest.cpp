#include "SmallPractice.h"

#include "platform/dao/ArchiveCopy.h"

#include <QDir>

#include <atomic>
#include <csignal>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace dao::test {
namespace {

class Archive : public SmallPractice {
protected:
    Archive() { EXPECT_TRUE(QDir(folder.path()).mkdir("ARCHIVES")); }
    ~Archive() override { ::chmod(folder.filePath("ARCHIVES").toUtf8().constData(), 0700); }

    int CopyError() const
    {
        return ErrorOf([&] { CopyDatabase(path, target); });
    }
    QByteArray Bytes(const QString& name) const
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    QStringList ArchiveContent() const
    {
        return QDir(folder.filePath("ARCHIVES")).entryList(QDir::Files | QDir::Hidden);
    }
    static qint64 Acts(const QString& name)
    {
        Other copy("file:" + name + "?immutable=1");
        return copy.Answer("select count(*) from Actes").toLongLong();
    }

    const QString target = folder.filePath("ARCHIVES/ZEP_ONE.MDB");
};

TEST_F(Archive, HoldsWhatWasSavedAndOpensFromReadOnlyMedia)
{
    database.Execute("update Actes set montant = 42 where num = 2");
    EXPECT_EQ(CopyError(), 0) << "while the database is open";
    database.Close();
    EXPECT_EQ(CopyError(), 0);
    EXPECT_EQ(ArchiveContent(), QStringList("ZEP_ONE.MDB")) << "nothing half made stays";
    EXPECT_EQ(QFile::permissions(target) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_TRUE(CheckDatabase(target).isEmpty());

    ASSERT_EQ(::chmod(folder.filePath("ARCHIVES").toUtf8().constData(), 0555), 0);
    Other medium("file:" + target + "?mode=ro");
    EXPECT_EQ(medium.Answer("select montant from Actes where num = 2"), "42.0");
    ASSERT_EQ(::chmod(folder.filePath("ARCHIVES").toUtf8().constData(), 0700), 0);

    // Put back, it is worked with like any other.
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::copy(target, path));
    const Database again = workspace.OpenDatabase(path);
    again.Execute("update Actes set montant = 43 where num = 2");
    EXPECT_EQ(again.OpenRecordset("select * from Actes where num = 2")["montant"].Double(), 43);
}

TEST_F(Archive, StaysAsItWasWhenTheCopyFails)
{
    ASSERT_EQ(CopyError(), 0);
    const QByteArray yesterday = Bytes(target);
    database.Execute("delete * from Actes");

    ASSERT_EQ(::chmod(folder.filePath("ARCHIVES").toUtf8().constData(), 0555), 0);
    EXPECT_EQ(CopyError(), 70);
    ASSERT_EQ(::chmod(folder.filePath("ARCHIVES").toUtf8().constData(), 0700), 0);
    EXPECT_EQ(Bytes(target), yesterday);

    database.Close();
    QByteArray damaged = Bytes(path);
    damaged.replace(2 * 4096, 4096, QByteArray(4096, '\x5A'));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(damaged);
    file.close();
    EXPECT_EQ(CopyError(), 3049);
    EXPECT_EQ(Bytes(target), yesterday) << "a damaged file never replaces a good copy";

    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(CopyError(), 53);
    EXPECT_EQ(Bytes(target), yesterday);
    EXPECT_EQ(ArchiveContent(), QStringList("ZEP_ONE.MDB"));
    EXPECT_FALSE(QFile::exists(path)) << "no empty file takes its place";
}

TEST_F(Archive, NamesTheFolderThatIsMissing)
{
    ASSERT_TRUE(QDir(folder.path()).rmdir("ARCHIVES"));
    EXPECT_EQ(CopyError(), 76);
    EXPECT_FALSE(QDir(folder.filePath("ARCHIVES")).exists());
    ASSERT_TRUE(QDir(folder.path()).mkpath("ARCHIVES/ZEP_ONE.MDB"));
    EXPECT_EQ(CopyError(), 75);
}

TEST_F(Archive, ReportsAFullDiskAndLeavesYesterdaysCopy)
{
    ASSERT_EQ(CopyError(), 0);
    const QByteArray yesterday = Bytes(target);
    Other other(path);
    ASSERT_EQ(other.Run("with recursive n(i) as (select 10 union all select i + 1 from n where i < 20000) "
                        "insert into Actes (num, Type) select i, 'K' || i from n"),
              SQLITE_OK);

    // No file may grow past this size, as on a disk that is full.
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit = {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    for (const rlim_t size : {rlim_t{0}, rlim_t{8192}, rlim_t{200000}}) {
        const rlimit small = {size, limit.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
        const int error = CopyError();
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        EXPECT_EQ(error, 61) << size;
        EXPECT_EQ(Bytes(target), yesterday);
        EXPECT_EQ(ArchiveContent(), QStringList("ZEP_ONE.MDB"));
    }
    std::signal(SIGXFSZ, before);

    // A real full disk, where one may be made.
    if (::mount("tmpfs", folder.filePath("ARCHIVES").toUtf8().constData(), "tmpfs", 0, "size=200k") == 0) {
        EXPECT_EQ(CopyError(), 61);
        EXPECT_TRUE(ArchiveContent().isEmpty());
        EXPECT_EQ(::umount(folder.filePath("ARCHIVES").toUtf8().constData()), 0);
    }
    EXPECT_EQ(CopyError(), 0);
    EXPECT_EQ(Acts(target), 6 + 19991);
}

TEST_F(Archive, IsOfOneMomentWhileAnotherWrites)
{
    database.Close();
    std::atomic<bool> goesOn = true;
    std::atomic<int> saved = 0;
    std::thread writer([&] {
        Other other(path);
        while (goesOn) {
            // Each pair is one change: a copy may hold both rows or none.
            if (other.Run(
                    "begin immediate; insert into Actes (Type) values ('C'); insert into Actes (Type) values ('C');"
                    "commit") == SQLITE_OK)
                ++saved;
        }
    });
    for (int i = 0; i < 10; ++i) {
        const int before = saved;
        EXPECT_EQ(CopyError(), 0);
        const qint64 acts = Acts(target);
        EXPECT_GE(acts, 6 + 2 * before) << "every saved row";
        EXPECT_EQ(acts % 2, 0);
        EXPECT_TRUE(CheckDatabase(target).isEmpty());
    }
    goesOn = false;
    writer.join();
}

} // namespace
} // namespace dao::test
