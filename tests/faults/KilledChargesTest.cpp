#include "analysis/Chrges.h"
#include "core/globals.h"
#include "core/opening.h"
#include "platform/basic/Numbers.h"
#include "support/ChildProcess.h"
#include "support/DeadlyWrites.h"
#include "support/FolderInMemory.h"
#include "support/Practice.h"
#include "support/Rounds.h"
#include "support/ScriptedDesk.h"

#include <gtest/gtest.h>

using analysis::Chrges;

namespace {

/// Stores seven charges of this amount and leaves, as a user would; reports the number of disk writes. Dies at the
/// given write.
void Store(tests::Reports& reports, int dinars, int deadlyWrite)
{
    ScriptedDesk desk;
    core::OpenDataFiles();
    auto& screen = desk.Open<Chrges>();
    for (int charge = Chrges::Salaries; charge <= Chrges::Others; ++charge)
        screen.Text1[charge].setText(QString::number(dinars));
    desk.ExpectMessage("Sauvegarde en cours", forms::Icon::None, "");
    tests::DieAtWrite(deadlyWrite);
    screen.Image1[Chrges::Store].click();
    screen.Unload();
    core::CloseDataFiles();
    reports.Send(tests::WritesMade());
}

class KilledCharges : public testing::Test {
protected:
    static tests::ChildProcess Start(int dinars, int deadlyWrite = 0)
    {
        return tests::ChildProcess([=](tests::Reports& reports) { Store(reports, dinars, deadlyWrite); });
    }

    /// The stored amount of each charge; all nine figures must be from one save.
    static int StoredCharges()
    {
        core::OpenDataFiles();
        const int dinars = core::PermnTable["Charge1"].Long();
        const double total = 7 * dinars;
        for (int charge = 1; charge <= 7; ++charge)
            EXPECT_EQ(core::PermnTable.Collect(QString("Charge%1").arg(charge)).Double(), dinars) << charge;
        EXPECT_EQ(core::PermnTable["Charge8"].Double(), total);
        EXPECT_EQ(core::PermnTable["Charge9"].Double(), basic::Val(basic::Format(total / 30, "0.00")));
        core::TheDatabase.Close();
        return dinars;
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
};

} // namespace

TEST_F(KilledCharges, AreAllFromOneSave)
{
    practice.Open();
    core::TheDatabase.Close();
    tests::ChildProcess undisturbed = Start(1);
    const int writes = undisturbed.Next<int>().value_or(0);
    undisturbed.Wait();
    ASSERT_EQ(StoredCharges(), 1);
    ASSERT_GT(writes, 1);

    int kept = 0;
    const int rounds = tests::IsLongForm() ? 200 : writes;
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        const int deadly = round % writes + 1;
        SCOPED_TRACE(deadly);
        const int before = StoredCharges();
        tests::ChildProcess program = Start(before + 1, deadly);
        EXPECT_EQ(program.Next<int>(), std::nullopt);
        EXPECT_TRUE(program.Kill());
        const int stored = StoredCharges();
        EXPECT_TRUE(stored == before || stored == before + 1) << stored;
        kept += stored > before;
    }
    EXPECT_GT(kept, 0);
    EXPECT_LT(kept, rounds);
}
