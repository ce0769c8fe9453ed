#include "archives/Archives.h"
#include "archives/OldSeal.h"
#include "archives/Seal.h"
#include "data/Practice.h"
#include "platform/host/FileWork.h"
#include "platform/store/Creation.h"
#include "platform/store/FileHeader.h"
#include "platform/store/Opening.h"
#include "support/Files.h"
#include "support/OtherProgram.h"
#include "support/Printing.h"
#include "support/Unix.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>

using basic::Error;
using tests::BytesOf;
using tests::WriteFile;

namespace {

/// A practice with one act, copied; since then it has two.
class Restoring : public testing::Test {
protected:
    Restoring()
    {
        data::CreatePractice(folder, {.accessCode = 6, .letterhead = {}});
        Run("insert into Actes (Type, montant) values ('C', 40)");
        archives::CopyToArchives(folder);
        Run("insert into Actes (Type, montant) values ('K1', 50)");
    }

    void Run(const char* sql) const { ASSERT_EQ(tests::OtherProgram(database).Run(sql), SQLITE_OK) << sql; }
    QString Acts() const { return tests::OtherProgram(database).Answer("select count(*) from Actes"); }

    std::optional<Error> ErrorOfRestore() const
    {
        return ErrorOf([this] { archives::Restore(copy, folder); });
    }

    QStringList Files() const { return QDir(folder).entryList(QDir::Files | QDir::Hidden).filter("ZEP_ONE"); }

    QTemporaryDir place;
    const QString folder = place.filePath("cabinet");
    const QString database = folder + "/ZEP_ONE.MDB";
    const QString archives = folder + "/ARCHIVES";
    const QString copy = archives + "/ZEP_ONE.MDB";
};

} // namespace

TEST_F(Restoring, PutsTheCopyInPlaceAndKeepsThePresentFile)
{
    const QByteArray present = BytesOf(database);
    const QByteArray copied = BytesOf(copy);
    const QString kept = archives::Restore(copy, folder);
    static const QRegularExpression name(
        "/ARCHIVES/ZEP_ONE avant restauration \\d{4}-\\d\\d-\\d\\d \\d\\d-\\d\\d-\\d\\d\\.MDB$");
    EXPECT_TRUE(name.match(kept).hasMatch()) << kept.toStdString();
    EXPECT_TRUE(BytesOf(kept) == present);
    EXPECT_TRUE(BytesOf(copy) == copied);
    EXPECT_EQ(Acts(), "1");
    EXPECT_EQ(Files(), QStringList("ZEP_ONE.MDB"));

    archives::Restore(kept, folder); // and back again
    EXPECT_EQ(Acts(), "2");
    EXPECT_TRUE(BytesOf(kept) == present) << "the kept file isn't the one that is worked with";
    EXPECT_EQ(QDir(archives).entryList({"*.MDB"}, QDir::Files).size(), 3);
    NEEDS_UNIX("mode bits");
    struct stat state = {};
    ::stat(database.toUtf8().constData(), &state);
    EXPECT_EQ(state.st_mode & 0777, 0600U);
}

TEST_F(Restoring, KeepsTheLogOfThePresentFileAndLeavesNone)
{
    tests::ChangeInLog(database, "insert into Actes (Type) values ('K2')");
    const QByteArray present = BytesOf(database), log = BytesOf(database + "-wal");
    const QString kept = archives::Restore(copy, folder);
    EXPECT_TRUE(BytesOf(kept) == present);
    EXPECT_TRUE(BytesOf(kept + "-wal") == log);
    EXPECT_EQ(Files(), QStringList("ZEP_ONE.MDB"));
    EXPECT_EQ(Acts(), "1");

    archives::Restore(kept, folder); // with what its log holds
    EXPECT_EQ(Acts(), "3");
    EXPECT_EQ(Files(), QStringList("ZEP_ONE.MDB"));
}

TEST_F(Restoring, TakesThePlaceOfADamagedOrMissingFile)
{
    for (const QByteArray& bytes : {BytesOf(database).first(5000), QByteArray("rien"), QByteArray()}) {
        WriteFile(database, bytes);
        WriteFile(database + "-wal", QByteArray(4096, '\xA5'));
        const QString kept = archives::Restore(copy, folder);
        EXPECT_TRUE(BytesOf(kept) == bytes);
        EXPECT_EQ(BytesOf(kept + "-wal").size(), 4096);
        EXPECT_EQ(Acts(), "1");
    }
    QFile::remove(database);
    EXPECT_EQ(archives::Restore(copy, folder), "");
    EXPECT_EQ(Acts(), "1");
}

TEST_F(Restoring, BringsAnOlderCopyUpToDate)
{
    archives::RemoveSealed(copy);
    store::CreateDatabase(copy, data::Schema().remove(" AUTOINCREMENT"));
    tests::OtherProgram(copy).Run("pragma user_version=1; insert into Recettes (num, objet) values (7, 'Coton')");
    archives::Restore(copy, folder);
    tests::OtherProgram restored(database);
    EXPECT_EQ(restored.Answer("pragma user_version"), QString::number(store::SchemaVersion));
    EXPECT_EQ(restored.Answer("select seq from sqlite_sequence where name = 'Recettes'"), "7");
}

TEST_F(Restoring, ChangesNothingWhenItRefuses)
{
    const QByteArray whole = BytesOf(copy);
    QByteArray newer = whole;
    newer[63] = 9;
    QByteArray damaged = whole;
    damaged.replace(4096, 4096, QByteArray(4096, '\xA5'));
    const auto refuses = [this](Error error) {
        const QByteArray before = BytesOf(database);
        EXPECT_EQ(ErrorOfRestore(), error);
        EXPECT_TRUE(BytesOf(database) == before);
        EXPECT_EQ(Files(), QStringList("ZEP_ONE.MDB"));
        EXPECT_EQ(QDir(archives).entryList({"*avant*"}, QDir::Files), QStringList());
    };
    for (const auto& [bytes, error] :
         {std::pair(newer, Error::UnrecognizedFormat), std::pair(damaged, Error::DamagedDatabase),
          std::pair(whole.first(whole.size() - 1), Error::DamagedDatabase),
          std::pair(QByteArray("Cabinet"), Error::UnrecognizedFormat)}) {
        WriteFile(copy, bytes);
        refuses(error);
    }
    WriteFile(copy, whole);
    tests::OtherProgram(copy).Run("create trigger t after insert on Actes begin select 1; end");
    refuses(Error::UnrecognizedFormat);
    QFile::remove(copy);
    refuses(Error::DatabaseNotFound);
    WriteFile(copy, whole);
    EXPECT_EQ(ErrorOfRestore(), std::nullopt);
}

TEST_F(Restoring, RemovesWhatAKilledOneHasLeftAndSoDoesTheShutdown)
{
    const QString linked = archives + "/ZEP_ONE avant restauration 2026-11-24 18-02-33.MDB";
    const QStringList replaced{"*avant*"};
    for (const bool restores : {false, true}) {
        ASSERT_TRUE(host::TryLink(database, linked));
        WriteFile(database + ".part", "half");
        WriteFile(database + ".part-wal", "half");
        if (restores)
            archives::Restore(copy, folder);
        else
            archives::CopyToArchives(folder);
        EXPECT_FALSE(QFile::exists(linked)) << "it was the database itself";
        EXPECT_EQ(Files(), QStringList("ZEP_ONE.MDB"));
        EXPECT_EQ(QDir(archives).entryList(replaced, QDir::Files).size(), restores);
    }

    const QStringList whole = QDir(archives).entryList(QDir::Files);
    for (const char* const name :
         {"ZEP_ONE.MDB.part", "ZEP_ONE 2026-11-23.MDB.part2", "ZEP_ONE.MDB.sceau.part", "ZEP_ONE avant x.MDB.part-wal",
          "ZEP_ONE avant x.MDB-wal", "ZEP_ONE 2026-11-23.MDB.sceau"})
        WriteFile(archives + "/" + name, "half");
    {
        const host::FolderLock copying(archives);
        archives::RemoveLeftovers(folder);
        EXPECT_TRUE(QFile::exists(archives + "/ZEP_ONE.MDB.part")) << "it is being made";
    }
    archives::RemoveLeftovers(folder);
    EXPECT_EQ(QDir(archives).entryList(QDir::Files), whole);
}

// The seal shows a change of any byte.
TEST_F(Restoring, NeverPutsBackDamage)
{
    const QByteArray whole = BytesOf(copy);
    constexpr int places = 300;
    for (int flip = 0; flip < places; ++flip) {
        QByteArray bytes = whole;
        const qsizetype at = flip * whole.size() / places;
        bytes[at] = char(bytes[at] ^ (1 << flip % 8));
        WriteFile(copy, bytes); // in place: the seal stays
        EXPECT_TRUE(ErrorOfRestore().has_value()) << at;
    }
}

TEST_F(Restoring, KnowsTheSealsOfEarlierVersions)
{
    NEEDS_UNIX("attributes that Linux gives to files");
    for (const auto& [size, digest] :
         {std::pair(512, "a772cc84e61fb4eb85e0a310b2c910df"), std::pair(2048, "8f8cfb0ffe0e082972c0424c598a2445"),
          std::pair(66048, "25b045cfa40d4132f0b20d244f981e9d"), std::pair(511, "")}) {
        QByteArray bytes(size, '\0');
        for (int i = 0; i < size; ++i)
            bytes[i] = char(i % 251 + i / 97);
        WriteFile(folder + "/pages", bytes);
        EXPECT_EQ(archives::PagesDigestOf(folder + "/pages"), digest);
    }

    archives::RemoveSealed(copy);
    archives::CopyToArchives(folder);
    QFile::remove(copy + archives::SealEnding);
    const QByteArray seal = archives::PagesDigestOf(copy) + "4f";
    if (::setxattr(host::SystemPath(copy).c_str(), "user.zep.seal", seal.constData(), std::size_t(seal.size()), 0) != 0)
        GTEST_SKIP() << "no attributes here";
    EXPECT_EQ(archives::ConditionOf(copy).kind, archives::CopyCondition::Kind::Whole);
    QByteArray changed = BytesOf(copy);
    changed[27] = char(changed[27] + 1); // in the header: the count of changes
    WriteFile(copy, changed);
    EXPECT_EQ(archives::ConditionOf(copy).kind, archives::CopyCondition::Kind::Changed);
}
