#include "core/globals.h"
#include "data/Practice.h"
#include "platform/store/Creation.h"
#include "support/Globals.h"
#include "support/KillAtEachStep.h"
#include "support/OtherProgram.h"
#include "support/ScriptedDesk.h"

#include <QFile>

namespace {

constexpr const char* OlderRows = R"(
    insert into Presta (num, denom, prix, Ordre) values (1, 'Consultation', 800, 0), (2, 'ECG', 1200, 1);
    insert into Plani (num, Num_Presta) values (1, 9);
    with recursive n(i) as (select 1 union all select i + 1 from n where i < 3000)
        insert into Recettes (num, objet, montant) select i, 'Coton', i from n;
)";

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
    practice.Open();
    tests::ResetGlobals();
    const QString database = practice.File("ZEP_ONE.MDB");
    QFile::remove(database);
    store::CreateDatabase(database, data::Schema().remove(" AUTOINCREMENT") + QString::fromUtf8(OlderRows));
    ASSERT_EQ(tests::OtherProgram(database).Run("pragma user_version=1; pragma journal_mode=delete"), SQLITE_OK);

    const auto open = [&practice](const tests::Play::Done&) {
        const ScriptedDesk desk; // no message is expected
        practice.Open();
        tests::ResetGlobals();
    };
    tests::KillAtEachStep({.folder = practice.Folder(),
                           .work = open,
                           .state =
                               [&] {
                                   tests::OtherProgram program(database);
                                   return program.Answer("pragma user_version") +
                                          program.Answer(
                                              "select ' ' || count(num) || ' ' || sum(montant) from Recettes");
                               },
                           .check =
                               [&](const QString&) {
                                   const ScriptedDesk desk;
                                   practice.Open();
                                   EXPECT_EQ(KeyOfNewRow("Plani"), 2);
                                   EXPECT_EQ(KeyOfNewRow("Presta"), 10) << "an appointment holds 9";
                                   tests::ResetGlobals();
                               }});
}
