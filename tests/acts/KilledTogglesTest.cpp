#include "acts/New_Act.h"
#include "core/globals.h"
#include "core/opening.h"
#include "support/ChildProcess.h"
#include "support/DeadlyWrites.h"
#include "support/FolderInMemory.h"
#include "support/Practice.h"
#include "support/Rounds.h"
#include "support/ScriptedDesk.h"

#include <gtest/gtest.h>

using acts::New_Act;

namespace {

constexpr int Acts = 200;

/// Archives all acts of the day, or makes them visible again, and leaves the sheet; dies at the given write.
void ToggleAll(tests::Reports& reports, int deadlyWrite)
{
    ScriptedDesk desk;
    core::OpenDataFiles();
    auto& sheet = desk.Open<New_Act>();
    for (int row = 0; row < Acts; ++row) {
        sheet.Grid2.SetRow(row);
        sheet.Image1[New_Act::Toggle].click();
    }
    tests::DieAtWrite(deadlyWrite);
    sheet.Image1[New_Act::LeaveSheet].click();
    core::CloseDataFiles();
    reports.Send(tests::WritesMade());
}

class KilledToggles : public testing::Test {
protected:
    static tests::ChildProcess Start(int deadlyWrite = 0)
    {
        return tests::ChildProcess([=](tests::Reports& reports) { ToggleAll(reports, deadlyWrite); });
    }

    /// The stored state of the acts, the same for all of them.
    static int StoredState()
    {
        core::OpenDataFiles();
        const dao::Recordset states =
            core::TheDatabase.OpenRecordset("select min(Flag_H) as S1, max(Flag_H) as S2 from Actes");
        const int state = states["S1"].Long();
        EXPECT_EQ(states["S2"].Long(), state) << "a part of the day was saved";
        core::TheDatabase.Close();
        return state;
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
};

} // namespace

TEST_F(KilledToggles, AreSavedForTheWholeDayOrNotAtAll)
{
    for (int act = 0; act < Acts; ++act)
        practice.Act({});
    practice.Open();
    core::TheDatabase.Close();
    tests::ChildProcess undisturbed = Start();
    const int writes = undisturbed.Next<int>().value_or(0);
    undisturbed.Wait();
    ASSERT_EQ(StoredState(), 1);
    ASSERT_GT(writes, 5);

    int saved = 0;
    const int rounds = tests::IsLongForm() ? 200 : qMin(writes, 20);
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        const int deadly = tests::IsLongForm() ? round % writes + 1 : 1 + round * writes / rounds;
        SCOPED_TRACE(deadly);
        const int before = StoredState();
        tests::ChildProcess program = Start(deadly);
        EXPECT_EQ(program.Next<int>(), std::nullopt);
        EXPECT_TRUE(program.Kill());
        saved += StoredState() != before;
    }
    EXPECT_GT(saved, 0);
    EXPECT_LT(saved, rounds);
}
