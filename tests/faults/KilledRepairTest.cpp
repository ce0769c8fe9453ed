#include "core/globals.h"
#include "faults/FolderContent.h"
#include "practice/check/Check.h"
#include "practice/check/Repair.h"
#include "support/ChildProcess.h"
#include "support/Globals.h"
#include "support/KillAtEachStep.h"
#include "support/OtherProgram.h"
#include "support/Printing.h"
#include "support/ScriptedDesk.h"

#include <QDir>
#include <QtEndian>
#include <unistd.h>

namespace {

constexpr const char* Spoilt = R"(
    with recursive n(i) as (select 1 union all select i + 1 from n where i < 3000)
        insert into Actes (num, Date, MM, AA, HH, montant, flag_R) select i, '17/06/2008', 1, 1, 0, i, 2 from n;
    drop index Actes_Mois;
)";

const QDateTime Moment(QDate(2026, 11, 24), QTime(18, 2, 33));

/// What of a repair is seen in a database: all of it or nothing.
QString State(const QString& database)
{
    return tests::OtherProgram(database).Answer(
        "select (select count(*) from Actes where Date = '2008-06-17' and MM = 6 and AA = 2008 and montant = num) || "
        "'/' "
        "|| (select count(*) from Actes where Date = '17/06/2008' and MM = 1 and AA = 1 and montant = num) || '/' || "
        "(select count(*) from sqlite_schema where name = 'Actes_Mois')");
}

/// Overwrites the first page below the root of an index.
void DestroyLeaf(const QString& database, const char* index)
{
    constexpr qint64 pageSize = 4096;
    const QString root = QString("select rootpage from sqlite_schema where name = '%1'").arg(index);
    const qint64 page = pageSize * (tests::OtherProgram(database).Answer(qPrintable(root)).toInt() - 1);
    QByteArray bytes = tests::BytesOf(database);
    constexpr qint64 firstCell = 12; // its place in the page, where the number of the page below is
    const qint64 cell = page + qFromBigEndian<quint16>(bytes.constData() + page + firstCell);
    const qint64 below = pageSize * (qFromBigEndian<quint32>(bytes.constData() + cell) - 1);
    tests::WriteFile(database, bytes.replace(below, pageSize, QByteArray(pageSize, '\xA5')));
}

/// Leaves the practice to other processes.
void CloseAll(tests::Practice& practice)
{
    practice.Open();
    tests::ResetGlobals();
}

} // namespace

TEST(KilledRepair, LeavesThePracticeAsItWasOrMended)
{
    const tests::FolderInMemory memory;
    tests::Practice practice;
    CloseAll(practice);
    const QString database = practice.File("ZEP_ONE.MDB");
    ASSERT_EQ(tests::OtherProgram(database).Run(Spoilt), SQLITE_OK);
    const QString spoilt = "0/3000/0", mended = "3000/0/1";

    tests::KillAtEachStep({.folder = practice.Folder(),
                           .work =
                               [&](const tests::Play::Done&) {
                                   if (State(database) != mended)
                                       practice::RepairPractice(practice.Folder(), Moment);
                               },
                           .state = [&] { return State(database); },
                           .allowed =
                               [&](int) {
                                   return QStringList{spoilt, mended};
                               },
                           .check =
                               [&](const QString&) {
                                   const QDir archives(practice.File("ARCHIVES"));
                                   for (const QString& copy : archives.entryList({"*.MDB"}))
                                       EXPECT_EQ(State(archives.filePath(copy)), spoilt);
                               }});
}

TEST(KilledRepair, LeavesThePracticeAsItWasOrMadeAnew)
{
    const tests::FolderInMemory memory;
    tests::Practice practice;
    CloseAll(practice);
    const QString database = practice.File("ZEP_ONE.MDB");
    ASSERT_EQ(tests::OtherProgram(database).Run(Spoilt), SQLITE_OK);
    practice::RepairPractice(practice.Folder(), Moment);
    ASSERT_TRUE(QDir(practice.File("ARCHIVES")).removeRecursively());
    tests::OtherProgram(database).Run("pragma journal_mode = delete");
    DestroyLeaf(database, "Actes_Mois");
    const auto state = [](const QString& file) {
        return tests::OtherProgram(file).Answer("select sum(montant) from Actes not indexed") + " " +
               tests::OtherProgram(file).Answer("pragma integrity_check(1)").left(2);
    };
    const QString destroyed = state(database), sound = "4501500.0 ok";
    ASSERT_NE(destroyed, sound);

    tests::KillAtEachStep({.folder = practice.Folder(),
                           .work =
                               [&](const tests::Play::Done&) {
                                   if (state(database) != sound)
                                       practice::RepairPractice(practice.Folder(), Moment);
                                   EXPECT_FALSE(QFile::exists(database + ".part"));
                               },
                           .state = [&] { return state(database); },
                           .allowed =
                               [&](int) {
                                   return QStringList{destroyed, sound};
                               },
                           .check =
                               [&](const QString& left) {
                                   const QDir archives(practice.File("ARCHIVES"));
                                   const QStringList copies = archives.entryList({"*.MDB"});
                                   EXPECT_TRUE(left != sound || !copies.isEmpty());
                                   for (const QString& copy : copies)
                                       EXPECT_EQ(state(archives.filePath(copy)), destroyed);
                               },
                           .mayStay = "ZEP_ONE"});
}

TEST(CheckedPractice, StaysAsItIsWhileTheProgramHasItOpen)
{
    tests::Practice practice;
    CloseAll(practice);
    tests::ChildProcess program([&](tests::Reports& reports) {
        const ScriptedDesk desk;
        practice.Open();
        core::TheDatabase.Execute("update Presta set Ordre = 1.5 where num = 2");
        reports.Send(core::TheDatabase.OpenRecordset("select count(num) as S1 from Presta")["S1"].Long());
        ::pause();
    });
    ASSERT_EQ(program.Next<int>(), 2);

    const tests::FolderContent before = tests::ContentOf(practice.Folder());
    ASSERT_TRUE(before.contains("ZEP_ONE.MDB-wal"));
    const practice::CheckReport report = practice::CheckPractice(practice.Folder());
    EXPECT_TRUE(report.failures.contains("Presta : Ordre n'est pas un nombre entier (1 ligne, num 2 : 1.5)"))
        << "which is in the log alone";
    EXPECT_TRUE(tests::ContentOf(practice.Folder()) == before);

    EXPECT_EQ(ErrorOf([&] { practice::RepairPractice(practice.Folder(), Moment); }), Error::Locked);
    EXPECT_TRUE(tests::ContentOf(practice.Folder()) == before);
}
