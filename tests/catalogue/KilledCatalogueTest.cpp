#include "catalogue/J_PROD.h"
#include "catalogue/Tarifs.h"
#include "core/globals.h"
#include "core/opening.h"
#include "platform/store/DatabaseReader.h"
#include "support/ChildProcess.h"
#include "support/DeadlyWrites.h"
#include "support/Practice.h"
#include "support/Reports.h"
#include "support/Rounds.h"
#include "support/ScriptedDesk.h"

#include <functional>
#include <gtest/gtest.h>

using catalogue::J_PROD;
using catalogue::Tarifs;

namespace {

constexpr int ServiceCount = 300;

constexpr int KillsInShortForm = 10;

/// Kills the program while a screen saves on leaving: the old or the new state is stored completely.
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

    /// Moves the last service after the first, so that all but one change position.
    static void MoveLastAndLeave(tests::Reports& reports, int, int deadlyWrite)
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
        reports.Send(tests::WritesMade());
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
        reports.Send(tests::WritesMade());
    }

    using Work = void (*)(tests::Reports&, int round, int deadlyWrite);

    /// Runs the work to the end; returns the number of disk writes made by leaving the screen.
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

    /// The writes at which to kill: a few, spread over all, or each one in the long form.
    static std::vector<int> DeadlyWrites(int writes)
    {
        std::vector<int> deadly;
        for (int write = 1; write <= writes; write += tests::IsLongForm() ? 1 : std::max(1, writes / KillsInShortForm))
            deadly.push_back(write);
        return deadly;
    }

    /// The stored values afterwards; the file must be sound.
    QStringList Find(const QString& statement)
    {
        const ScriptedDesk desk; // no message is expected
        core::OpenDataFiles();
        QStringList found;
        for (dao::Recordset rows = core::TheDatabase.OpenRecordset(statement); !rows.IsEOF(); rows.MoveNext())
            for (int field = 0; field < rows.FieldCount(); ++field)
                found << (rows.Fields(field).IsNull() ? QString("-") : rows.Fields(field).Text());
        core::TheDatabase.Close();
        EXPECT_EQ(store::CheckDatabase(practice.File("ZEP_ONE.MDB")), QStringList());
        return found;
    }

    /// Kills the work in rounds. What `statement` selects must be as before the round or as `after` computes it.
    void ExpectOldOrNew(Work work, const QString& statement,
                        const std::function<QStringList(const QStringList& before, int round)>& after)
    {
        const std::vector<int> deadly = DeadlyWrites(PlayWhole(work));
        const int rounds = tests::IsLongForm() ? 200 : static_cast<int>(deadly.size());
        int written = 0;
        for (int round = 1; round <= rounds && !HasFailure(); ++round) {
            SCOPED_TRACE(round);
            const QStringList before = Find(statement);
            PlayAndKill(work, round, deadly[static_cast<std::size_t>(round - 1) % deadly.size()]);
            const QStringList found = Find(statement);
            const bool isNew = found == after(before, round);
            EXPECT_TRUE(isNew || found == before) << found.join(' ').toStdString();
            written += isNew;
        }
        EXPECT_GT(written, 0);
        EXPECT_LT(written, rounds);
    }

    tests::Practice practice;
};

} // namespace

TEST_F(KilledCatalogue, KeepsTheOldOrderOrTheNewOne)
{
    ExpectOldOrNew(MoveLastAndLeave, "select num from Presta order by Ordre", [](QStringList order, int) {
        order.move(ServiceCount - 1, 1);
        return order;
    });
}

TEST_F(KilledCatalogue, KeepsTheOldRatesOrTheNewOnes)
{
    ExpectOldOrNew(SetRatesAndLeave, "select * from Tarif", [](const QStringList& before, int round) {
        return QStringList(before.size(), QString::number(round));
    });
}
