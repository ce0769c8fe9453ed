#include "analysis/Chrges.h"
#include "core/globals.h"
#include "core/opening.h"
#include "faults/Rounds.h"
#include "platform/basic/Numbers.h"
#include "support/ChildProcess.h"
#include "support/FolderInMemory.h"
#include "support/Practice.h"
#include "support/ScriptedDesk.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <thread>

using analysis::Chrges;
using std::chrono::microseconds;
using std::chrono::steady_clock;

namespace {

/// How far a save of charges of so many dinars each has come: begun when its message stands before the user.
struct Progress {
    int dinars;
    bool isDone;
};

class ReportingDesk : public ScriptedDesk {
public:
    explicit ReportingDesk(tests::Reports& progress) : reports(progress) {}

    forms::Answer Message(const QString& text, forms::Icon icon, const QString& title, forms::Buttons buttons) override
    {
        const forms::Answer answer = ScriptedDesk::Message(text, icon, title, buttons);
        reports.Tell(Progress{dinars, false});
        return answer;
    }

    /// Stores charges as the user does.
    void Store(int newDinars)
    {
        dinars = newDinars;
        auto& screen = Open<Chrges>();
        for (int charge = Chrges::Salaries; charge <= Chrges::Others; ++charge)
            screen.Text1[charge].setText(QString::number(dinars));
        ExpectMessage("Sauvegarde en cours", forms::Icon::None, "");
        screen.Image1[Chrges::Store].click();
        reports.Tell(Progress{dinars, true});
    }

private:
    tests::Reports& reports;
    int dinars = 0;
};

class KilledCharges : public testing::Test {
protected:
    /// The program, which stores charges again and again, each time a dinar more.
    static tests::ChildProcess Start(int dinars)
    {
        return tests::ChildProcess([dinars](tests::Reports& reports) {
            ReportingDesk desk(reports);
            core::OpenDataFiles();
            for (int next = dinars; !HasFailure(); ++next)
                desk.Store(next);
        });
    }

    /// How long a save takes, so that kills fall within one.
    static microseconds SavingTime()
    {
        constexpr int saves = 11;
        tests::ChildProcess program = Start(1);
        std::vector<microseconds> times;
        while (times.size() < saves) {
            program.Next<Progress>();
            const auto begun = steady_clock::now();
            program.Next<Progress>();
            times.push_back(std::chrono::duration_cast<microseconds>(steady_clock::now() - begun));
        }
        std::ranges::nth_element(times, times.begin() + saves / 2);
        return times[saves / 2];
    }

    /// The dinars of each charge as they are stored; all nine figures must be of one save.
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
    std::mt19937 random{20080617};
};

} // namespace

TEST_F(KilledCharges, AreAllOfOneSave)
{
    practice.Open();
    core::TheDatabase.Close();
    std::uniform_int_distribution<long> pause(0, SavingTime().count());
    int stored = StoredCharges();
    int killed = 0, killedBefore = 0, killedBehind = 0; // the save was in the file
    const int rounds = tests::Rounds(20);
    for (int round = 0; round < rounds && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        tests::ChildProcess program = Start(stored + 1);
        program.Next<Progress>();
        program.Next<Progress>();
        auto last = program.Next<Progress>();
        ASSERT_TRUE(last && !last->isDone);
        std::this_thread::sleep_for(microseconds(pause(random)));
        killed += program.Kill();
        while (const auto next = program.Next<Progress>())
            last = next;

        stored = StoredCharges();
        if (last->isDone)
            EXPECT_EQ(stored, last->dinars) << "lost";
        else
            EXPECT_TRUE(stored == last->dinars || stored == last->dinars - 1) << stored;
        killedBefore += !last->isDone && stored < last->dinars;
        killedBehind += !last->isDone && stored == last->dinars;
    }
    EXPECT_EQ(killed, rounds);
    if (tests::IsLongForm()) { // so many kills can't all have missed the save
        EXPECT_GT(killedBefore, 0);
        EXPECT_GT(killedBehind, 0);
    }
    RecordProperty("killedBefore", killedBefore);
    RecordProperty("killedBehind", killedBehind);
}
