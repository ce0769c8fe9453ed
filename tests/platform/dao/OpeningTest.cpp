#include "SmallPractice.h"

#include "platform/dao/Connection.h"

#include <QDir>
#include <QElapsedTimer>

#include <sys/stat.h>
#include <thread>

namespace dao::test {
namespace {

/// A closed database, to be spoilt and opened again.
class OpenedFile : public SmallPractice {
protected:
    OpenedFile()
    {
        database.Close();
        sound = Bytes();
    }
    ~OpenedFile() override
    {
        busyMilliseconds = patience;
        ::chmod(path.toUtf8().constData(), 0600);
        ::chmod(folder.path().toUtf8().constData(), 0700);
    }

    QByteArray Bytes() const
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    void Write(const QByteArray& bytes) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
    }
    int OpeningError() const
    {
        return ErrorOf([&] { workspace.OpenDatabase(path); });
    }
    QStringList FolderContent() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    const int patience = busyMilliseconds;
    QByteArray sound;
    static constexpr int pageSize = 4096;
};

TEST_F(OpenedFile, IsRefusedWhenItIsNoneOfOurs)
{
    QByteArray otherMark = sound;
    otherMark[70] = 'x';
    QByteArray newer = sound;
    newer[63] = 2;
    QByteArray oldEngine(pageSize * 2, '\0');
    oldEngine.replace(0, 12, QByteArray("\0\1\0\0Standard", 12));
    for (const QByteArray& bytes : {QByteArray(), QByteArray("x"), QByteArray("ZEP\n").repeated(2000), oldEngine,
                                    otherMark, newer, sound.first(15), sound.first(99)}) {
        Write(bytes);
        EXPECT_EQ(OpeningError(), 3343) << bytes.left(20).toStdString();
        EXPECT_EQ(ErrorOf([&] { CheckDatabase(path); }), 3343);
        EXPECT_EQ(Bytes(), bytes) << "left as it was";
        EXPECT_EQ(FolderContent(), QStringList({"system.mdw", "ZEP_ONE.MDB"}));
    }
    QFile::remove(path);
    EXPECT_EQ(OpeningError(), 3024);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(OpenedFile, IsRefusedWhenCutAtAnyLength)
{
    for (qsizetype length = 0; length < sound.size(); length += length < 600 ? 7 : 509) {
        Write(sound.first(length));
        const int error = OpeningError();
        EXPECT_TRUE(error == 3343 || error == 3049) << error << " at length " << length;
        EXPECT_EQ(Bytes().size(), length);
        EXPECT_EQ(FolderContent().size(), 2) << length;
    }
}

TEST_F(OpenedFile, IsRefusedWhenAnyPageIsDestroyed)
{
    for (qsizetype start = 0; start < sound.size(); start += pageSize) {
        QByteArray bytes = sound;
        // The first page keeps its mark, so that it isn't taken for a foreign file.
        const qsizetype from = start == 0 ? 100 : start;
        bytes.replace(from, start + pageSize - from, QByteArray(start + pageSize - from, '\x5A'));
        Write(bytes);
        EXPECT_EQ(OpeningError(), 3049) << start;
        EXPECT_EQ(Bytes(), bytes);
        EXPECT_EQ(FolderContent().size(), 2);
        EXPECT_FALSE(CheckDatabase(path).isEmpty());
    }
    Write(sound);
    EXPECT_EQ(OpeningError(), 0);
    EXPECT_TRUE(CheckDatabase(path).isEmpty());
}

TEST_F(OpenedFile, SaysThatItIsReadOnlyBeforeAnyEdit)
{
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0444), 0);
    EXPECT_EQ(OpeningError(), 3027);
    ASSERT_EQ(::chmod(path.toUtf8().constData(), 0600), 0);
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0555), 0);
    EXPECT_EQ(OpeningError(), 3027);
    EXPECT_TRUE(CheckDatabase(path).isEmpty()) << "a look doesn't ask for more than reading";
    ASSERT_EQ(::chmod(folder.path().toUtf8().constData(), 0700), 0);
    EXPECT_EQ(OpeningError(), 0);
    EXPECT_EQ(FolderContent().size(), 2);
}

TEST_F(OpenedFile, WaitsForALockThatIsSoonGivenBack)
{
    {
        Other other(path);
        ASSERT_EQ(other.Run("pragma locking_mode = exclusive; update Presta set denom = denom"), SQLITE_OK);
        busyMilliseconds = 150;
        QElapsedTimer waited;
        waited.start();
        EXPECT_EQ(OpeningError(), 3187);
        EXPECT_GE(waited.elapsed(), 100);
    }
    busyMilliseconds = patience;
    EXPECT_EQ(OpeningError(), 0);

    Other other(path);
    ASSERT_EQ(other.Run("pragma journal_mode = delete; begin exclusive"), SQLITE_OK);
    std::thread release([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        other.Run("commit");
    });
    EXPECT_EQ(OpeningError(), 0);
    release.join();
}

TEST_F(OpenedFile, TakesUpTheLogOfAProgramThatDied)
{
    // The folder as it was while another had it open: what a kill leaves.
    const QString saved = folder.filePath("saved");
    ASSERT_TRUE(QDir().mkdir(saved));
    {
        Other other(path);
        ASSERT_EQ(other.Run("update Actes set montant = 77 where num = 1"), SQLITE_OK);
        for (const char* const part : {"", "-wal", "-shm"})
            ASSERT_TRUE(QFile::copy(path + part, saved + "/ZEP_ONE.MDB" + part));
    }
    {
        const Database found = workspace.OpenDatabase(saved + "/ZEP_ONE.MDB");
        EXPECT_EQ(found.OpenRecordset("Actes")["montant"].Double(), 77);
    }
    // Garbage in place of a log is none.
    QFile log(path + "-wal");
    ASSERT_TRUE(log.open(QIODevice::WriteOnly));
    log.write(QByteArray(10000, '\x37'));
    log.close();
    EXPECT_EQ(workspace.OpenDatabase(path).OpenRecordset("Actes")["montant"].Double(), 77);
}

TEST_F(OpenedFile, LeavesTheLogOfADamagedFileAsItIs)
{
    {
        Other other(path);
        ASSERT_EQ(other.Run("update Actes set montant = 77 where num = 1"), SQLITE_OK);
        ASSERT_TRUE(QFile::copy(path + "-wal", folder.filePath("log")));
    }
    Write(sound.first(3 * pageSize) + QByteArray(sound.size() - 3 * pageSize, '\x5A'));
    ASSERT_TRUE(QFile::rename(folder.filePath("log"), path + "-wal"));
    const qint64 size = QFileInfo(path + "-wal").size();
    EXPECT_EQ(OpeningError(), 3049);
    EXPECT_EQ(QFileInfo(path + "-wal").size(), size);
    EXPECT_EQ(Bytes().mid(3 * pageSize, 4), "ZZZZ");
}

TEST_F(OpenedFile, KeepsALeftLogOutOfAnArchiveCopyPutBack)
{
    {
        Other other(path);
        ASSERT_EQ(other.Run("pragma journal_mode = delete"), SQLITE_OK);
        sound = Bytes();
        ASSERT_EQ(other.Run("pragma journal_mode = wal; delete from Actes"), SQLITE_OK);
        ASSERT_TRUE(QFile::copy(path + "-wal", folder.filePath("log")));
    }
    Write(sound);
    ASSERT_TRUE(QFile::rename(folder.filePath("log"), path + "-wal"));
    EXPECT_EQ(workspace.OpenDatabase(path).OpenRecordset("select count(*) as S1 from Actes")["S1"].Long(), 6);
    EXPECT_TRUE(QFile::exists(path + "-wal.set-aside")) << "nothing is thrown away";
}

TEST_F(OpenedFile, IsLookedOverAgainWhenAnotherHasChangedIt)
{
    Database first = workspace.OpenDatabase(path);
    Database second = workspace.OpenDatabase(path);
    first.Close();
    second.Close();
    QByteArray bytes = sound;
    bytes.replace(2 * pageSize, pageSize, QByteArray(pageSize, '\x5A'));
    Write(bytes);
    EXPECT_EQ(OpeningError(), 3049);
}

TEST_F(OpenedFile, IsMadeForItsOwnerAlone)
{
    database = workspace.OpenDatabase(path);
    database.Execute("delete * from Prov where num = 1");
    for (const char* const file : {"ZEP_ONE.MDB", "ZEP_ONE.MDB-wal", "system.mdw"}) {
        const QFile::Permissions others = QFile::permissions(folder.filePath(file)) &
                                          (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther);
        EXPECT_FALSE(others) << file;
    }
    EXPECT_EQ(ErrorOf([&] { CreateDatabase(path, "create table T (a)"); }), 3204);
    EXPECT_EQ(ErrorOf([&] { CreateDatabase(folder.filePath("none/x"), "create table T (a)"); }), 76);
    EXPECT_EQ(ErrorOf([&] { CreateDatabase(folder.filePath("half"), "create table T (a); create tble"); }), 3075);
    EXPECT_FALSE(QFile::exists(folder.filePath("half")));
}

TEST_F(OpenedFile, AsksForTheAccountOfTheWorkgroup)
{
    Engine engine;
    engine.SystemDB = folder.filePath("system.mdw");
    const auto error = [&](const char* user, const char* password) {
        return ErrorOf([&] { engine.CreateWorkspace("Special", user, password); });
    };
    EXPECT_EQ(error("admin", "secret"), 0);
    EXPECT_EQ(error("ADMIN", "Secret"), 3029);
    EXPECT_EQ(error("ADMIN", ""), 3029);
    EXPECT_EQ(error("OTHER", "secret"), 3029);

    QFile file(engine.SystemDB);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    file.close();
    EXPECT_FALSE(whole.contains("secret"));
    for (const QByteArray& bytes : {QByteArray(), whole.first(whole.size() / 2), QByteArray(8000, '\n'),
                                    QByteArray(whole).replace("20000", "2000000000")}) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        file.close();
        EXPECT_EQ(error("ADMIN", "secret"), 3028);
    }
    file.remove();
    EXPECT_EQ(error("ADMIN", "secret"), 3028);
}

} // namespace
} // namespace dao::test
