#include "acts/Actualisation.h"

#include "core/globals.h"
#include "core/opening.h"
#include "platform/basic/Dates.h"
#include "support/ChildProcess.h"
#include "support/FolderInMemory.h"
#include "support/Practice.h"
#include "support/Rounds.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <thread>

using acts::Actualisation;
using namespace std::chrono_literals;

namespace {

const int Kills = tests::IsLongForm() ? 200 : 50;
constexpr int Days = 250;
constexpr int Untouched = 7;

class KilledRun : public testing::Test {
protected:
    using Flags = std::map<dao::Key, int>;

    /// A year of working days with two services of 3 and 4 acts each, every seventh one "R-".
    void FillYear()
    {
        practice.Open();
        dao::Transaction filling(core::TheDatabase);
        dao::Recordset acts = core::TheDatabase.OpenRecordset("Actes");
        for (int act = 0; act < 7 * Days; ++act) {
            acts.AddNew();
            acts["Date"] = basic::DateText(QDate(2008, 1, 1).addDays(act / 7));
            acts["num_presta"] = act % 7 < 3 ? 1 : 2;
            acts["flag_R"] = act % 7 == 4 ? 1 : 2;
            acts.Update();
        }
        filling.Commit();
    }

    static void Run() { Actualisation("01/01/2008", "06/09/2008", 2).ThinPeriod(); }

    static Flags Stored()
    {
        Flags flags;
        dao::Recordset acts = core::TheDatabase.OpenRecordset("select * from Actes order by num");
        for (; !acts.IsEOF(); acts.MoveNext())
            flags[acts["num"].Key()] = acts["Flag_H"].Long();
        return flags;
    }

    /// The shortest time of a whole run so far.
    void RunWhole()
    {
        const auto started = std::chrono::steady_clock::now();
        Run();
        whole = std::min(
            whole, std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - started));
    }

    /// Starts the run in a child process and kills it after that time.
    void RunAndKill(std::chrono::microseconds delay)
    {
        tests::ChildProcess child([](tests::Reports& reports) {
            core::OpenDataFiles();
            reports.Send('!');
            Run();
        });
        ASSERT_TRUE(child.Next<char>());
        std::this_thread::sleep_for(delay);
        child.Kill();
    }

    /// The days before some day are as after a whole run, except perhaps for the acts restored by its last step; the
    /// others are untouched.
    static void ExpectWholeDays(const Flags& found, const Flags& finished, bool repaired)
    {
        bool reachedUntouched = false;
        for (auto act = found.begin(); act != found.end();) {
            const bool untouched = act->second == Untouched;
            EXPECT_FALSE(reachedUntouched && !untouched) << "act " << act->first;
            reachedUntouched = untouched;
            for (int ofDay = 0; ofDay < 7; ++ofDay, ++act) {
                const bool putBackLater = ofDay == 4 && !repaired;
                EXPECT_EQ(act->second, untouched      ? Untouched
                                       : putBackLater ? 1
                                                      : finished.at(act->first))
                    << "act " << act->first;
            }
        }
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
    std::chrono::microseconds whole = 1h;
};

} // namespace

TEST_F(KilledRun, LeavesWholeDaysAndIsRepairedByRunningAgain)
{
    FillYear();
    RunWhole();
    const Flags finished = Stored();

    std::mt19937 random(20080617);
    int killedMidway = 0;
    for (int round = 0; round < Kills && !HasFailure(); ++round) {
        core::TheDatabase.Execute("Update Actes set Flag_H = " + QString::number(Untouched));
        core::TheDatabase.Close();
        std::uniform_int_distribution<long> moment(0, whole.count());
        RunAndKill(std::chrono::microseconds(moment(random)));

        core::OpenDataFiles();
        const Flags found = Stored();
        ExpectWholeDays(found, finished, found == finished);
        killedMidway += found.begin()->second != Untouched && found.rbegin()->second == Untouched;
        RunWhole();
        EXPECT_EQ(Stored(), finished) << "round " << round;
    }
    EXPECT_GT(killedMidway, Kills / 4);
}
