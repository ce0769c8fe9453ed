#include "tools/SmallOffice.h"

namespace {

class PracticeCheck : public SmallOffice {};

/// What is done to a sound practice, and the one line that `check` says of it.
struct Spoilt {
    const char* sql;
    const char* line;
};

constexpr Spoilt Values[] = {
    {"update Actes set montant = 'douze' where num = 2",
     "  ERREUR : Actes : montant n'est pas un nombre (1 ligne, num 2 : « douze »)"},
    {"update Actes set montant = 9e999 where num = 2",
     "  ERREUR : Actes : montant infini ou démesuré (1 ligne, num 2 : infini)"},
    {"update Actes set montant = null where num = 2", "  ERREUR : Actes : montant sans valeur (1 ligne, num 2)"},
    {"update Actes set Date = '17/06/2008' where num = 2",
     "  ERREUR : Actes : Date n'est pas une date aaaa-mm-jj (1 ligne, num 2 : « 17/06/2008 »)"},
    {"update Actes set Date = null where num = 2", "  ERREUR : Actes : Date sans valeur (1 ligne, num 2)"},
    {"update Actes set date_Presta = '2008-02-30' where num = 2",
     "  ERREUR : Actes : date_Presta n'est pas une date aaaa-mm-jj (1 ligne, num 2 : « 2008-02-30 »)"},
    {"update Actes set date_Presta = '2008-06-17 00:00' where num = 2",
     "  ERREUR : Actes : date_Presta n'est pas une date aaaa-mm-jj (1 ligne, num 2 : « 2008-06-17 00:00 »)"},
    {"update Actes set MM = 7 where num = 2", "  ERREUR : Actes : MM différent du mois de Date (1 ligne, num 2 : 7)"},
    {"update Actes set AA = 8 where num = 2",
     "  ERREUR : Actes : AA différent de l'année de Date (1 ligne, num 2 : 8)"},
    {"update Actes set HH = 10 where num = 2",
     "  ERREUR : Actes : HH hors de l'intervalle 0 à 9 (1 ligne, num 2 : 10)"},
    {"update Actes set HH = 1.5 where num = 2",
     "  ERREUR : Actes : HH n'est pas un nombre entier (1 ligne, num 2 : 1.5)"},
    {"update Actes set HH = null where num = 2", "  ERREUR : Actes : HH sans valeur (1 ligne, num 2)"},
    {"update Actes set flag_R = 6 where num = 2",
     "  ERREUR : Actes : flag_R hors de l'intervalle 0 à 5 (1 ligne, num 2 : 6)"},
    {"update Actes set flag_R = null where num = 2", "  ERREUR : Actes : flag_R sans valeur (1 ligne, num 2)"},
    {"update Actes set Flag_H = 32768 where num = 2",
     "  ERREUR : Actes : Flag_H hors de l'intervalle -32768 à 32767 (1 ligne, num 2 : 32768)"},
    {"update Actes set Type = 'K31' where num = 2", "  ERREUR : Actes : Type inconnu (1 ligne, num 2 : « K31 »)"},
    {"update Actes set Heure = x'00' where num = 2",
     "  ERREUR : Actes : Heure n'est pas un texte (1 ligne, num 2 : données binaires)"},
    {"update Actes set Heure = 'vers 8 h' where num = 2",
     "  ERREUR : Actes : Heure n'est pas une heure HH:MM (1 ligne, num 2 : « vers 8 h »)"},
    {"update Actes set Heure = '24:00' where num = 2",
     "  ERREUR : Actes : Heure n'est pas une heure HH:MM (1 ligne, num 2 : « 24:00 »)"},
    {"update Actes set Heure = '08:30' || char(0) where num = 2",
     "  ERREUR : Actes : Heure n'est pas de l'UTF-8 ou contient un caractère nul (1 ligne, num 2 : « 08:30· »)"},
    {"update Actes_suppr set H_Suppr = '9h'",
     "  ERREUR : Actes_suppr : H_Suppr n'est pas une heure HH:MM (1 ligne, num 9 : « 9h »)"},
    {"update Patients set nom = cast(x'4ce9' as text) where num = 2",
     "  ERREUR : Patients : nom n'est pas de l'UTF-8 ou contient un caractère nul (1 ligne, num 2 : « L\uFFFD »)"},
    {"update textes set ch4 = 'x' || char(0)",
     "  ERREUR : textes : ch4 n'est pas de l'UTF-8 ou contient un caractère nul (1 ligne, « x· »)"},
    {"update Actes set num_patient = null where num = 2",
     "  Remarque : Actes : num_patient sans valeur (1 ligne, num 2)"},
    {"update Actes set num_presta = null where num = 2",
     "  Remarque : Actes : num_presta sans valeur (1 ligne, num 2)"},
    {"update Actes set num_patient = 3 where num = 2",
     "  Remarque : Actes : num_patient sans ligne dans Patients (1 ligne, num 2 : 3)"},
    {"update Actes set num_presta = 3 where num = 2",
     "  Remarque : Actes : num_presta sans ligne dans Presta (1 ligne, num 2 : 3)"},
    {"update Patients set num = 3000000000 where num = 2; update Actes set num_patient = 1",
     "  ERREUR : Patients : num hors de l'intervalle -2147483648 à 2147483647 (1 ligne, num 3000000000 : 3000000000)"},
    {"update Plani set HH = null", "  ERREUR : Plani : HH sans valeur (1 ligne, num 1)"},
    {"update Plani set Num_Presta = null", "  ERREUR : Plani : Num_Presta sans valeur (1 ligne, num 1)"},
    {"update Plani set date = '0008-06-18'",
     "  ERREUR : Plani : date n'est pas une date aaaa-mm-jj (1 ligne, num 1 : « 0008-06-18 »)"},
    {"update Actes_suppr set flag_R = 6",
     "  ERREUR : Actes_suppr : flag_R hors de l'intervalle 0 à 5 (1 ligne, num 9 : 6)"},
    {"update Recettes set montant = null", "  ERREUR : Recettes : montant sans valeur (1 ligne, num 1)"},
    {"update Recettes set Date = null", "  ERREUR : Recettes : Date sans valeur (1 ligne, num 1)"},
    {"update Recettes set MM = 5.5", "  ERREUR : Recettes : MM différent du mois de Date (1 ligne, num 1 : 5.5)"},
    {"update Recettes set objet = null", "  Remarque : Recettes : objet sans valeur (1 ligne, num 1)"},
    {"update Presta set denom = ' ' where num = 2", "  Remarque : Presta : denom sans valeur (1 ligne, num 2 : «   »)"},
    {"update Presta set Ordre = null where num = 2", "  Remarque : Presta : Ordre sans valeur (1 ligne, num 2)"},
    {"update Presta set denom = ' ecg' where num = 1",
     "  Remarque : Presta : denom en double (2 lignes, num 1 : «  ecg », 2 : « ECG »)"},
    {"update Presta set Ordre = 1", "  Remarque : Presta : Ordre en double (2 lignes, num 1 : 1, 2 : 1)"},
    {"update Presta set prix = null where num = 2", "  Remarque : Presta : prix sans valeur (1 ligne, num 2)"},
    {"update Permn set Charge9 = 'cent'", "  ERREUR : Permn : Charge9 n'est pas un nombre (1 ligne, « cent »)"},
    {"update Permn set Date = '2008-06-17'",
     "  ERREUR : Permn : Date n'est pas une date jj/mm/aaaa (1 ligne, « 2008-06-17 »)"},
    {"update Permn set Date = '31/02/2008'",
     "  ERREUR : Permn : Date n'est pas une date jj/mm/aaaa (1 ligne, « 31/02/2008 »)"},
    {"update Tarif set K1 = 40000", "  ERREUR : Tarif : K1 hors de l'intervalle -32768 à 32767 (1 ligne, 40000)"},
};

constexpr Spoilt Tables[] = {
    {"delete from textes", "  ERREUR : textes : aucune ligne au lieu d'une."},
    {"delete from Tarif", "  Remarque : Tarif : aucune ligne, l'écran des tarifs la fera."},
    {"insert into Tarif default values", "  ERREUR : Tarif : 2 lignes au lieu d'une."},
    {"alter table Tarif drop column K30", "  ERREUR : Tarif : 31 champs au lieu de 32."},
    {"drop table RCP2", "  ERREUR : La table RCP2 est absente."},
    {"alter table Patients drop column diagno", "  ERREUR : Patients : le champ diagno est absent."},
    {"drop table RCP2; create table RCP2 (denom TEXT, C1 TEXT, C2 real, C3 REAL, C4 REAL, C5 REAL, C6 REAL, C7 REAL)",
     "  ERREUR : RCP2 : le champ C1 est du type « TEXT » au lieu de REAL."},
    {"create table copie (num INTEGER, date DATE, Num_Presta INTEGER, HH SMALLINT, num_patient INTEGER);"
     "drop table Plani; alter table copie rename to Plani; create index Plani_Date on Plani (date, Num_Presta, HH)",
     "  ERREUR : Plani : le champ num n'est pas la clé."},
    {"alter table Permn add column Autre TEXT; update Permn set Autre = Registre; alter table Permn drop column "
     "Registre; alter table Permn add column Registre TEXT",
     "  ERREUR : Permn : les premiers champs ne sont pas Registre, Id_Fiscale, Article, Telephone, Fax, Compte, "
     "Agence, RIB."},
    {"alter table Prov add column Mt3 REAL", "  ERREUR : Prov : le champ Mt2 est absent."},
    {"drop index Actes_Mois", "  ERREUR : L'index Actes_Mois est absent."},
    {"drop index Actes_Mois; create index Actes_Mois on Actes (AA, MM desc, num_presta collate nocase)",
     "  ERREUR : L'index Actes_Mois porte sur Actes (AA, MM desc, num_presta nocase) au lieu de Actes (AA, MM, "
     "num_presta)."},
    {"drop index Plani_Date; create unique index Plani_Date on Plani (date, Num_Presta, HH)",
     "  ERREUR : L'index Plani_Date porte sur Plani (date, Num_Presta, HH), sans doublons au lieu de Plani (date, "
     "Num_Presta, HH)."},
    {"drop index Plani_Date; create index Plani_Date on Plani (date, Num_Presta, HH) where HH > 0",
     "  ERREUR : L'index Plani_Date porte sur Plani (date, Num_Presta, HH), sous condition au lieu de Plani (date, "
     "Num_Presta, HH)."},
    {"create index A_moi on Actes (Heure desc)",
     "  Remarque : L'index A_moi sur Actes (Heure desc) n'est pas du programme."},
    {"create trigger cadeau after update on Actes begin select 1; end",
     "  ERREUR : Le déclencheur cadeau de la table Actes n'est pas du programme, qui n'ouvre pas la base."},
    {"create view vue as select 1", "  ERREUR : La vue vue n'est pas du programme, qui n'ouvre pas la base."},
};

/// What is unusual and stops no screen.
constexpr const char* Legal[] = {
    "update Actes set Flag_H = 7, Type = null, Heure = ' 8:30 ' where num = 1",
    "update Actes set Heure = '23:59:59' where num = 1",
    "update Actes set Heure = ''",
    "update Patients set nom = 'Saïdi ' || char(128169)",
    "update Actes set montant = -5.25, Flag_H = null, date_Presta = null",
    "update Actes set num = -4 where num = 3",
    "update Patients set Sexe = null, Naiss = null, Flag_H = -1",
    "update Permn set Date = '', nbre = 99, RC = null, Charge1 = null",
    "update Tarif set C = null, K0 = -5",
    "update Presta set prix = 0, Ordre = -num",
    "update Recettes set montant = -3",
    "alter table Prov add column Mt2 REAL DEFAULT 0",
    "create table Divers (a)",
    "insert into Prov (num, Mt) values ('x', 'y')",
};

TEST_F(PracticeCheck, FindsEachFaultOfAValueByTableKeyAndField)
{
    EXPECT_EQ(CommandRun({"check", Folder()}).output.section('\n', -2), "Le cabinet est en ordre.\n");
    for (const auto& [sql, line] : Values) {
        Spoil(sql);
        const CommandRun run({"check", Folder()});
        EXPECT_EQ(Findings(run), QStringList(line)) << sql;
        EXPECT_EQ(run.code, QString(line).contains("ERREUR") ? 1 : 0) << sql;
    }
}

TEST_F(PracticeCheck, FindsEachFaultOfATableOrIndexByItsName)
{
    for (const auto& [sql, line] : Tables) {
        Spoil(sql);
        const CommandRun run({"check", Folder()});
        EXPECT_EQ(Findings(run), QStringList(line)) << sql;
        const bool isSound = !QString(line).contains("ERREUR");
        EXPECT_EQ(run.code, isSound ? 0 : 1) << sql;
        EXPECT_EQ(run.output.contains("Le cabinet est en ordre."), isSound) << sql;
    }
}

TEST_F(PracticeCheck, TakesForGoodWhatNoScreenStopsOn)
{
    for (const char* const sql : Legal) {
        Spoil(sql);
        EXPECT_EQ(Check(), QStringList()) << sql;
    }
}

TEST_F(PracticeCheck, ReportsEveryFaultInOneRunWithCountsAndAFewExamples)
{
    QStringList lines;
    for (const char* const sql :
         {"update Actes set HH = 10; update Actes set montant = 'x'; delete from textes; drop index Actes_Mois",
          "with recursive n(i) as (select 10 union all select i + 1 from n where i < 17) "
          "insert into Actes (num, HH, Date, MM, AA, num_patient, num_presta, montant, flag_R) "
          "select i, 0, '2008-06-16', 6, 2008, 1, 1, null, 0 from n",
          "update Actes set montant = 0 where num = 10"})
        Run(sql);
    EXPECT_EQ(
        Check(),
        QStringList({"  ERREUR : L'index Actes_Mois est absent.",
                     "  ERREUR : Actes : HH hors de l'intervalle 0 à 9 (3 lignes, num 1 : 10, 2 : 10, 3 : 10)",
                     "  ERREUR : Actes : montant n'est pas un nombre (3 lignes, num 1 : « x », 2 : « x », 3 : « x »)",
                     "  ERREUR : Actes : montant sans valeur (7 lignes, num 11, 12, 13, 14, 15, ...)",
                     "  ERREUR : textes : aucune ligne au lieu d'une."}));
}

TEST_F(PracticeCheck, NamesADamagedIndexAndADamagedTable)
{
    SpoilIndex("Actes_Mois", AddAct);
    EXPECT_EQ(Check(),
              QStringList("  ERREUR : L'index Actes_Mois ne correspond plus à sa table : « practice repair » le "
                          "reconstruit."));
    SpoilIndex("Recettes_Date", "update Recettes set montant = 99");
    EXPECT_EQ(Check(),
              QStringList({"  ERREUR : L'index Recettes_Date ne correspond plus à sa table : « practice repair » le "
                           "reconstruit.",
                           "  ERREUR : Recettes : montant de num 1 vaut 99, et 120.5 dans l'index Recettes_Date."}));
    sound = Bytes(File());
    for (const bool isReadable : {false, true}) {
        SpoilTable("Recettes", isReadable);
        Run("update Presta set Ordre = 1.5 where num = 2");
        const QStringList found = Check();
        EXPECT_TRUE(found.first().startsWith("  ERREUR : La table Recettes ou un de ses index est endommagé ("));
        EXPECT_TRUE(found.contains("  ERREUR : Presta : Ordre n'est pas un nombre entier (1 ligne, num 2 : 1.5)"));
        EXPECT_EQ(found.filter("practice repair"), QStringList()) << "which can't mend a table";
    }
}

TEST_F(PracticeCheck, NamesMissingAndDamagedFiles)
{
    const QDir folder(Folder());
    ASSERT_TRUE(QFile::rename(folder.filePath("ARCHIVES"), folder.filePath("AUTRES")));
    EXPECT_EQ(CommandRun({"check", Folder()}).code, 0);
    EXPECT_EQ(Check(),
              QStringList("  Remarque : Le dossier ARCHIVES est absent : la copie de fin de travail échouera."));
    ASSERT_TRUE(QFile::rename(folder.filePath("AUTRES"), folder.filePath("ARCHIVES")));

    const QByteArray configuration = Bytes(folder.filePath("ZEP_CFIG.CFG"));
    constexpr int accessWord = 3 * 84 + 22;
    Write(folder.filePath("ZEP_CFIG.CFG"), QByteArray(configuration).replace(accessWord, 2, "\x00\x40", 2));
    EXPECT_EQ(Check(), QStringList("  ERREUR : ZEP_CFIG.CFG : la valeur d'accès 16384 ne donne aucun code d'accès."));
    constexpr int letterhead = 36 * 84;
    Write(folder.filePath("ZEP_CFIG.CFG"), QByteArray(configuration).replace(letterhead, 2, "\xF0\xFF", 2));
    EXPECT_TRUE(Check().value(0).startsWith("  ERREUR : ZEP_CFIG.CFG : lecture impossible (erreur 5,"));
    ASSERT_TRUE(QFile::resize(folder.filePath("ZEP_CFIG.CFG"), 1000));
    ASSERT_TRUE(QFile::remove(folder.filePath("ZEP_R1.RPT")));
    Write(folder.filePath("system.mdw"), "autre chose");
    Write(File(), QByteArray(8192, 'x'));
    const QStringList found = Check();
    ASSERT_EQ(found.size(), 4);
    EXPECT_EQ(found[0], "  ERREUR : ZEP_CFIG.CFG est trop court : 1000 octets au lieu de 4368.");
    EXPECT_TRUE(found[1].startsWith("  ERREUR : system.mdw : lecture impossible (erreur 302"))
        << found[1].toStdString();
    EXPECT_EQ(found[2], "  ERREUR : Le modèle d'état ZEP_R1.RPT est absent.");
    EXPECT_TRUE(found[3].startsWith("  ERREUR : ZEP_ONE.MDB : lecture impossible (erreur 3343"))
        << found[3].toStdString();

    for (const char* const name : {"system.mdw", "ZEP_ONE.MDB"})
        ASSERT_TRUE(QFile::remove(folder.filePath(name)));
    EXPECT_TRUE(Check().contains("  ERREUR : Le fichier system.mdw est absent."));
    EXPECT_TRUE(Check().contains("  ERREUR : Le fichier ZEP_ONE.MDB est absent."));
    EXPECT_EQ(CommandRun({"check", folder.filePath("nulle part")}).code, 1);
}

TEST_F(PracticeCheck, ChangesNoByteAndMakesNoFile)
{
    const auto before = Content();
    EXPECT_EQ(CommandRun({"check", Folder()}).code, 0);
    EXPECT_TRUE(Content() == before) << "sound";

    QByteArray file;
    QByteArray log;
    {
        tests::OtherProgram other(File());
        ASSERT_EQ(other.Run("pragma journal_mode = wal; update Actes set HH = 10 where num = 2"), SQLITE_OK);
        file = Bytes(File());
        log = Bytes(File() + "-wal");
    }
    Write(File(), file);
    Write(File() + "-wal", log);
    const auto withLog = Content();
    EXPECT_EQ(Check(), QStringList("  ERREUR : Actes : HH hors de l'intervalle 0 à 9 (1 ligne, num 2 : 10)"))
        << "which is in the log alone";
    EXPECT_TRUE(Content() == withLog) << "with a log that was left behind";
}

TEST_F(PracticeCheck, TakesACopyByItsFile)
{
    const QString copy = Folder() + "/ARCHIVES/ZEP_ONE 2026-11-23.MDB";
    Write(copy, sound);
    const auto before = Content();
    const CommandRun good({"check", copy});
    EXPECT_EQ(good.code, 0);
    EXPECT_TRUE(good.output.endsWith("La base de données est en ordre.\n")) << good.output.toStdString();
    EXPECT_EQ(Findings(good), QStringList()) << "files beside it don't count";
    EXPECT_TRUE(Content() == before);

    Spoil("update Actes set montant = null where num = 1");
    EXPECT_TRUE(QFile::remove(copy) && QFile::rename(File(), copy));
    const CommandRun bad({"check", copy});
    EXPECT_EQ(bad.code, 1);
    EXPECT_EQ(Findings(bad), QStringList("  ERREUR : Actes : montant sans valeur (1 ligne, num 1)"));
    EXPECT_TRUE(bad.output.endsWith("La base de données n'est pas en ordre.\n"));
}

} // namespace
