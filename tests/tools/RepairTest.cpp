#include "practice/check/Repair.h"

#include "tools/SmallOffice.h"

#include <sys/stat.h>

namespace {

class PracticeRepair : public SmallOffice {
protected:
    static QStringList Mended(const CommandRun& run)
    {
        return run.output.split('\n').filter(QRegularExpression("^  Réparé : "));
    }
    QStringList Copies() const
    {
        QStringList copies;
        for (const QString& name : QDir(Folder() + "/ARCHIVES").entryList(QDir::Files | QDir::Hidden))
            if (!name.endsWith(".sceau"))
                copies << Folder() + "/ARCHIVES/" + name;
        return copies;
    }
    void RemoveCopies() const
    {
        for (const QString& copy : Copies()) {
            EXPECT_TRUE(QFile::remove(copy));
            QFile::remove(copy + ".sceau");
        }
    }
};

struct Mend {
    const char* sql;
    QStringList lines;
};

TEST_F(PracticeRepair, MendsWhatIsCertainAfterACopyAndSaysSo)
{
    const Mend mends[] = {
        {"update Actes set MM = 13, AA = null where num = 2",
         {"  Réparé : Actes : MM repris de Date (1 ligne, num 2 : 13)",
          "  Réparé : Actes : AA repris de Date (1 ligne, num 2 : vide)"}},
        {"update Actes set Date = '1/8/2009', MM = 'juin' where num = 2",
         {"  Réparé : Actes : Date mis sous la forme aaaa-mm-jj (1 ligne, num 2 : « 1/8/2009 »)",
          "  Réparé : Actes : MM repris de Date (1 ligne, num 2 : « juin »)",
          "  Réparé : Actes : AA repris de Date (1 ligne, num 2 : 2008)"}},
        {"update Patients set Naiss = ' 31/01/1950 ' where num = 1",
         {"  Réparé : Patients : Naiss mis sous la forme aaaa-mm-jj (1 ligne, num 1 : «  31/01/1950  »)"}},
        {"update Recettes set Date = '16/06/2008', MM = 16",
         {"  Réparé : Recettes : Date mis sous la forme aaaa-mm-jj (1 ligne, num 1 : « 16/06/2008 »)",
          "  Réparé : Recettes : MM repris de Date (1 ligne, num 1 : 16)"}},
        {"update Permn set Date = '2008-06-17'",
         {"  Réparé : Permn : Date mis sous la forme jj/mm/aaaa (1 ligne, « 2008-06-17 »)"}},
        {"drop index Actes_Mois; drop index Plani_Date",
         {"  Réparé : Index Actes_Mois : créé sur Actes (AA, MM, num_presta).",
          "  Réparé : Index Plani_Date : créé sur Plani (date, Num_Presta, HH)."}},
        {"drop index Actes_Mois; create unique index Actes_Mois on Actes (num)",
         {"  Réparé : Index Actes_Mois : refait sur Actes (AA, MM, num_presta)."}},
    };
    for (const auto& [sql, lines] : mends) {
        RemoveCopies();
        Spoil(sql);
        // A file that was put back from the archive has no log; one that the program left has.
        Run(&sql == &mends[0].sql ? "pragma journal_mode = delete" : "pragma journal_mode = wal");
        const QStringList faults = Check();
        const CommandRun run({"repair", Folder()});
        EXPECT_EQ(Mended(run), lines) << sql;
        EXPECT_EQ(run.code, 0) << sql << run.output.toStdString() << run.errors.toStdString();
        EXPECT_EQ(Check(), QStringList()) << sql;
        ASSERT_EQ(Copies().size(), 1) << sql;
        EXPECT_TRUE(run.output.contains("  Copie de sécurité : " + Copies()[0] + "\n"));
        EXPECT_EQ(Findings(CommandRun({"check", Copies()[0]})), faults) << sql;
    }
}

TEST_F(PracticeRepair, StoresTheRightValuesAndChangesNoOther)
{
    Spoil("update Actes set Date = '01/08/2009', MM = 1, AA = 2001 where num = 2; update Permn set Date = '2008-06-07';"
          "update Recettes set MM = null");
    const char* const others =
        "select group_concat(num || Date || coalesce(MM, '') || AA || montant || coalesce(Type, '') "
        "|| HH || flag_R || Flag_H, '/') from Actes where num <> 2";
    const QString before = Answer(others);
    EXPECT_EQ(CommandRun({"repair", Folder()}).code, 0);
    EXPECT_EQ(Answer("select Date || ' ' || MM || ' ' || AA || ' ' || montant from Actes where num = 2"),
              "2009-08-01 8 2009 0.0");
    EXPECT_EQ(Answer("select Date from Permn"), "07/06/2008");
    EXPECT_EQ(Answer("select MM || typeof(MM) from Recettes"), "6.0real");
    EXPECT_EQ(Answer(others), before);
}

TEST_F(PracticeRepair, RebuildsADamagedIndexAfterACopyOfItAsItIs)
{
    SpoilIndex("Actes_Mois", AddAct);
    const CommandRun run({"repair", Folder()});
    EXPECT_EQ(Mended(run), QStringList("  Réparé : Index Actes_Mois : reconstruit."));
    EXPECT_EQ(run.code, 0) << run.output.toStdString();
    EXPECT_EQ(Answer("select count(*) from Actes indexed by Actes_Mois where AA = 2008"), "4");
    ASSERT_EQ(Copies().size(), 1);
    EXPECT_EQ(CommandRun({"check", Copies()[0]}).code, 1) << "the copy is what was there before";
}

TEST_F(PracticeRepair, TellsWhichValuesAnIndexContradicted)
{
    SpoilIndex("Recettes_Date", "update Recettes set montant = 99");
    const CommandRun run({"repair", Folder()});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(
        run.output.contains("  Réparé : Index Recettes_Date : reconstruit.\n  À vérifier : Recettes : montant de num 1 "
                            "vaut 99, et 120.5 dans l'index Recettes_Date.\n"))
        << run.output.toStdString();
    EXPECT_EQ(Answer("select montant from Recettes indexed by Recettes_Date"), "99.0");
}

TEST_F(PracticeRepair, SetsALogOfAnotherFileAside)
{
    Spoil("pragma journal_mode = delete; update Actes set MM = 1 where num = 1");
    Write(File() + "-wal", "un autre journal");
    EXPECT_EQ(CommandRun({"repair", Folder()}).code, 0);
    EXPECT_EQ(Bytes(File() + "-wal.set-aside"), "un autre journal");
    EXPECT_EQ(Answer("select MM from Actes where num = 1"), "6");
}

TEST_F(PracticeRepair, LeavesWhatIsNotCertainAndListsIt)
{
    Spoil(
        "update Actes set montant = 'douze', Date = '06/17/2008' where num = 2; update Actes set MM = 1 where num = 1;"
        "update Actes set date_Presta = '31/02/2008' where num = 1");
    const CommandRun run({"repair", Folder()});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Mended(run), QStringList("  Réparé : Actes : MM repris de Date (1 ligne, num 1 : 1)"));
    EXPECT_EQ(
        Findings(run),
        QStringList({"  ERREUR : Actes : Date n'est pas une date aaaa-mm-jj (1 ligne, num 2 : « 06/17/2008 »)",
                     "  ERREUR : Actes : date_Presta n'est pas une date aaaa-mm-jj (1 ligne, num 1 : « 31/02/2008 »)",
                     "  ERREUR : Actes : montant n'est pas un nombre (1 ligne, num 2 : « douze »)"}));
    EXPECT_TRUE(run.output.endsWith("Le cabinet n'est pas en ordre.\n"));
    EXPECT_EQ(Answer("select Date || MM || montant from Actes where num = 2"), "06/17/20086douze");
}

TEST_F(PracticeRepair, ChangesNothingWhereNothingIsToBeMended)
{
    for (const char* const sql : {"select 1", "update Actes set HH = 10 where num = 1"}) {
        Spoil(sql);
        const QByteArray before = Bytes(File());
        const CommandRun run({"repair", Folder()});
        EXPECT_EQ(run.code, Check().isEmpty() ? 0 : 1) << sql;
        EXPECT_EQ(Mended(run), QStringList()) << sql;
        EXPECT_EQ(Bytes(File()), before) << sql;
        EXPECT_EQ(Copies(), QStringList()) << sql;
    }
}

TEST_F(PracticeRepair, SavesNothingInAFileThatStaysDamaged)
{
    Spoil("update Recettes set MM = 1");
    sound = Bytes(File());
    for (const bool isReadable : {false, true}) {
        SpoilTable("Actes", isReadable);
        const QByteArray before = Bytes(File());
        const CommandRun run({"repair", Folder()});
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(Mended(run), QStringList());
        EXPECT_TRUE(run.output.contains("  Rien n'a été modifié : ")) << run.output.toStdString();
        EXPECT_TRUE(run.output.contains("  ERREUR : La table Actes ou un de ses index est endommagé ("));
        EXPECT_EQ(Bytes(File()), before);
        EXPECT_EQ(Copies(), QStringList());
    }
}

TEST_F(PracticeRepair, ReplacesNoCopy)
{
    const QDateTime moment(QDate(2026, 11, 24), QTime(18, 2, 33));
    for (const char* const month : {"1", "2", "3"}) {
        Run((std::string("update Actes set MM = ") + month).c_str());
        practice::RepairPractice(Folder(), moment);
    }
    const QString name = Folder() + "/ARCHIVES/ZEP_ONE avant réparation 2026-11-24 18-02-33";
    EXPECT_EQ(tests::OtherProgram(name + ".MDB").Answer("select MM from Actes"), "1");
    EXPECT_EQ(tests::OtherProgram(name + " (2).MDB").Answer("select MM from Actes"), "2");
    EXPECT_EQ(tests::OtherProgram(name + " (3).MDB").Answer("select MM from Actes"), "3");
}

TEST_F(PracticeRepair, RefusesAnOpenPracticeAndOneThatCannotBeCopied)
{
    Spoil("update Actes set MM = 1");
    {
        const practice::PracticeData open(Folder());
        const CommandRun run({"repair", Folder()});
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.errors,
                  "practice : Le cabinet est ouvert dans un programme : quittez-le, puis recommencez. Rien n'a "
                  "été modifié.\n");
    }
    EXPECT_EQ(Answer("select count(*) from Actes where MM = 1"), "3");

    const std::string archives = (Folder() + "/ARCHIVES").toStdString();
    ASSERT_EQ(::chmod(archives.c_str(), 0500), 0);
    const CommandRun run({"repair", Folder()});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.errors.startsWith("practice : La copie de sécurité ne peut pas être faite dans"))
        << run.errors.toStdString();
    ASSERT_EQ(::chmod(archives.c_str(), 0700), 0);
    EXPECT_EQ(Answer("select count(*) from Actes where MM = 1"), "3");

    ASSERT_TRUE(QDir(Folder()).rmdir("ARCHIVES"));
    EXPECT_EQ(CommandRun({"repair", Folder()}).code, 0) << "the folder is made";
    EXPECT_EQ(Copies().size(), 1);
    EXPECT_EQ(CommandRun({"repair", Folder() + "/rien"}).code, 1);
}

TEST_F(PracticeRepair, KeepsWhatALogHolds)
{
    QByteArray file;
    QByteArray log;
    {
        tests::OtherProgram other(File());
        ASSERT_EQ(other.Run("pragma journal_mode = wal; update Actes set montant = 77, MM = 1 where num = 2"),
                  SQLITE_OK);
        file = Bytes(File());
        log = Bytes(File() + "-wal");
    }
    Write(File(), file);
    Write(File() + "-wal", log);
    EXPECT_EQ(CommandRun({"repair", Folder()}).code, 0);
    EXPECT_FALSE(QFile::exists(File() + "-wal"));
    EXPECT_EQ(Answer("select montant || ' ' || MM from Actes where num = 2"), "77.0 6");
    ASSERT_EQ(Copies().size(), 1);
    EXPECT_EQ(tests::OtherProgram(Copies()[0]).Answer("select montant || ' ' || MM from Actes where num = 2"),
              "77.0 1");
}

} // namespace
