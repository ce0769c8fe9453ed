#include "catalogue/J_PROD.h"
#include "catalogue/Tarifs.h"
#include "core/globals.h"
#include "core/opening.h"
#include "support/ChildProcess.h"
#include "support/DeadlyWrites.h"
#include "support/Practice.h"
#include "support/Reports.h"
#include "support/Rounds.h"
#include "support/ScriptedDesk.h"

#include <gtest/gtest.h>

using catalogue::J_PROD;
using catalogue::Tarifs;

namespace {

constexpr int ServiceCount = 300;

constexpr int KillsInShortForm = 10;

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
    static void ReverseAndLeave(tests::Reports& reports, int, int deadlyWrite)
    {
        ScriptedDesk desk;
        core::OpenDataFiles();
        auto& screen = desk.Open<J_PROD>();
        screen.Grid1.SetRow(screen.Grid1.Rows() - 1);
        screen.Grid1_Click();
        for (int place = ServiceCount - 1; place > 1; --place)
            screen.MoveService(J_PROD::MoveUp);
        tests::DieAtWrite(deadlyWrite);
        screen.Crecettes_Click(J_PROD::Quit);
        core::TheDatabase.Close();
        reports.Tell(tests::WritesMade());
    }

    /// Sets every rate to the number of the round.
    static void SetRatesAndLeave(tests::Reports& reports, int round, int deadlyWrite)
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
        tests::DieAtWrite(deadlyWrite);
        screen.Image2_Click(Tarifs::StoreAndQuit);
        core::TheDatabase.Close();
        reports.Tell(tests::WritesMade());
    }

    using Work = void (*)(tests::Reports&, int round, int deadlyWrite);

    /// Plays the work to its end; returns how many writes to the disk leaving the screen has made.
    static int PlayWhole(Work work)
    {
        tests::ChildProcess program([work](tests::Reports& reports) { work(reports, 0, 0); });
        const int writes = program.Next<int>().value_or(0);
        program.Wait();
        EXPECT_GT(writes, 1);
        return writes;
    }

    static void PlayAndKill(Work work, int round, int deadlyWrite)
    {
        tests::ChildProcess program(
            [work, round, deadlyWrite](tests::Reports& reports) { work(reports, round, deadlyWrite); });
        EXPECT_EQ(program.Next<int>(), std::nullopt);
        EXPECT_TRUE(program.Kill());
    }

    /// The writes at which kills fall: a few of them, spread over all, or each one in the long form.
    static std::vector<int> DeadlyWrites(int writes)
    {
        std::vector<int> deadly;
        for (int write = 1; write <= writes; write += tests::IsLongForm() ? 1 : std::max(1, writes / KillsInShortForm))
            deadly.push_back(write);
        return deadly;
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

    tests::Practice practice;
};

} // namespace

TEST_F(KilledCatalogue, KeepsTheOldOrderOrTheNewOne)
{
    const QString order = "select num from Presta order by Ordre";
    const std::vector<int> deadly = DeadlyWrites(PlayWhole(ReverseAndLeave));
    int written = 0;
    for (int round = 1; round <= int(deadly.size()) && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const QStringList before = Find(order);
        QStringList after = before;
        after.move(ServiceCount - 1, 1);
        PlayAndKill(ReverseAndLeave, round, deadly[std::size_t(round - 1)]);
        const QStringList found = Find(order);
        EXPECT_TRUE(found == before || found == after);
        written += found == after;
    }
    EXPECT_GT(written, 0);
    EXPECT_LT(written, int(deadly.size()));
}

TEST_F(KilledCatalogue, KeepsTheOldRatesOrTheNewOnes)
{
    const QString rates = "select * from Tarif";
    const std::vector<int> deadly = DeadlyWrites(PlayWhole(SetRatesAndLeave));
    int written = 0;
    for (int round = 1; round <= int(deadly.size()) && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        const QStringList before = Find(rates);
        PlayAndKill(SetRatesAndLeave, round, deadly[std::size_t(round - 1)]);
        const QStringList found = Find(rates);
        const QStringList after(found.size(), QString::number(round));
        EXPECT_TRUE(found == before || found == after) << found.join(' ').toStdString();
        written += found == after;
    }
    EXPECT_GT(written, 0);
    EXPECT_LT(written, int(deadly.size()));
}
