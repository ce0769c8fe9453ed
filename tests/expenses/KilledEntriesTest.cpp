#include "expenses/F_Dep.h"

#include "core/globals.h"
#include "core/opening.h"
#include "platform/basic/Dates.h"
#include "platform/store/DatabaseReader.h"
#include "support/ChildProcess.h"
#include "support/DeadlyWrites.h"
#include "support/FolderInMemory.h"
#include "support/MainWindow.h"
#include "support/Practice.h"
#include "support/Rounds.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using expenses::EntryPanel;
using expenses::F_Dep;

namespace {

constexpr int KillsInShortForm = 20;
constexpr int ExpensesOfADay = 12; // entered; then every second one is changed and every third one deleted

enum class Step { Entered, Changed, Deleted };

struct Done {
    Step step;
    int expense; // of the day
};

struct State {
    bool present = false;
    int amount = 0;
};

/// Never today: the screen opens on its expenses.
QString DayOf(int round)
{
    return basic::DateText(QDate(2009, 1, 1).addDays(round));
}

/// The steps of a day's work.
std::vector<Done> WorkOfADay()
{
    std::vector<Done> work;
    for (int expense = 0; expense < ExpensesOfADay; ++expense)
        work.push_back({Step::Entered, expense});
    for (int expense = 0; expense < ExpensesOfADay; expense += 2)
        work.push_back({Step::Changed, expense});
    for (int expense = ExpensesOfADay - 1; expense >= 0;
         expense -= 3) // from the end, so that the others keep their rows
        work.push_back({Step::Deleted, expense});
    return work;
}

int AmountAfter(Step step, int expense)
{
    return (step == Step::Changed ? 2000 : 1000) + expense;
}

/// The expenses of a day after this many steps.
std::vector<State> StateAfter(std::size_t steps)
{
    std::vector<State> expenses(ExpensesOfADay);
    const std::vector<Done> work = WorkOfADay();
    for (std::size_t i = 0; i < steps; ++i) {
        const auto [step, expense] = work[i];
        expenses[static_cast<std::size_t>(expense)] = {step != Step::Deleted, AmountAfter(step, expense)};
    }
    return expenses;
}

/// Kills the program while the expenses of a day are entered, changed and deleted. Each round has its own day, so that
/// what was saved must survive all later kills.
class KilledEntries : public testing::Test {
protected:
    static void Accept(ScriptedDesk& desk, F_Dep& screen, int round, const Done& done)
    {
        screen.SSPanel3.Date.setText(DayOf(round));
        screen.SSPanel3.Object.setText(QString("%1 %2").arg(done.expense).arg(AmountAfter(done.step, done.expense)));
        screen.SSPanel3.Amount.setText(QString::number(AmountAfter(done.step, done.expense)));
        desk.ExpectMessage("Enregistrement terminé", forms::Icon::Information, "ZEP Lumo");
        screen.SSPanel3.Image2[EntryPanel::Accept].click();
    }

    static void Do(ScriptedDesk& desk, F_Dep& screen, int round, const Done& done)
    {
        if (done.step == Step::Entered) {
            screen.Crecettes[F_Dep::New].click();
            return Accept(desk, screen, round, done);
        }
        screen.Grid1.SetRow(done.expense);
        screen.Grid1_Click();
        if (done.step == Step::Changed) {
            screen.Crecettes[F_Dep::Modify].click();
            return Accept(desk, screen, round, done);
        }
        desk.ExpectMessage("Confirmer supression de ligne N° " + QString::number(done.expense + 1),
                           forms::Icon::Question, "Confirmation", forms::Answer::Yes);
        screen.Crecettes[F_Dep::Remove].click();
    }

    static void WorkThrough(tests::Reports& reports, int round, int deadlyWrite)
    {
        tests::DieAtWrite(deadlyWrite);
        ScriptedDesk desk;
        core::OpenDataFiles();
        auto& screen = desk.Open<F_Dep>();
        reports.Send(tests::WritesMade());
        for (const Done& done : WorkOfADay()) {
            Do(desk, screen, round, done);
            reports.Send(tests::WritesMade());
        }
    }

    static tests::ChildProcess Start(int round, int deadlyWrite = 0)
    {
        return tests::ChildProcess(
            [round, deadlyWrite](tests::Reports& reports) { WorkThrough(reports, round, deadlyWrite); });
    }

    /// Records the number of writes after the opening and after each step of an undisturbed day.
    void WorkADay(int round)
    {
        tests::ChildProcess program = Start(round);
        while (const auto writes = program.Next<int>())
            ends.push_back(*writes);
        program.Wait();
        ASSERT_EQ(ends.size(), WorkOfADay().size() + 1);
    }

    /// Kills the program at a random write of a random step; returns the number of steps it has reported.
    std::size_t WorkAndKill(int round)
    {
        const auto step = std::uniform_int_distribution<std::size_t>(1, ends.size() - 1)(random);
        const int deadly = std::uniform_int_distribution(ends[step - 1] + 1, ends[step])(random);
        tests::ChildProcess program = Start(round, deadly);
        std::size_t reports = 0;
        while (program.Next<int>())
            ++reports;
        EXPECT_TRUE(program.Kill());
        return reports == 0 ? 0 : reports - 1;
    }

    /// The stored expenses of a round's day; each must be complete.
    static std::vector<State> Stored(int round)
    {
        std::vector<State> expenses(ExpensesOfADay);
        const QString day = DayOf(round);
        dao::Recordset rows = core::TheDatabase.OpenRecordset("select * from Recettes where date = #" +
                                                              basic::QueryDate(day) + "# order by num");
        for (; !rows.IsEOF(); rows.MoveNext()) {
            const QString object = rows["objet"].Text();
            const int expense = object.section(' ', 0, 0).toInt();
            const int amount = object.section(' ', 1, 1).toInt();
            EXPECT_EQ(rows["montant"].Double(), amount) << "half written: " << object.toStdString();
            EXPECT_EQ(rows["MM"].Double(), day.mid(3, 2).toInt());
            EXPECT_FALSE(expenses[static_cast<std::size_t>(expense)].present)
                << "written twice: " << object.toStdString();
            expenses[static_cast<std::size_t>(expense)] = {true, amount};
        }
        return expenses;
    }

    static bool IsAfter(const std::vector<State>& stored, std::size_t steps)
    {
        const std::vector<State> expected = StateAfter(steps);
        return std::ranges::equal(stored, expected, [](const State& one, const State& other) {
            return one.present == other.present && (!one.present || one.amount == other.amount);
        });
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
    std::mt19937 random{20080617};
    std::vector<int> ends;
};

} // namespace

TEST_F(KilledEntries, LoseNoReportedEntryAndLeaveNoneIncomplete)
{
    const int kills = tests::Rounds(KillsInShortForm);
    practice.Open();
    core::TheDatabase.Close();
    WorkADay(0);

    std::vector<std::size_t> done{WorkOfADay().size()};
    int midway = 0;
    for (int round = 1; round <= kills && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const std::size_t reported = WorkAndKill(round);
        midway += reported > 0 && reported < WorkOfADay().size() ? 1 : 0;

        const ScriptedDesk desk; // no message is expected
        core::OpenDataFiles();
        const std::vector<State> stored = Stored(round);
        const bool nextWasSaved = !IsAfter(stored, reported);
        EXPECT_TRUE(!nextWasSaved || IsAfter(stored, reported + 1)) << reported << " steps were reported";
        done.push_back(reported + (nextWasSaved ? 1 : 0));
        EXPECT_EQ(store::CheckDatabase(practice.File("ZEP_ONE.MDB")), QStringList());
        core::TheDatabase.Close();
    }
    if (HasFailure())
        return;
    EXPECT_GT(midway, kills / 2);

    const ScriptedDesk desk;
    core::OpenDataFiles();
    for (int round = 0; round < static_cast<int>(done.size()); ++round)
        EXPECT_TRUE(IsAfter(Stored(round), done[static_cast<std::size_t>(round)])) << "round " << round;
}
