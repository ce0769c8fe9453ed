#include "archives/Archives.h"
#include "archives/Seal.h"
#include "core/globals.h"
#include "core/opening.h"
#include "data/Practice.h"
#include "faults/FolderContent.h"
#include "faults/SmallDisk.h"
#include "platform/basic/RuntimeError.h"
#include "platform/store/Opening.h"
#include "support/FolderInMemory.h"
#include "support/Globals.h"
#include "support/MainWindow.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Rounds.h"

#include <QDir>
#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

using forms::Icon;
using tests::FolderContent;

namespace {

constexpr qsizetype PageSize = 4096;
constexpr qsizetype HeadSize = 100;
constexpr qsizetype FreeListOffset = 32; // in the header: the first page of the free list

/// A practice with yesterday's archive copy, whose database is damaged in various ways.
class SpoiltDatabase : public testing::Test {
protected:
    SpoiltDatabase()
    {
        for (int act = 0; act < 150; ++act)
            practice.Act({.montant = static_cast<double>(act)});
        practice.Open(); // makes the program the file's only user
        tests::ResetGlobals();
        ScriptedDesk desk;
        tests::Quit(desk, tests::StartProgram(desk, practice.Folder()));
        sound = tests::BytesOf(database);
    }
    ~SpoiltDatabase() override
    {
        ::chmod(database.toUtf8().constData(), 0600);
        ::chmod(practice.Folder().toUtf8().constData(), 0700);
    }

    void Write(const QByteArray& bytes) const { tests::WriteContent(practice.Folder(), {{"ZEP_ONE.MDB", bytes}}); }

    /// Starts the program and types the code: it reports the error, both before the schema change and at the opening,
    /// and ends. Nothing in the folder has changed, not even the archive copy.
    void ExpectRefused(const basic::RuntimeError& error) const
    {
        const FolderContent before = tests::ContentOf(practice.Folder());
        ScriptedDesk desk;
        const QString text = core::ErrorText(error);
        desk.ExpectMessage(text, Icon::Exclamation, "Lumo ZEP");
        desk.ExpectMessage(text, Icon::Exclamation, "ZEP Lumo");
        tests::StartProgram(desk, practice.Folder());
        EXPECT_EQ(desk.EndCode(), 0);
        EXPECT_TRUE(tests::ContentOf(practice.Folder()) == before) << "something was written";
    }

    void ExpectRefused(const QByteArray& bytes, Error error) const
    {
        Write(bytes);
        ExpectRefused(basic::RuntimeError(error, "ZEP_ONE.MDB"));
    }

    /// The program says once that nothing may be written here, and what to do.
    void ExpectToldToBeProtected() const
    {
        ScriptedDesk desk;
        desk.ExpectMessage("Erreur N° 3027\nLa base de données ou son dossier « " + practice.Folder() +
                               " » est en lecture seule : rien ne pourrait y être enregistré. Donnez-vous le droit d'y "
                               "écrire, ou copiez le dossier sur un disque où vous l'avez, puis recommencez.",
                           Icon::Exclamation, "ZEP Lumo");
        tests::StartProgram(desk, practice.Folder());
        EXPECT_EQ(desk.EndCode(), 0);
        EXPECT_TRUE(tests::BytesOf(database) == sound);
    }

    /// The copy of the evening before, which was made at 18:02.
    void DateCopy() const { tests::DateFile(practice.File("ARCHIVES/ZEP_ONE.MDB"), QDate(2008, 6, 16)); }

    /// A damaged database is told as the rules have it, then the copy is offered.
    /// One that was changed since it was sealed is asked for once more.
    void ExpectOffer(ScriptedDesk& desk, forms::Answer answer, const std::optional<forms::Answer>& onceMore = {}) const
    {
        const QString text = core::ErrorText(basic::RuntimeError(Error::DamagedDatabase, "ZEP_ONE.MDB"));
        desk.ExpectMessage(text, Icon::Exclamation, "Lumo ZEP");
        desk.ExpectMessage(text, Icon::Exclamation, "ZEP Lumo");
        desk.ExpectMessage("Remettre la copie du 16/06/2008 à 18:02 ? Les actes saisis depuis n'y sont pas.",
                           Icon::Question, "ZEP Lumo", answer);
        if (onceMore)
            desk.ExpectMessage("Cette copie a été modifiée depuis sa clôture. La remettre quand même ?", Icon::Question,
                               "ZEP Lumo", *onceMore);
        tests::StartProgram(desk, practice.Folder());
    }

    /// Made sound again, it opens without a message.
    void ExpectOpens() const
    {
        ScriptedDesk desk;
        tests::StartProgram(desk, practice.Folder());
        EXPECT_EQ(core::TheDatabase.OpenRecordset("select count(num) as S1 from Actes")["S1"].Long(), 150);
        tests::ResetGlobals();
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
    const QString database = practice.File("ZEP_ONE.MDB");
    QByteArray sound;
};

} // namespace

TEST_F(SpoiltDatabase, IsRefusedWhenForeign)
{
    QByteArray ofAnotherProgram = sound;
    ofAnotherProgram.replace(68, 4, "\0\0\0\0", 4);
    const std::pair<const char*, QByteArray> files[] = {
        {"text", QByteArray("Cabinet d'Été;12 000,50\r\n").repeated(400)},
        {"another program's", ofAnotherProgram},
        {"a letter among zeros", QByteArray(HeadSize - 1, '\0') + "Z"},
    };
    for (const auto& [kind, bytes] : files) {
        SCOPED_TRACE(kind);
        ExpectRefused(bytes, Error::UnrecognizedFormat);
    }

    QByteArray newer = sound;
    newer[63] = char(newer[63] + 1);
    Write(newer);
    ExpectRefused(basic::RuntimeError::Described(
        Error::UnrecognizedFormat,
        "Format de base de données 'ZEP_ONE.MDB' non reconnu : le fichier vient d'une version plus "
        "récente du programme."));
    Write(sound);
    ExpectOpens();
}

TEST_F(SpoiltDatabase, IsRefusedWhenTruncated)
{
    std::mt19937 random(20080617);
    // SQLite itself reads the missing part of the last page as zeros, without an error.
    std::vector<qsizetype> lengths{sound.size() - 1, sound.size() - 31};
    lengths.insert(lengths.end(), {1, 15, 16, HeadSize - 1, HeadSize, 512, PageSize - 1, PageSize, PageSize + 1});
    for (int round = 0; round < tests::Rounds(25); ++round)
        lengths.push_back(std::uniform_int_distribution<qsizetype>(1, sound.size() - 1)(random));
    for (qsizetype pages = 2; pages * PageSize < sound.size(); pages += tests::IsLongForm() ? 1 : 5)
        lengths.push_back(pages * PageSize);
    for (const qsizetype length : lengths) {
        SCOPED_TRACE(length);
        ExpectRefused(sound.first(length), length < HeadSize ? Error::UnrecognizedFormat : Error::DamagedDatabase);
    }
    Write(sound);
    ExpectOpens();
}

TEST_F(SpoiltDatabase, IsRefusedAndNotCopiedWhenAPageIsDestroyed)
{
    const QByteArray copied = tests::BytesOf(practice.File("ARCHIVES/ZEP_ONE.MDB"));
    for (qsizetype start = 0; start < sound.size(); start += PageSize) {
        SCOPED_TRACE(start / PageSize + 1);
        // Keeps the header, so that the file is still recognised as ours.
        const qsizetype from = start == 0 ? HeadSize : start;
        const qsizetype size = start + PageSize - from;
        QByteArray bytes = sound;
        ExpectRefused(bytes.replace(from, size, QByteArray(size, '\xA5')), Error::DamagedDatabase);
        EXPECT_EQ(ErrorOf([&] { archives::CopyToArchives(practice.Folder()); }), Error::DamagedDatabase);
        EXPECT_TRUE(tests::BytesOf(practice.File("ARCHIVES/ZEP_ONE.MDB")) == copied);
        const bool isFreeList = start / PageSize + 1 == qFromBigEndian<quint32>(sound.constData() + FreeListOffset);
        if (tests::IsLongForm() && !isFreeList) // of which zeros say that it ends here
            ExpectRefused(bytes.replace(from, size, QByteArray(size, '\0')), Error::DamagedDatabase);
    }
    Write(sound);
    ExpectOpens();
}

TEST_F(SpoiltDatabase, IsRefusedWithoutWritePermission)
{
    const auto refuse = [this](const QString& path, mode_t protectedMode, mode_t mode) {
        ::chmod(path.toUtf8().constData(), protectedMode);
        ExpectToldToBeProtected();
        ::chmod(path.toUtf8().constData(), mode);
    };
    refuse(database, 0444, 0600);
    refuse(practice.Folder(), 0555, 0700);
    ExpectOpens();
}

TEST_F(SpoiltDatabase, IsRefusedOnAReadOnlyDisk)
{
    const FolderContent files = tests::ContentOf(practice.Folder());
    const tests::SmallDisk medium(practice.Folder(), 8192);
    if (!medium.IsMounted())
        GTEST_SKIP() << "no right to mount a disk";
    tests::WriteContent(practice.Folder(), files);
    medium.MakeReadOnly();
    ExpectToldToBeProtected();
}

TEST_F(SpoiltDatabase, NeverShowsAWrongBalanceAfterAFlippedByte)
{
    const auto balances = [this] {
        const store::SqliteHandle opened = store::OpenForWork(database, data::PracticeRules());
        return store::TextAnswer(opened.get(),
                                 "select group_concat(day || ' ' || sum) from (select Date as day, "
                                 "sum(montant) as sum from Actes where Date < '9999-12-31' group by Date)");
    };
    const std::string expected = balances();
    ASSERT_FALSE(expected.empty());
    std::mt19937 random(20080617);
    int refused = 0;
    const int flips = tests::Rounds(50);
    for (int flip = 0; flip < flips; ++flip) {
        const auto at = std::uniform_int_distribution<qsizetype>(0, sound.size() - 1)(random);
        SCOPED_TRACE(at);
        QByteArray bytes = sound;
        bytes[at] = char(bytes[at] ^ (1 << flip % 8));
        Write(bytes);
        try {
            EXPECT_EQ(balances(), expected);
        } catch (const basic::RuntimeError&) {
            ++refused;
        }
        for (const char* const beside : {"-wal", "-shm"})
            QFile::remove(database + beside);
    }
    EXPECT_GT(refused, flips / 20);
}

TEST_F(SpoiltDatabase, IsReplacedByTheNewestWholeCopyWhenTheUserWantsThat)
{
    const QByteArray zeroed = QByteArray(PageSize, '\0') + sound.sliced(PageSize);
    for (const QByteArray& emptied : {QByteArray(), QByteArray(1, '\0'), QByteArray(sound.size(), '\0'), zeroed}) {
        DateCopy();
        Write(emptied);
        {
            ScriptedDesk desk;
            ExpectOffer(desk, forms::Answer::Yes);
            tests::ResetGlobals();
        }
        ExpectOpens();
    }
    for (const QString& kept : QDir(practice.File("ARCHIVES")).entryList({"*avant*"}))
        EXPECT_TRUE(QFile::remove(practice.File("ARCHIVES/" + kept)));

    DateCopy();
    QByteArray damaged = sound;
    damaged.replace(5 * PageSize, PageSize, QByteArray(PageSize, '\xA5'));
    Write(damaged);
    const FolderContent before = tests::ContentOf(practice.Folder());
    {
        ScriptedDesk desk;
        ExpectOffer(desk, forms::Answer::No);
        EXPECT_EQ(desk.EndCode(), 0);
        EXPECT_TRUE(tests::ContentOf(practice.Folder()) == before);
    }
    {
        ScriptedDesk desk;
        ExpectOffer(desk, forms::Answer::Yes);
        EXPECT_EQ(desk.EndCode(), std::nullopt) << "the opening goes on";
        EXPECT_EQ(core::TheDatabase.OpenRecordset("select count(num) as S1 from Actes")["S1"].Long(), 150);
        EXPECT_EQ(core::PermnTable.RecordCount(), 1);
        tests::ResetGlobals();
    }
    FolderContent after = tests::ContentOf(practice.Folder());
    const auto kept = std::ranges::find_if(after, [](const auto& file) { return file.first.contains("avant"); });
    ASSERT_NE(kept, after.end());
    EXPECT_TRUE(kept->second == damaged);
    ExpectOpens();
}

TEST_F(SpoiltDatabase, IsLeftAloneWhereNoWholeCopyIsToBeHad)
{
    DateCopy();
    Write(QByteArray("Cabinet"));
    ExpectRefused(basic::RuntimeError(Error::UnrecognizedFormat, "ZEP_ONE.MDB")); // foreign: no question
    const QString copy = practice.File("ARCHIVES/ZEP_ONE.MDB");
    ASSERT_EQ(tests::OtherProgram(copy).Run("update Presta set denom = 'X'"), SQLITE_OK);
    DateCopy();
    Write(sound.first(3 * PageSize));
    for (const forms::Answer onceMore : {forms::Answer::No, forms::Answer::Yes}) {
        ScriptedDesk desk;
        ExpectOffer(desk, forms::Answer::Yes, onceMore);
        EXPECT_EQ(desk.EndCode().has_value(), onceMore == forms::Answer::No);
        tests::ResetGlobals();
    }
    QFile(copy).resize(2 * PageSize);
    DateCopy();
    Write(sound.first(3 * PageSize));
    ExpectRefused(basic::RuntimeError(Error::DamagedDatabase, "ZEP_ONE.MDB"));
    archives::RemoveSealed(copy);
    ExpectRefused(basic::RuntimeError(Error::DamagedDatabase, "ZEP_ONE.MDB"));
}
