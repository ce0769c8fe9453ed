#include "archives/Archives.h"
#include "core/globals.h"
#include "core/opening.h"
#include "data/Practice.h"
#include "faults/FolderContent.h"
#include "platform/basic/RuntimeError.h"
#include "platform/host/FileWork.h"
#include "support/ChildProcess.h"
#include "support/Globals.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Rounds.h"

#include <QFile>
#include <QProcess>
#include <QSet>
#include <gtest/gtest.h>
#include <random>
#include <unistd.h>

using core::TheDatabase;

namespace {

/// A practice that is open while copies are put over its file, as `cp` does, and other programs work on it.
class MixedDatabase : public testing::Test {
protected:
    MixedDatabase()
    {
        for (int act = 0; act < 4; ++act)
            acts << practice.Act({.montant = 10. * act});
        practice.Open();
    }

    static void Copy(const QString& from, const QString& to) { ASSERT_EQ(QProcess::execute("cp", {from, to}), 0); }
    int Pick(int count) { return int(random() % unsigned(count)); }

    /// Changes an act; with `checkpoints` enough rows that the log is moved into the file.
    void Save(const dao::Database& database, bool checkpoints)
    {
        if (checkpoints) {
            dao::Transaction transaction(database);
            dao::Recordset rows = database.OpenRecordset("Recettes");
            for (int row = 0; row < 3000; ++row) {
                rows.AddNew();
                rows["objet"] = QString("x").repeated(400);
                rows.Update();
            }
            transaction.Commit();
        } else {
            database.Execute(QString("update Actes set montant = %1 where num = %2").arg(++saved).arg(acts[Pick(4)]));
        }
        dao::DBEngine.Idle(dao::RefreshCache);
    }
    bool IsRefused()
    {
        try {
            Save(TheDatabase, false);
            return false;
        } catch (const basic::RuntimeError& error) {
            EXPECT_EQ(error.Code(), basic::Error::FileReplaced) << error.Description().toStdString();
            return true;
        }
    }

    std::mt19937 random{20260617};
    int saved = 0;
    tests::Practice practice;
    QList<dao::Key> acts;
    const QString file = practice.File("ZEP_ONE.MDB");
    const QString copy = practice.File("copie.MDB");
};

} // namespace

// At any moment, before and after checkpoints and the saves of another program, a copy of the same session is told from
// the file, also one that was worked on elsewhere; and without a copy no save is refused.
TEST_F(MixedDatabase, IsRecognisedAtTheNextSave)
{
    int recognised = 0;
    for (int round = 0; round < tests::Rounds(20); ++round) {
        SCOPED_TRACE(round);
        tests::ResetGlobals();
        practice.Open();
        std::optional<dao::Database> other;
        const bool isChangedElsewhere = Pick(2) == 0;
        const auto work = [&](int steps) {
            for (int step = 0; step < steps; ++step) {
                if (Pick(4) == 0)
                    other = core::TheWorkspace.OpenDatabase(file, data::PracticeRules());
                const bool isOther = other && Pick(2) == 0;
                Save(isOther ? *other : TheDatabase, Pick(3) == 0);
                if (Pick(3) == 0)
                    tests::OtherProgram(file).Run("pragma wal_checkpoint(passive)");
                if (isChangedElsewhere || Pick(2) == 0) {
                    ASSERT_NO_THROW(TheDatabase.RequireSameFile());
                }
            }
        };
        work(Pick(4));
        Copy(file, copy);
        const QByteArray copied = tests::BytesOf(copy);
        if (isChangedElsewhere) {
            dao::Database elsewhere = core::TheWorkspace.OpenDatabase(copy, data::PracticeRules());
            Save(elsewhere, Pick(2) == 0);
            elsewhere.Close();
        }
        work(Pick(4));
        if (Pick(2) == 0)
            other.reset();
        const bool isAnother = QProcess::execute("cmp", {"-s", file, copy}) != 0;
        Copy(copy, file);
        EXPECT_EQ(IsRefused(), isAnother);
        recognised += isAnother ? 1 : 0;
        if (!isAnother)
            continue;
        other.reset();
        tests::ResetGlobals();
        EXPECT_TRUE(QFile::exists(file + "-wal.set-aside") || copied == tests::BytesOf(file));
    }
    EXPECT_GT(recognised, tests::Rounds(20) / 2);
}

// Another program opens, saves and closes all the time. What it was told is saved is in the practice or in a file that
// a restoration has kept.
TEST_F(MixedDatabase, IsRestoredWithoutLosingAnAcknowledgedSave)
{
    tests::ResetGlobals();
    archives::CopyToArchives(practice.Folder());
    tests::ChildProcess program([this](tests::Reports& reports) {
        for (int expense = 1;; ++expense) {
            practice.Open();
            dao::Recordset rows = TheDatabase.OpenRecordset("Recettes");
            rows.AddNew();
            rows["montant"] = expense;
            rows.Update();
            reports.Send(expense);
            tests::ResetGlobals();
            ::usleep(unsigned(expense % 7) * 5000); // closed for a while, or not
        }
    });
    ASSERT_TRUE(program.Next<int>());
    int restored = 0;
    while (restored < tests::Rounds(10)) {
        try {
            archives::Restore(practice.File("ARCHIVES/ZEP_ONE.MDB"), practice.Folder());
            ++restored;
        } catch (const basic::RuntimeError& error) {
            ASSERT_EQ(error.Code(), basic::Error::Locked) << error.Description().toStdString();
        }
    }
    EXPECT_TRUE(program.Kill());
    int acknowledged = 1;
    while (const auto expense = program.Next<int>())
        acknowledged = *expense;

    QSet<QString> found;
    QStringList files{file};
    for (const archives::ArchivedCopy& kept : archives::ArchivedCopies(practice.Folder()))
        files << kept.path;
    for (const QString& each : files) {
        const QString expenses =
            tests::OtherProgram(each).Answer("select group_concat(cast(montant as integer)) from Recettes");
        for (const QString& expense : expenses.split(','))
            found << expense;
    }
    for (int expense = 1; expense <= acknowledged; ++expense)
        EXPECT_TRUE(found.contains(QString::number(expense))) << expense << " of " << acknowledged;
}

// An opening that waits for the locks of a restoration works on the file that the restoration puts in place.
TEST_F(MixedDatabase, IsOpenedAnewWhenReplacedWhileTheOpeningWaited)
{
    tests::ResetGlobals();
    Copy(file, copy);
    tests::OtherProgram(copy).Run("update Actes set montant = 55 where num = 2");
    const QString held = practice.File("held");
    tests::ChildProcess program([&](tests::Reports& reports) {
        while (!QFile::exists(held))
            ::usleep(1000);
        core::DataFolder = practice.Folder();
        core::CreateTheWorkspace();
        TheDatabase = core::TheWorkspace.OpenDatabase(file, data::PracticeRules());
        TheDatabase.Execute("update Actes set montant = 77 where num = 1");
        reports.Send('!');
        tests::ResetGlobals();
    });
    std::optional<host::DatabaseHold> hold(file);
    Copy(copy, held);
    ::usleep(300'000);
    hold->ReplaceBy(copy);
    hold.reset();
    EXPECT_EQ(program.Next<char>(), '!');
    program.Wait();
    EXPECT_EQ(tests::OtherProgram(file).Answer("select group_concat(montant) from Actes where num < 3"), "77.0,55.0");
}
