#include "cash/J_CAISSE.h"
#include "core/globals.h"
#include "core/opening.h"
#include "core/printing.h"
#include "faults/Rounds.h"
#include "platform/basic/Dates.h"
#include "support/ChildProcess.h"
#include "support/FolderInMemory.h"
#include "support/MainWindow.h"
#include "support/Practice.h"

#include <QDir>
#include <QFile>

#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <thread>

using cash::J_CAISSE;
using std::chrono::microseconds;
using std::chrono::steady_clock;

namespace {

constexpr int Kills = 200;
constexpr int ActsOfADay = 20;
constexpr int ActsBetweenReports = 4;
constexpr int LongReport = 238 * 4096;

/// What an act holds once it is settled in its round: no two acts get the same amount, and none keeps a value it had.
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
    return {act, int(2 + act % 4), double(act) + 0.5};
}

QString DayOf(int round)
{
    return basic::DateText(QDate(2008, 1, 1).addDays(round));
}

/// The program at the till, killed while the acts of a day are settled one after the other. Each round has a day of its
/// own, so that what was settled before must outlive all later kills.
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

    /// Settles the first pending act as the user does; what the screen has said is saved is reported.
    static void SettleFirst(ScriptedDesk& desk, J_CAISSE& till, const Settlement& settlement)
    {
        till.Grid3.SetRow(0);
        till.Grid3_DblClick();
        till.SSPanel2.Code.SetListIndex(settlement.flag_R);
        till.SSPanel2.Amount.setText(QString::number(settlement.montant));
        desk.ExpectMessage("Correction enregistrée", forms::Icon::Information, "ZEP Lumo");
        till.SSPanel2.Image3[0].click();
    }

    /// A long report: with its pages the log comes close to the size at which an idle moment moves it into the file, so
    /// that one of the next settlements does.
    static void WriteReport()
    {
        core::RefillScratchTable("Prov", [](core::ScratchRows& rows) {
            rows.Add({{"Obs", QString(LongReport, 'x')}});
        });
    }

    /// A working day, from the opening of the data files to the archive copy. Reports the open till by an empty
    /// settlement.
    static void WorkThrough(tests::Reports& reports, int round)
    {
        ScriptedDesk desk;
        core::OpenDataFiles();
        core::PickedDate = DayOf(round);
        auto& till = desk.Open<J_CAISSE>();
        reports.Tell(Settlement{});
        for (int act = 0; act < ActsOfADay && !HasFailure(); ++act) {
            if (act % ActsBetweenReports == 0)
                WriteReport();
            const Settlement settlement = SettlementOf(FirstAct(round) + act);
            SettleFirst(desk, till, settlement);
            reports.Tell(settlement);
        }
        till.Unload();
        core::CloseDataFiles();
        core::CopyToArchives();
    }

    static tests::ChildProcess Start(int round)
    {
        return tests::ChildProcess([round](tests::Reports& reports) { WorkThrough(reports, round); });
    }

    /// How long each piece of an undisturbed day takes, so that a kill can be aimed at any of them alike.
    void TimeADay(int round)
    {
        tests::ChildProcess program = Start(round);
        auto last = steady_clock::now();
        const auto note = [&] {
            const auto now = steady_clock::now();
            pieces.push_back(std::chrono::duration_cast<microseconds>(now - std::exchange(last, now)));
        };
        while (program.Next<Settlement>())
            note();
        program.Wait();
        note();
        ASSERT_EQ(pieces.size(), ActsOfADay + 2);
    }

    /// Kills the program within a piece of its day that chance picks; returns how many settlements it has reported.
    int WorkAndKill(int round)
    {
        const auto piece = std::uniform_int_distribution<std::size_t>(0, pieces.size() - 1)(random);
        const auto delay = std::uniform_int_distribution<long>(0, pieces[piece].count())(random);

        tests::ChildProcess program = Start(round);
        int reports = 0;
        while (reports < int(piece) && program.Next<Settlement>())
            ++reports;
        EXPECT_EQ(reports, int(piece)) << "it stopped before";
        std::this_thread::sleep_for(microseconds(delay));
        killed += program.Kill();
        while (program.Next<Settlement>())
            ++reports;
        return std::max(reports - 1, 0);
    }

    /// Whether the log was being moved into the file: its index says how far that should go and how far it is.
    bool IsHalfEmptied() const
    {
        QFile index(practice.File("ZEP_ONE.MDB-shm"));
        if (!index.open(QIODevice::ReadOnly))
            return false;
        const QByteArray head = index.read(136);
        quint32 moved = 0;
        quint32 attempted = 0;
        if (head.size() < 136)
            return false;
        std::memcpy(&moved, head.constData() + 96, sizeof moved);
        std::memcpy(&attempted, head.constData() + 128, sizeof attempted);
        return attempted > moved;
    }

    /// How many acts of a round's day are settled: those that were reported, perhaps the next one, and each wholly or
    /// not at all.
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
        EXPECT_EQ(dao::CheckDatabase(practice.File(name)), QStringList()) << name.toStdString();
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
    std::mt19937 random{20080617 + GetParam()};
    std::vector<microseconds> pieces;
    int killed = 0;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Chance, KilledTill, testing::Range(0U, unsigned(tests::Rounds(1))));

TEST_P(KilledTill, LosesNoReportedSettlementAndLeavesNoneHalfDone)
{
    FillDays(Kills + 1);
    TimeADay(0);

    std::vector<int> settled{ActsOfADay};
    int midway = 0, savedButNotReported = 0, halfEmptied = 0;
    for (int round = 1; round <= Kills && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const int reported = WorkAndKill(round);
        halfEmptied += IsHalfEmptied();

        const ScriptedDesk desk; // no message is expected
        core::OpenDataFiles();
        settled.push_back(CountSettled(round, reported));
        ExpectSoundFile("ZEP_ONE.MDB");
        if (reported == ActsOfADay) // else it never came to the copy
            ExpectSoundFile("ARCHIVES/ZEP_ONE.MDB");
        core::TheDatabase.Close();
        midway += reported > 0 && reported < ActsOfADay;
        savedButNotReported += settled.back() - reported;
    }
    if (HasFailure())
        return;
    EXPECT_GT(killed, Kills * 4 / 5);
    EXPECT_GT(midway, Kills / 2);
    EXPECT_GT(savedButNotReported, Kills / 20);
    EXPECT_GT(halfEmptied, 0);
    RecordProperty("killed", killed);
    RecordProperty("savedButNotReported", savedButNotReported);
    RecordProperty("halfEmptied", halfEmptied);

    ScriptedDesk desk;
    auto& main = tests::StartProgram(desk, practice.Folder());
    for (int round = 0; round < int(settled.size()); ++round)
        EXPECT_EQ(CountSettled(round, settled[round]), settled[round]) << "round " << round;
    tests::Quit(desk, main);
    EXPECT_EQ(QDir(practice.File("ARCHIVES")).entryList(QDir::Files | QDir::Hidden), QStringList("ZEP_ONE.MDB"))
        << "what a kill left half made is gone";
    ExpectSoundFile("ARCHIVES/ZEP_ONE.MDB");
}
