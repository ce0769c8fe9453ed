#include "analysis/Chrges.h"
#include "core/globals.h"
#include "core/opening.h"
#include "faults/Rounds.h"
#include "platform/basic/Numbers.h"
#include "support/ChildProcess.h"
#include "support/FolderInMemory.h"
#include "support/Practice.h"
#include "support/ScriptedDesk.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <thread>

using analysis::Chrges;

namespace {

/// Stores charges of so many dinars each, as the user does.
void StoreCharges(ScriptedDesk& desk, int dinars)
{
    auto& screen = desk.Open<Chrges>();
    for (int charge = Chrges::Salaries; charge <= Chrges::Others; ++charge)
        screen.Text1[charge].setText(QString::number(dinars));
    desk.ExpectMessage("Sauvegarde en cours", forms::Icon::None, "");
    screen.Image1[Chrges::Store].click();
}

/// The dinars of each charge as they are stored; all nine figures must be of one save.
int StoredCharges()
{
    core::OpenDataFiles();
    core::PermnTable.MoveFirst();
    const int dinars = core::PermnTable["Charge1"].IsNull() ? 0 : core::PermnTable["Charge1"].Long();
    const double total = 7 * dinars;
    for (int charge = 1; charge <= 7; ++charge)
        EXPECT_EQ(core::PermnTable.Collect(QString("Charge%1").arg(charge)).Double(), dinars) << charge;
    EXPECT_EQ(core::PermnTable["Charge8"].Double(), total);
    EXPECT_EQ(core::PermnTable["Charge9"].Double(), basic::Val(basic::Format(total / 30, "0.00")));
    core::TheDatabase.Close();
    return dinars;
}

} // namespace

TEST(KilledCharges, AreAllOfOneSave)
{
    const tests::FolderInMemory memory;
    tests::Practice practice;
    std::mt19937 random{20080617};
    std::uniform_int_distribution<int> saves(1, 4);
    std::uniform_int_distribution<long> pause(0, 6000);

    int dinars = 1; // of the save that comes next
    int killed = 0;
    const int rounds = tests::Rounds(20);
    {
        ScriptedDesk desk;
        practice.Open();
        StoreCharges(desk, dinars++);
        core::TheDatabase.Close();
    }
    for (int round = 0; round < rounds && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE(round);
        tests::ChildProcess program([dinars](tests::Reports& reports) {
            ScriptedDesk desk;
            core::OpenDataFiles();
            for (int next = dinars; !testing::Test::HasFailure(); ++next) {
                StoreCharges(desk, next);
                reports.Tell(next);
            }
        });
        int reported = dinars - 1;
        for (int count = saves(random); count > 0; --count)
            reported = program.Next<int>().value_or(reported);
        std::this_thread::sleep_for(std::chrono::microseconds(pause(random)));
        killed += program.Kill();
        while (const auto last = program.Next<int>())
            reported = *last;

        const int stored = StoredCharges();
        EXPECT_TRUE(stored == reported || stored == reported + 1) << stored << " stored, " << reported << " reported";
        dinars = stored + 1;
    }
    EXPECT_EQ(killed, rounds);
}
