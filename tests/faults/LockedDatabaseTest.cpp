#include "cash/J_CAISSE.h"
#include "core/globals.h"
#include "core/opening.h"
#include "data/Practice.h"
#include "faults/FolderContent.h"
#include "platform/basic/RuntimeError.h"
#include "support/ChildProcess.h"
#include "support/Globals.h"
#include "support/MainWindow.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Rounds.h"

#include <QElapsedTimer>
#include <QScopedValueRollback>

#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

using cash::J_CAISSE;
using forms::Icon;
using tests::OtherProgram;
using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds ShortWhile = 100ms;

constexpr const char* WholeFile = "pragma journal_mode = delete; begin exclusive";
constexpr const char* WholeFileAndLog = "pragma locking_mode = exclusive; update Presta set denom = denom";
constexpr const char* Writing = "begin immediate; update Presta set denom = 'Radio' where num = 1";

/// A practice whose database another program has locked. The long form waits as long as the program really does.
class LockedDatabase : public testing::Test {
protected:
    LockedDatabase()
    {
        practice.Act({});
        practice.Open(); // once before, so that the file is upgraded
        tests::ResetGlobals();
        if (!tests::IsLongForm())
            data::PracticeRules().patience = 300;
    }
    ~LockedDatabase() override { data::PracticeRules().patience = patience; }

    /// Another program that holds this lock until it is killed.
    tests::ChildProcess Lock(const char* lock) const
    {
        return tests::ChildProcess([this, lock](tests::Reports& reports) {
            OtherProgram program(practice.File("ZEP_ONE.MDB"));
            EXPECT_EQ(program.Run(lock), SQLITE_OK);
            reports.Send('!');
            ::pause();
        });
    }

    /// Runs `work` with the program's real busy timeout while the other program releases its lock after a short time.
    template <class Work>
    void DuringAShortLock(tests::ChildProcess& other, Work work) const
    {
        const QScopedValueRollback<int> real(data::PracticeRules().patience, patience);
        std::thread end([&] {
            std::this_thread::sleep_for(ShortWhile);
            other.Kill();
        });
        QElapsedTimer waited;
        waited.start();
        work();
        end.join();
        EXPECT_GE(waited.elapsed(), ShortWhile.count() - 5) << "the lock was never in the way";
    }

    static QString ExpectedText() { return core::ErrorText(basic::RuntimeError(basic::Error::Locked)); }

    /// Settles the first pending act of the day as paid, with 500 dinars.
    static void Settle(J_CAISSE& till)
    {
        Press(till.Grid3, Qt::Key_Return);
        till.SSPanel2.Code.SetListIndex(data::PaymentCode::P);
        till.SSPanel2.Amount.setText("500");
        Click(till.SSPanel2.Image3[cash::CorrectionPanel::Accept]);
    }

    J_CAISSE& OpenTill(ScriptedDesk& desk) const
    {
        tests::StartProgram(desk, practice.Folder());
        core::PickedDate = "17/06/2008";
        auto& till = desk.Open<J_CAISSE>();
        till.SSTab1.setCurrentIndex(cash::J_CAISSE::PendingTab);
        return till;
    }

    const int patience = data::PracticeRules().patience;
    tests::Practice practice;
};

} // namespace

TEST_F(LockedDatabase, IsRefusedAtTheStartAfterTheTimeout)
{
    for (const char* lock : {WholeFile, WholeFileAndLog}) {
        SCOPED_TRACE(lock);
        {
            tests::ChildProcess other = Lock(lock);
            ASSERT_TRUE(other.Next<char>());
            const tests::FolderContent before = tests::ContentOf(practice.Folder());
            ScriptedDesk desk;
            desk.ExpectMessage(ExpectedText(), Icon::Exclamation, "Lumo ZEP");
            desk.ExpectMessage(ExpectedText(), Icon::Exclamation, "ZEP Lumo");
            QElapsedTimer waited;
            waited.start();
            tests::StartProgram(desk, practice.Folder());
            EXPECT_GE(waited.elapsed(), 2 * data::PracticeRules().patience);
            EXPECT_EQ(desk.EndCode(), 0);
            EXPECT_TRUE(tests::ContentOf(practice.Folder()) == before) << "something was written";
        }
        tests::ChildProcess other = Lock(lock);
        ASSERT_TRUE(other.Next<char>());
        DuringAShortLock(other, [this] {
            ScriptedDesk desk;
            tests::StartProgram(desk, practice.Folder());
            EXPECT_TRUE(core::TheDatabase.IsOpen());
            tests::ResetGlobals();
        });
    }
}

TEST_F(LockedDatabase, SettlesAnActOnceAnotherHasStoppedWriting)
{
    tests::ChildProcess other = Lock(Writing);
    ASSERT_TRUE(other.Next<char>());
    ScriptedDesk desk;
    auto& till = OpenTill(desk);
    desk.ExpectMessage("Correction enregistrée", Icon::Information, "ZEP Lumo");
    DuringAShortLock(other, [&] { Settle(till); });
    EXPECT_EQ(practice.Stored("Actes", 1, "montant").Double(), 500);
    EXPECT_EQ(practice.Stored("Presta", 1, "denom").Text(), "Consultation") << "what the killed one hadn't committed";
}

TEST_F(LockedDatabase, EndsWithoutSettlingAfterTheTimeout)
{
    tests::ChildProcess other = Lock(Writing);
    ASSERT_TRUE(other.Next<char>());
    ScriptedDesk desk;
    auto& till = OpenTill(desk);
    const tests::FolderContent before = tests::ContentOf(practice.Folder());
    desk.ExpectMessage("Erreur d'exécution '3187' :\n" + basic::RuntimeError(basic::Error::Locked).Description(),
                       Icon::Critical, "ZEP Lumo");
    Settle(till);
    EXPECT_EQ(desk.EndCode(), 1);
    EXPECT_FALSE(core::TheDatabase.IsOpen());
    EXPECT_TRUE(tests::ContentOf(practice.Folder()) == before) << "something was written";
    EXPECT_EQ(practice.Stored("Actes", 1, "flag_R").Long(), 0);
}
