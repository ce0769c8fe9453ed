#include "core/globals.h"
#include "core/opening.h"
#include "data/Practice.h"
#include "platform/dao/ReadOnlyQuery.h"
#include "support/ChildProcess.h"
#include "support/Globals.h"
#include "support/Practice.h"
#include "support/Printing.h"

#include <QFile>
#include <gtest/gtest.h>

// Two machines on one share don't have the index of the log in common: the second one is told and saves nothing, the
// first one prints what it has just saved.
TEST(NetworkShare, IsWorkedOnByOneProgramAtATime)
{
    tests::Practice practice;
    practice.Act({.montant = 10});
    practice.Open();
    tests::ResetGlobals();
    store::OpeningRules& rules = data::PracticeRules();
    const store::OpeningRules before = rules;
    rules.isHeldAlone = true;
    rules.patience = 50;
    core::DataFolder = practice.Folder();
    const QString file = practice.File("ZEP_ONE.MDB");
    const auto open = [&] {
        core::CreateTheWorkspace();
        core::TheDatabase = core::TheWorkspace.OpenDatabase(file, rules);
    };
    tests::ChildProcess first([&](tests::Reports& reports) {
        open();
        core::TheDatabase.Execute("update Actes set montant = 20");
        const dao::RowTable rows = dao::ReadOnlyQuery(file).Read("select montant from Actes", {}, {.rows = 2});
        reports.Send(rows.Cell(0, 0).Double());
        EXPECT_FALSE(QFile::exists(file + "-shm"));
        core::TheDatabase.Execute("update Actes set montant = 30");
        reports.Send(core::TheDatabase.OpenRecordset("Actes")["montant"].Double());
        ::pause();
    });
    EXPECT_EQ(first.Next<double>(), 20);
    EXPECT_EQ(first.Next<double>(), 30);
    const QString refusal = Raised(open);
    EXPECT_TRUE(refusal.startsWith("3187: ") && refusal.contains("partage réseau")) << refusal.toStdString();
    EXPECT_TRUE(first.Kill());
    open();
    EXPECT_EQ(core::TheDatabase.OpenRecordset("Actes")["montant"].Double(), 30) << "acknowledged, then killed";
    tests::ResetGlobals();
    rules = before;
}
