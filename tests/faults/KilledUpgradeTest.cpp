#include "core/globals.h"
#include "data/Practice.h"
#include "faults/FolderContent.h"
#include "platform/store/Creation.h"
#include "support/ChildProcess.h"
#include "support/DeadlyWrites.h"
#include "support/FolderInMemory.h"
#include "support/Globals.h"
#include "support/OtherProgram.h"
#include "support/Practice.h"
#include "support/Printing.h"
#include "support/Rounds.h"
#include "support/ScriptedDesk.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

constexpr const char* Rows = R"(
    insert into Presta (num, denom, prix, Ordre) values (1, 'Consultation', 800, 0), (2, 'ECG', 1200, 1);
    insert into Plani (num, Num_Presta) values (1, 9);
    with recursive n(i) as (select 1 union all select i + 1 from n where i < 3000)
        insert into Recettes (num, objet, montant) select i, 'Coton', i from n;
)";

dao::Value Answer(const char* statement)
{
    return core::TheDatabase.OpenRecordset(statement).Fields(0).Get();
}

dao::Key KeyOfNewRow(const char* table)
{
    dao::Recordset rows = core::TheDatabase.OpenRecordset(table);
    rows.AddNew();
    rows.Update();
    return rows.LastKey();
}

} // namespace

// Kills the upgrade of a practice of the first version: the next opening finds every row and never reuses a key.
TEST(KilledUpgrade, LeavesThePracticeUnchangedOrUpgraded)
{
    const tests::FolderInMemory memory;
    tests::Practice practice;
    const QString database = practice.File("ZEP_ONE.MDB");
    QFile::remove(database);
    store::CreateDatabase(database, data::Schema().remove(" AUTOINCREMENT") + QString::fromUtf8(Rows));
    ASSERT_EQ(tests::OtherProgram(database).Run("pragma user_version=1; pragma journal_mode=delete"), SQLITE_OK);
    const QByteArray older = tests::BytesOf(database);

    const auto open = [&practice](tests::Reports& reports, int deadlyWrite) {
        tests::DieAtWrite(deadlyWrite);
        const ScriptedDesk desk;
        practice.Open();
        reports.Send(tests::WritesMade());
    };
    tests::ChildProcess undisturbed([&](tests::Reports& reports) { open(reports, 0); });
    const int writes = undisturbed.Next<int>().value_or(0);
    undisturbed.Wait();
    ASSERT_GT(writes, 20);

    int broughtUpToDate = 0;
    for (int deadly = 1; deadly <= writes; deadly += tests::IsLongForm() ? 1 : writes / 20) {
        SCOPED_TRACE(deadly);
        for (const char* beside : {"-wal", "-shm"})
            QFile::remove(database + beside);
        tests::WriteContent(practice.Folder(), {{"ZEP_ONE.MDB", older}});
        tests::ChildProcess program([&](tests::Reports& reports) { open(reports, deadly); });
        EXPECT_EQ(program.Next<int>(), std::nullopt);
        EXPECT_TRUE(program.Kill());
        broughtUpToDate += tests::OtherProgram(database).Answer("pragma user_version") == "2";

        const ScriptedDesk desk; // no message is expected
        practice.Open();
        EXPECT_EQ(Answer("select count(num) from Recettes").Long(), 3000);
        EXPECT_EQ(Answer("select sum(montant) from Recettes").Double(), 3000. * 3001 / 2);
        EXPECT_EQ(KeyOfNewRow("Recettes"), 3001);
        EXPECT_EQ(KeyOfNewRow("Presta"), 10) << "an appointment holds 9";
        tests::ResetGlobals();
    }
    EXPECT_GT(broughtUpToDate, 0);
}
