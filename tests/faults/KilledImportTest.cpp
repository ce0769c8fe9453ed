#include "core/globals.h"
#include "faults/FolderContent.h"
#include "faults/SmallDisk.h"
#include "practice/feed/Feed.h"
#include "practice/import/Import.h"
#include "support/KillAtEachStep.h"
#include "support/OtherProgram.h"
#include "support/Printing.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>

namespace {

constexpr int Patients = 300;
constexpr int Acts = 3000;

/// A practice with one act, killed while it takes over a folder of tables: others beside the act, and another amount of
/// it.
class KilledImport : public testing::Test {
protected:
    KilledImport()
    {
        QDir().mkpath(csv);
        QByteArray patients = "num,nom,ville\n";
        for (int key = 2; key < Patients + 2; ++key)
            patients += QByteArray::number(key) + ",Nom" + QByteArray::number(key) + ",Alger\n";
        QByteArray acts = "num,Date,HH,montant,flag_R,num_patient,num_presta\n1,17/06/2008,0,750,2,1,1\n";
        for (int key = 2; key < Acts + 2; ++key)
            acts += QByteArray::number(key) + ",18/06/2008,0,100,2," + QByteArray::number(2 + key % Patients) + ",9\n";
        tests::WriteContent(csv, {{"Patients.csv", patients},
                                  {"Actes.csv", acts},
                                  {"Recettes.csv", "num,Date,objet,montant\n1,18/06/2008,Coton,50\n"},
                                  {"Permn.csv", "Charge1\n1500\n"}});
        practice.Open();
        core::TheDatabase.Close();
        EXPECT_EQ(tests::OtherProgram(database).Run("insert into Actes (num, Date, MM, AA, HH, montant, flag_R) values "
                                                    "(1, '2008-06-17', 6, 2008, 0, 500, 2)"),
                  SQLITE_OK);
    }

    /// What is in the practice, in one line.
    QString Content() const
    {
        const practice::PracticeData opened(practice.Folder()); // as the program does, without a question
        return tests::OtherProgram(database).Answer(
            "select (select count(*) from Patients) || ' ' || (select count(*) || ' ' || sum(montant) from Actes) "
            "|| ' ' || (select count(*) from Recettes) || ' ' || (select coalesce(Charge1, '-') from Permn) || "
            "' ' || (select seq from sqlite_sequence where name = 'Presta') || ' ' || (select count(*) from \"ZEP "
            "settlements\")");
    }

    tests::FolderInMemory memory;
    tests::Practice practice;
    const QString csv = practice.File("csv");
    const QString database = practice.File("ZEP_ONE.MDB");
};

} // namespace

TEST_F(KilledImport, LeavesAllOfItOrNothing)
{
    const QString nothing = "1 1 500.0 0 - 2 0";
    const QString all = QString("%1 %2 %3.0 1 1500.0 9 %2").arg(Patients + 1).arg(Acts + 1).arg(750 + 100 * Acts);
    tests::KillAtEachStep({.folder = practice.Folder(),
                           .work =
                               [this](const tests::Play::Done&) {
                                   practice::Import import(practice.Folder(), true);
                                   import.ReadFolder(csv);
                                   import.Write();
                                   EXPECT_EQ(import.ProblemTexts(), QStringList());
                               },
                           .state = [this] { return Content(); },
                           .allowed =
                               [&](int) {
                                   return QStringList{nothing, all};
                               }});
}

TEST_F(KilledImport, FeedsAllOfItOrNothing)
{
    tests::KillAtEachStep(
        {.folder = practice.Folder(),
         .work = [this](const tests::Play::Done&) { practice::Feed(practice.Folder(), {}).Run(csv); },
         .state = [this] { return Content(); },
         .check =
             [&](const QString& state) {
                 const int all = Acts + 1;
                 EXPECT_TRUE(state == "1 1 500.0 0 - 2 0" ||
                             state == QString("%1 %2 %3.0 0 - 9 %2").arg(Patients + 1).arg(all).arg(500 + 100 * Acts))
                     << state.toStdString();
             }});
}

// The rows wait in temporary files, which may be on another disk than the practice.
TEST_F(KilledImport, NamesTheFullDiskOfItsTemporaryFiles)
{
    const QString place = practice.File("temporary");
    QDir().mkpath(place);
    const tests::SmallDisk disk(place, 256);
    if (!disk.IsMounted())
        GTEST_SKIP() << "no right to mount a disk";
    QByteArray acts = "num,Date,HH,montant,flag_R\n";
    for (int key = 2; key < 40'000; ++key)
        acts += QByteArray::number(key) + ",18/06/2008,0,100,2\n";
    tests::WriteContent(csv, {{"Actes.csv", acts}});

    const QByteArray path = QFile::encodeName(place);
    sqlite3_temp_directory = sqlite3_mprintf("%s", path.constData());
    const auto usual = qScopeGuard([] {
        sqlite3_free(sqlite3_temp_directory);
        sqlite3_temp_directory = nullptr;
    });
    const QString refusal = Raised([&] { practice::Import(practice.Folder(), true).ReadFolder(csv); });
    EXPECT_TRUE(refusal.startsWith("61: ") && refusal.contains(place)) << refusal.toStdString();
    EXPECT_EQ(Content(), "1 1 500.0 0 - 2 0");
}
