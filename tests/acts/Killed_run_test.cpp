#include "acts/Actualisation.h"

#include "core/globals.h"
#include "core/opening.h"
#include "platform/basic/Dates.h"
#include "support/Practice.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using acts::Actualisation;
using namespace std::chrono_literals;

namespace {

constexpr int Kills = 50;
constexpr int Days = 250;
constexpr int Untouched = 7;

/// Makes new folders in memory where the system has such a place: what a killed process has written stays there as
/// well, and hundreds of commits don't wait for a disk.
class FolderInMemory {
public:
    FolderInMemory()
    {
        if (access("/dev/shm", W_OK) == 0)
            qputenv("TMPDIR", "/dev/shm");
    }
    ~FolderInMemory() { before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before); }
    FolderInMemory(const FolderInMemory&) = delete;
    FolderInMemory& operator=(const FolderInMemory&) = delete;

private:
    const QByteArray before = qgetenv("TMPDIR");
};

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

    /// The time of a whole run, the shortest so far.
    void RunWhole()
    {
        const auto started = std::chrono::steady_clock::now();
        Run();
        whole = std::min(
            whole, std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - started));
    }

    /// Starts the run in a process of its own and kills it after that time.
    void RunAndKill(std::chrono::microseconds delay)
    {
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        if (child == 0) {
            core::OpenDataFiles();
            if (write(ready[1], "!", 1) == 1)
                Run();
            _exit(0);
        }
        char signal = 0;
        ASSERT_EQ(read(ready[0], &signal, 1), 1);
        std::this_thread::sleep_for(delay);
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(ready[0]);
        close(ready[1]);
    }

    /// The days before some day are as after a whole run, or but for the acts that the run's last step puts back; the
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

    FolderInMemory memory;
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
