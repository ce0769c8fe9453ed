#include "cash/J_CAISSE.h"
#include "core/globals.h"
#include "core/opening.h"
#include "core/printing.h"
#include "data/Archives.h"
#include "platform/basic/Dates.h"
#include "platform/store/DatabaseReader.h"
#include "support/ChildProcess.h"
#include "support/DeadlyWrites.h"
#include "support/FolderInMemory.h"
#include "support/MainWindow.h"
#include "support/Practice.h"
#include "support/Rounds.h"

#include <QDir>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using cash::J_CAISSE;

namespace {

constexpr int ActsOfADay = 20;
constexpr int ActsBetweenReports = 4;
constexpr int LongReport = 238 * 4096;

/// The values of an act settled in a round: amounts are unique, and every field changes.
struct Settlement {
    dao::Key act;
    int flag_R;
    double montant;
};

dao::Key FirstAct(int round)
{
    return round * ActsOfADay + 1;
}

Settlement SettlementOf(dao::Key act)
{
    return {act, static_cast<int>(2 + act % 4), static_cast<double>(act) + 0.5};
}

QString DayOf(int round)
{
    return basic::DateText(QDate(2008, 1, 1).addDays(round));
}

/// Progress report: the act just settled, 0 when the till is open, and the number of writes so far.
struct Progress {
    dao::Key act;
    int writes;
};

/// Kills the program while the acts of a day are settled one by one. Each round has its own day, so that what was
/// settled must survive all later kills.
class KilledTill : public testing::TestWithParam<unsigned> {
protected:
    void FillDays(int days)
    {
        practice.Open();
        dao::Transaction filling(core::TheDatabase);
        dao::Recordset acts = core::TheDatabase.OpenRecordset("Actes");
        for (int act = 0; act < days * ActsOfADay; ++act) {
            acts.AddNew();
            acts["Date"] = DayOf(act / ActsOfADay);
            acts["num_patient"] = 1;
            acts["num_presta"] = 1;
            acts["HH"] = 0;
            acts.Update();
        }
        filling.Commit();
        core::TheDatabase.Close();
    }

    /// Settles the first pending act as a user would; reports it when the screen says that it is saved.
    static void SettleFirst(ScriptedDesk& desk, J_CAISSE& till, const Settlement& settlement)
    {
        till.Grid3.SetRow(0);
        till.Grid3_DblClick();
        till.SSPanel2.Code.SetListIndex(settlement.flag_R);
        till.SSPanel2.Amount.setText(QString::number(settlement.montant));
        desk.ExpectMessage("Correction enregistrée", forms::Icon::Information, "ZEP Lumo");
        till.SSPanel2.Image3[cash::CorrectionPanel::Accept].click();
    }

    /// A long report, whose pages bring the log close to the size of an idle checkpoint, so that one of the next
    /// settlements triggers it.
    static void WriteReport()
    {
        core::RefillScratchTable("Prov", [](core::ScratchRows& rows) {
            rows.Add({{"Obs", QString(LongReport, 'x')}});
        });
    }

    /// A working day, from opening the data files to the archive copy; dies at the given write.
    static void WorkThrough(tests::Reports& reports, int round, int deadlyWrite)
    {
        tests::DieAtWrite(deadlyWrite);
        ScriptedDesk desk;
        core::OpenDataFiles();
        core::PickedDate = DayOf(round);
        auto& till = desk.Open<J_CAISSE>();
        reports.Send(Progress{0, tests::WritesMade()});
        for (int act = 0; act < ActsOfADay && !HasFailure(); ++act) {
            if (act % ActsBetweenReports == 0)
                WriteReport();
            const Settlement settlement = SettlementOf(FirstAct(round) + act);
            SettleFirst(desk, till, settlement);
            reports.Send(Progress{settlement.act, tests::WritesMade()});
        }
        till.Unload();
        core::CloseDataFiles();
        data::CopyToArchives(core::DataFolder);
        reports.Send(Progress{0, tests::WritesMade()});
    }

    static tests::ChildProcess Start(int round, int deadlyWrite = 0)
    {
        return tests::ChildProcess(
            [round, deadlyWrite](tests::Reports& reports) { WorkThrough(reports, round, deadlyWrite); });
    }

    /// Records the number of writes after each part of an undisturbed day, so that kills are spread evenly over the
    /// parts.
    void WorkADay(int round)
    {
        tests::ChildProcess program = Start(round);
        while (const auto progress = program.Next<Progress>())
            ends.push_back(progress->writes);
        program.Wait();
        ASSERT_EQ(ends.size(), ActsOfADay + 3);
    }

    /// Kills the program in a random part of its day; returns the number of settlements it has reported.
    int WorkAndKill(int round)
    {
        std::size_t piece = 0;
        do
            piece = std::uniform_int_distribution<std::size_t>(1, ends.size() - 1)(random);
        while (ends[piece] == ends[piece - 1]);
        tests::ChildProcess program =
            Start(round, std::uniform_int_distribution(ends[piece - 1] + 1, ends[piece])(random));
        int reports = 0;
        while (program.Next<Progress>())
            ++reports;
        killed += program.Kill();
        return std::clamp(reports - 1, 0, ActsOfADay);
    }

    /// The number of settled acts of a round's day: those reported and perhaps one more, each completely or not at all.
    static int CountSettled(int round, int reported)
    {
        dao::Recordset acts = core::TheDatabase.OpenRecordset(
            "select * from Actes where num >= " + QString::number(FirstAct(round)) + " order by num");
        int settled = 0;
        for (int act = 0; act < ActsOfADay; ++act, acts.MoveNext()) {
            const Settlement expected = SettlementOf(acts["num"].Key());
            const int flag_R = acts["flag_R"].Long();
            const double montant = acts["montant"].Double();
            const bool isNew = flag_R == expected.flag_R && montant == expected.montant;
            const bool isOld = flag_R == 0 && montant == 0;
            EXPECT_TRUE(isNew || isOld) << "half done: " << expected.act << ' ' << flag_R << ' ' << montant;
            EXPECT_TRUE(isNew || act >= reported) << "lost: " << expected.act;
            EXPECT_TRUE(isOld || act <= reported) << "never asked for: " << expected.act;
            settled += isNew;
        }
        return settled;
    }

    void ExpectSoundFile(const QString& name) const
    {
        EXPECT_EQ(store::CheckDatabase(practice.File(name)), QStringList()) << name.toStdString();
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
    std::mt19937 random{20080617 + GetParam()};
    std::vector<int> ends{0};
    int killed = 0;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Chance, KilledTill, testing::Range(0U, static_cast<unsigned>(tests::Rounds(1))));

TEST_P(KilledTill, LosesNoReportedSettlementAndLeavesNoneIncomplete)
{
    const int kills = tests::IsLongForm() ? 200 : 40;
    FillDays(kills + 1);
    WorkADay(0);

    std::vector<int> settled{ActsOfADay};
    int midway = 0, savedButNotReported = 0;
    for (int round = 1; round <= kills && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const int reported = WorkAndKill(round);

        const ScriptedDesk desk; // no message is expected
        core::OpenDataFiles();
        settled.push_back(CountSettled(round, reported));
        ExpectSoundFile("ZEP_ONE.MDB");
        ExpectSoundFile("ARCHIVES/ZEP_ONE.MDB");
        core::TheDatabase.Close();
        midway += reported > 0 && reported < ActsOfADay;
        savedButNotReported += settled.back() - reported;
    }
    if (HasFailure())
        return;
    EXPECT_GT(killed, kills * 4 / 5);
    EXPECT_GT(midway, kills / 2);
    EXPECT_GT(savedButNotReported, 0);
    RecordProperty("killed", killed);
    RecordProperty("savedButNotReported", savedButNotReported);

    ScriptedDesk desk;
    auto& main = tests::StartProgram(desk, practice.Folder());
    for (int round = 0; round < static_cast<int>(settled.size()); ++round)
        EXPECT_EQ(CountSettled(round, settled[round]), settled[round]) << "round " << round;
    tests::Quit(desk, main);
    EXPECT_EQ(QDir(practice.File("ARCHIVES")).entryList(QDir::Files | QDir::Hidden), QStringList("ZEP_ONE.MDB"))
        << "what a kill left half made is gone";
    ExpectSoundFile("ARCHIVES/ZEP_ONE.MDB");
}
