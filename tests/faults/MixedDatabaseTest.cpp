#include "core/globals.h"
#include "data/Archives.h"
#include "data/Practice.h"
#include "faults/FolderContent.h"
#include "platform/basic/RuntimeError.h"
#include "platform/store/FileWork.h"
#include "support/ChildProcess.h"
#include "support/Globals.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Rounds.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
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
