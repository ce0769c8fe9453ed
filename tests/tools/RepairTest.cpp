#include "practice/check/Repair.h"
#include "support/Unix.h"

#include "tools/SmallOffice.h"

namespace {

class PracticeRepair : public SmallOffice {
protected:
    CommandRun Repair() const { return CommandRun({"repair", Folder()}); }
    /// What the command says of what it changed.
    static QStringList Changes(const CommandRun& run)
    {
        return run.output.split('\n').filter(QRegularExpression("^  (Réparé|À vérifier|Perdu) : "));
    }
    QStringList Copies() const
    {
        QStringList copies;
        for (const QString& name : QDir(Folder() + "/ARCHIVES").entryList(QDir::Files | QDir::Hidden))
            if (!name.endsWith(".sceau"))
                copies << Folder() + "/ARCHIVES/" + name;
        return copies;
    }
    /// All rows of each table, read from the tables themselves.
    QStringList Rows() const
    {
        const QString tables = Answer("select group_concat(name) from (select name from sqlite_schema "
                                      "where type = 'table' and name not like 'sqlite%' order by name)");
        QStringList rows;
        for (const QString& table : tables.split(',')) {
            const QString fields = Answer(qPrintable(
                "select group_concat('quote(' || name || ')', ' || ') from pragma_table_info('" + table + "')"));
            rows << table + ": " +
                        Answer(qPrintable("select group_concat(row, '/') from (select rowid || ' ' || " + fields +
                                          " as row from '" + table + "' not indexed order by rowid)"));
        }
        return rows;
    }
    void DestroyLeaves(const QString& name, const QList<int>& leaves) const
    {
        Run("pragma journal_mode = delete");
        tests::DestroyLeaves(File(), name, leaves);
    }
    static constexpr int PageSize = 4096;
    void RemoveCopies() const
    {
        EXPECT_TRUE(QDir(Folder() + "/ARCHIVES").removeRecursively() && QDir(Folder()).mkdir("ARCHIVES"));
    }
};

constexpr const char* ManyActs = "with recursive n(i) as (select 10 union all select i + 1 from n where i < 900) "
                                 "insert into Actes (num, Date, MM, AA, "
                                 "HH, Heure, num_patient, num_presta, montant, flag_R) select i, '2008-06-16', 6, "
                                 "2008, 0, '08:00', 1, 1, i, 2 from n";

TEST_F(PracticeRepair, MendsWhatIsCertainAfterACopyAndSaysSo)
{
    const struct {
        const char* sql;
        QStringList changes;
        const char* unawareIndex = nullptr;
    } mends[] = {
        {"update Actes set MM = 13, AA = null where num = 2",
         {"  Réparé : Actes : MM repris de Date (1 ligne, num 2 : 13)",
          "  Réparé : Actes : AA repris de Date (1 ligne, num 2 : vide)"}},
        {"update Actes set Date = '1/7/2008', MM = 'juin', AA = 2001 where num = 3",
         {"  Réparé : Actes : Date mis sous la forme aaaa-mm-jj (1 ligne, num 3 : « 1/7/2008 »)",
          "  Réparé : Actes : MM repris de Date (1 ligne, num 3 : « juin »)",
          "  Réparé : Actes : AA repris de Date (1 ligne, num 3 : 2001)"}},
        {"update Patients set Naiss = ' 31/01/1950 ' where num = 1",
         {"  Réparé : Patients : Naiss mis sous la forme aaaa-mm-jj (1 ligne, num 1 : «  31/01/1950  »)"}},
        {"update Recettes set Date = '16/06/2008', MM = 16",
         {"  Réparé : Recettes : Date mis sous la forme aaaa-mm-jj (1 ligne, num 1 : « 16/06/2008 »)",
          "  Réparé : Recettes : MM repris de Date (1 ligne, num 1 : 16)"}},
        {"update Permn set Date = '2008-06-07'",
         {"  Réparé : Permn : Date mis sous la forme jj/mm/aaaa (1 ligne, « 2008-06-07 »)"}},
        {"drop index Actes_Mois; drop index Plani_Date",
         {"  Réparé : Index Actes_Mois : créé sur Actes (AA, MM, num_presta).",
          "  Réparé : Index Plani_Date : créé sur Plani (date, Num_Presta, HH)."}},
        {"drop index Actes_Mois; create unique index Actes_Mois on Actes (num)",
         {"  Réparé : Index Actes_Mois : refait sur Actes (AA, MM, num_presta)."}},
        {AddAct, {"  Réparé : Index Actes_Mois : reconstruit."}, "Actes_Mois"},
        {"update Recettes set montant = 99",
         {"  Réparé : Index Recettes_Date : reconstruit.",
          "  À vérifier : Recettes : montant de num 1 vaut 99, et 120.5 dans l'index Recettes_Date."},
         "Recettes_Date"},
    };
    Run("update Permn set Date = '07/06/2008'");
    sound = BytesOf(File());
    const QStringList whole = Rows();
    for (const auto& [sql, changes, unawareIndex] : mends) {
        RemoveCopies();
        if (unawareIndex != nullptr)
            SpoilIndex(unawareIndex, sql);
        else
            Spoil(sql);
        // A file that was put back from the archive has no log; one that the program left has.
        Run(&sql == &mends[0].sql ? "pragma journal_mode = delete" : "pragma journal_mode = wal");
        const QStringList faults = Check();
        const QStringList rows = unawareIndex != nullptr ? Rows() : whole;
        const CommandRun run = Repair();
        EXPECT_EQ(Changes(run), changes) << sql;
        EXPECT_EQ(run.code, 0) << sql << run.output.toStdString() << run.errors.toStdString();
        EXPECT_EQ(Check(), QStringList()) << sql;
        EXPECT_EQ(Rows(), rows) << sql;
        ASSERT_EQ(Copies().size(), 1) << sql;
        EXPECT_TRUE(run.output.contains("  Copie de sécurité : " + Copies()[0] + "\n"));
        EXPECT_EQ(Findings(CommandRun({"check", Copies()[0]})), faults) << sql;
    }
}

TEST_F(PracticeRepair, LeavesWhatIsNotCertainAndListsIt)
{
    Spoil(
        "update Actes set montant = 'douze', Date = '06/17/2008' where num = 2; update Actes set MM = 1 where num = 1;"
        "update Actes set date_Presta = '29/02/2007' where num = 1");
    const CommandRun run = Repair();
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(Changes(run), QStringList("  Réparé : Actes : MM repris de Date (1 ligne, num 1 : 1)"));
    EXPECT_EQ(
        Findings(run),
        QStringList({"  ERREUR : Actes : Date n'est pas une date aaaa-mm-jj (1 ligne, num 2 : « 06/17/2008 »)",
                     "  ERREUR : Actes : date_Presta n'est pas une date aaaa-mm-jj (1 ligne, num 1 : « 29/02/2007 »)",
                     "  ERREUR : Actes : montant n'est pas un nombre (1 ligne, num 2 : « douze »)"}));
    EXPECT_TRUE(run.output.endsWith("Le cabinet n'est pas en ordre.\n"));
    EXPECT_EQ(Answer("select Date || MM || montant from Actes where num = 2"), "06/17/20086douze");
}

TEST_F(PracticeRepair, ChangesNothingWhereNothingCanBeMended)
{
    const auto unchanged = [this] {
        const QByteArray before = BytesOf(File());
        const CommandRun run = Repair();
        EXPECT_EQ(Changes(run), QStringList());
        EXPECT_EQ(BytesOf(File()), before);
        EXPECT_EQ(Copies(), QStringList());
        EXPECT_EQ(QDir(Folder()).entryList({"*.part*"}), QStringList());
        return run;
    };
    EXPECT_EQ(unchanged().code, 0);
    Spoil("update Actes set HH = 10 where num = 1");
    EXPECT_EQ(unchanged().code, 1);

    Spoil("update Recettes set MM = 1");
    sound = BytesOf(File());
    SpoilTable("Actes", false);
    const CommandRun unreadable = unchanged();
    EXPECT_EQ(unreadable.code, 1);
    for (const char* const part : {"  Rien n'a été modifié : la table Actes est illisible.",
                                   "  ERREUR : La table Actes ou un de ses index est endommagé ("})
        EXPECT_TRUE(unreadable.output.contains(part)) << unreadable.output.toStdString();
}

const QString Rebuilt = "  Réparé : Base de données : refaite avec les lignes de ses tables et de nouveaux index.";

TEST_F(PracticeRepair, MakesANewFileWhereAPageOfAnIndexIsDestroyed)
{
    Spoil(ManyActs);
    for (const char* const sql :
         {"alter table Prov add column Mt2 REAL DEFAULT 0; insert into Prov (rowid, num, Mt2) values (9, 3, 4.5)",
          "create table Divers (a, b); insert into Divers values (x'00', 'b'), (null, 1.5)",
          "insert into Recettes (num) values (8); delete from Recettes where num = 8",
          "insert into \"ZEP settlements\" (num, montant, gone) values (2, 1.5, 1)",
          "update Actes_suppr set num_presta = 77; update Permn set RIB = 'x'"})
        Run(sql);
    const QStringList whole = Rows();
    Run("update Actes set MM = 1 where num = 50; update Permn set RIB = 'y'");
    DestroyLeaves("Actes_Mois", {0});
    ChangeInLog("update Permn set RIB = 'x'");

    const CommandRun run = Repair();
    EXPECT_EQ(run.code, 0) << run.output.toStdString() << run.errors.toStdString();
    EXPECT_EQ(Changes(run), QStringList({Rebuilt, "  Réparé : Actes : MM repris de Date (1 ligne, num 50 : 1)"}));
    EXPECT_EQ(Check(),
              QStringList("  Remarque : Actes_suppr : num_presta sans ligne dans Presta (1 ligne, num 9 : 77)"));
    EXPECT_EQ(Rows(), whole);
    ASSERT_EQ(Copies().size(), 1);
    EXPECT_TRUE(BytesOf(Copies()[0]).contains(QByteArray(PageSize, '\xA5'))) << "the copy is what was there before";
    EXPECT_EQ(QDir(Folder()).entryList({"ZEP_ONE*"}), QStringList("ZEP_ONE.MDB"));
    Run("insert into Presta (denom) values ('Neuve'); insert into Recettes (montant) values (1); "
        "insert into Prov (num) values (5)");
    EXPECT_EQ(Answer("select (select max(num) from Presta) || '/' || (select max(num) from Recettes) || '/' || Mt2 "
                     "from Prov where num = 5"),
              "78/9/0.0");
}

TEST_F(PracticeRepair, TakesTheRowsOnBothSidesOfDestroyedPagesAndNamesTheOthers)
{
    for (const QList<int>& destroyed : {QList{0}, QList{2}, QList{2, 4}}) {
        SCOPED_TRACE(destroyed.last());
        Spoil(ManyActs);
        DestroyLeaves("Actes", destroyed);
        const CommandRun run = Repair();
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(Check(), QStringList());
        EXPECT_EQ(Answer("select max(num) from Actes"), "900");

        const QString gone =
            "with recursive n(i) as (select 1 union all select i + 1 from n where i < 900) select %1 from n "
            "where i not in (select num from Actes) and i not between 4 and 9";
        const QString first = destroyed[0] == 0 ? "" : " à partir de num " + Answer(qPrintable(gone.arg("min(i)")));
        EXPECT_EQ(Changes(run),
                  QStringList({Rebuilt, "  Perdu : Actes : des lignes" + first + " jusqu'à num " +
                                            Answer(qPrintable(gone.arg("max(i)"))) + " sont illisibles et manquent."}));
        const int lost = Answer(qPrintable(gone.arg("count(*)"))).toInt();
        EXPECT_TRUE(lost > 30 * destroyed.size() && lost < 130 * destroyed.size()) << lost << " of a page or two";
    }
    SpoilTable("Presta", true); // which has no index, and only a check shows it
    const CommandRun run = Repair();
    EXPECT_EQ(Changes(run), QStringList(Rebuilt));
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(Answer("select count(*) from Presta"), "2");
}

TEST_F(PracticeRepair, ReplacesNoCopy)
{
    const QDateTime moment(QDate(2026, 11, 24), QTime(18, 2, 33));
    for (const char* const month : {"1", "2", "3"}) {
        Run((std::string("update Actes set MM = ") + month).c_str());
        practice::RepairPractice(Folder(), moment);
    }
    const QString name = Folder() + "/ARCHIVES/ZEP_ONE avant réparation 2026-11-24 18-02-33";
    for (const auto& [copy, month] : {std::pair(".MDB", "1"), std::pair(" (2).MDB", "2"), std::pair(" (3).MDB", "3")})
        EXPECT_EQ(tests::OtherProgram(name + copy).Answer("select MM from Actes"), month);
}

TEST_F(PracticeRepair, RefusesAnOpenPracticeAndOneThatCannotBeCopied)
{
    NEEDS_UNIX("mode bits");
    Spoil("update Actes set MM = 1");
    {
        const practice::PracticeData open(Folder());
        const CommandRun run = Repair();
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.errors,
                  "practice : Le cabinet est ouvert dans un programme : quittez-le, puis recommencez. Rien n'a "
                  "été modifié.\n");
    }
    EXPECT_EQ(Answer("select count(*) from Actes where MM = 1"), "3");

    const std::string archives = (Folder() + "/ARCHIVES").toStdString();
    ASSERT_EQ(::chmod(archives.c_str(), 0500), 0);
    const CommandRun run = Repair();
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.errors.startsWith("practice : La copie de sécurité ne peut pas être faite dans"))
        << run.errors.toStdString();
    ASSERT_EQ(::chmod(archives.c_str(), 0700), 0);
    EXPECT_EQ(Answer("select count(*) from Actes where MM = 1"), "3");

    ASSERT_TRUE(QDir(Folder()).rmdir("ARCHIVES"));
    EXPECT_EQ(Repair().code, 0) << "the folder is made";
    EXPECT_EQ(Copies().size(), 1);
    EXPECT_EQ(CommandRun({"repair", Folder() + "/rien"}).code, 1);
}

TEST_F(PracticeRepair, KeepsWhatALogHoldsAndSetsOneOfAnotherFileAside)
{
    Spoil("pragma journal_mode = delete; update Actes set MM = 1 where num = 1");
    Write(File() + "-wal", "un autre journal");
    EXPECT_EQ(Repair().code, 0);
    EXPECT_EQ(BytesOf(File() + "-wal.set-aside"), "un autre journal");
    EXPECT_EQ(Answer("select MM from Actes where num = 1"), "6");
    RemoveCopies();

    ChangeInLog("update Actes set montant = 77, MM = 1 where num = 2");
    EXPECT_EQ(Repair().code, 0);
    EXPECT_FALSE(QFile::exists(File() + "-wal"));
    EXPECT_EQ(Answer("select montant || ' ' || MM from Actes where num = 2"), "77.0 6");
    ASSERT_EQ(Copies().size(), 1);
    EXPECT_EQ(tests::OtherProgram(Copies()[0]).Answer("select montant || ' ' || MM from Actes where num = 2"),
              "77.0 1");
}

} // namespace
