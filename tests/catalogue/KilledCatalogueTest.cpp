#include "catalogue/J_PROD.h"
#include "catalogue/Tarifs.h"
#include "core/globals.h"
#include "core/opening.h"
#include "faults/Rounds.h"
#include "support/ChildProcess.h"
#include "support/Practice.h"
#include "support/Reports.h"
#include "support/ScriptedDesk.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>
#include <thread>

using catalogue::J_PROD;
using catalogue::Tarifs;
using std::chrono::microseconds;
using std::chrono::steady_clock;

namespace {

constexpr int ServiceCount = 300;

int Kills()
{
    return tests::IsLongForm() ? 200 : 10;
}

/// The program, killed while a screen writes on being left: what is stored is as before or as after, whole.
class KilledCatalogue : public testing::Test {
protected:
    void SetUp() override
    {
        practice.Open();
        core::TheDatabase.Close();
        practice.Write(QString("with recursive n(i) as (select 2 union all select i + 1 from n where i < %1) "
                               "insert into Presta (denom, Ordre) select 'S' || i, i from n")
                           .arg(ServiceCount - 1));
        practice.Write("insert into Tarif (C) values (0)");
    }

    /// Brings the last service behind the first, so that every place but one changes hands.
    static void ReverseAndLeave(tests::Reports& reports, int)
    {
        ScriptedDesk desk;
        core::OpenDataFiles();
        auto& screen = desk.Open<J_PROD>();
        screen.Grid1.SetRow(screen.Grid1.Rows() - 1);
        screen.Grid1_Click();
        for (int place = ServiceCount - 1; place > 1; --place)
            screen.MoveService(J_PROD::MoveUp);
        reports.Tell('!');
        screen.Crecettes_Click(J_PROD::Quit);
        reports.Tell('.');
    }

    /// Sets every rate to the number of the round.
    static void SetRatesAndLeave(tests::Reports& reports, int round)
    {
        ScriptedDesk desk;
        core::OpenDataFiles();
        auto& screen = desk.Open<Tarifs>();
        for (int row = 0; row < screen.Grid1.Rows(); ++row) {
            screen.Grid1.SetRow(row);
            screen.Grid1_DblClick();
            screen.RateField.setText(QString::number(round));
            screen.Image2_Click(Tarifs::AcceptEntry);
        }
        reports.Tell('!');
        screen.Image2_Click(Tarifs::StoreAndQuit);
        reports.Tell('.');
    }

    using Work = void (*)(tests::Reports&, int round);

    /// Plays the work to its end; how long leaving the screen has taken.
    static microseconds PlayWhole(Work work)
    {
        tests::ChildProcess program([work](tests::Reports& reports) { work(reports, 0); });
        EXPECT_TRUE(program.Next<char>());
        const auto started = steady_clock::now();
        EXPECT_TRUE(program.Next<char>());
        const auto took = std::chrono::duration_cast<microseconds>(steady_clock::now() - started);
        program.Wait();
        return took;
    }

    /// Kills the work at a moment that chance picks, while it leaves its screen.
    void PlayAndKill(Work work, int round, microseconds leaving)
    {
        std::uniform_int_distribution<long> moment(0, leaving.count());
        tests::ChildProcess program([work, round](tests::Reports& reports) { work(reports, round); });
        ASSERT_TRUE(program.Next<char>());
        std::this_thread::sleep_for(microseconds(moment(random)));
        program.Kill();
    }

    /// What another program finds afterwards, the file being sound.
    QStringList Find(const QString& statement)
    {
        const ScriptedDesk desk; // no message is expected
        core::OpenDataFiles();
        QStringList found;
        for (dao::Recordset rows = core::TheDatabase.OpenRecordset(statement); !rows.IsEOF(); rows.MoveNext())
            for (int field = 0; field < rows.FieldCount(); ++field)
                found << (rows.Fields(field).IsNull() ? QString("-") : rows.Fields(field).Text());
        core::TheDatabase.Close();
        EXPECT_EQ(dao::CheckDatabase(practice.File("ZEP_ONE.MDB")), QStringList());
        return found;
    }

    /// Kills came before and after the moment of writing. A few of them, on a busy machine, may all fall on one side.
    static void ExpectBoth(int written)
    {
        RecordProperty("written", written);
        if (!tests::IsLongForm())
            return;
        EXPECT_GT(written, Kills() / 20);
        EXPECT_LT(written, Kills() * 19 / 20);
    }

    tests::Practice practice;
    std::mt19937 random{20080617};
};

} // namespace

TEST_F(KilledCatalogue, KeepsTheOldOrderOrTheNewOne)
{
    const QString order = "select num from Presta order by Ordre";
    const microseconds leaving = PlayWhole(ReverseAndLeave);
    int written = 0;
    for (int round = 1; round <= Kills() && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const QStringList before = Find(order);
        QStringList after = before;
        after.move(ServiceCount - 1, 1);
        PlayAndKill(ReverseAndLeave, round, leaving);
        const QStringList found = Find(order);
        EXPECT_TRUE(found == before || found == after);
        written += found == after;
    }
    ExpectBoth(written);
}

TEST_F(KilledCatalogue, KeepsTheOldRatesOrTheNewOnes)
{
    const QString rates = "select * from Tarif";
    const microseconds leaving = PlayWhole(SetRatesAndLeave);
    int written = 0;
    for (int round = 1; round <= Kills() && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const QStringList before = Find(rates);
        PlayAndKill(SetRatesAndLeave, round, leaving);
        const QStringList found = Find(rates);
        const QStringList after(found.size(), QString::number(round));
        EXPECT_TRUE(found == before || found == after) << found.join(' ').toStdString();
        written += found == after;
    }
    ExpectBoth(written);
}
