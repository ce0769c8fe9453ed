#include "data/ConfigurationFile.h"
#include "tools/SmallOffice.h"

namespace {

class PracticeCheck : public SmallOffice {};

/// A value put into row 2 of a table, or its only one, and what `check` says of it.
struct SpoiltValue {
    const char* table;
    const char* value;
    const char* finding;
    const char* kind = "ERREUR";
};

constexpr const char* Remark = "Remarque";

constexpr SpoiltValue Values[] = {
    {"Actes", "montant = 9e999", "montant infini ou démesuré (1 ligne, num 2 : infini)"},
    {"Actes", "date_Presta = '2007-02-29'",
     "date_Presta n'est pas une date aaaa-mm-jj (1 ligne, num 2 : « 2007-02-29 »)"},
    {"Actes", "date_Presta = '2008-06-17 00:00'",
     "date_Presta n'est pas une date aaaa-mm-jj (1 ligne, num 2 : « 2008-06-17 00:00 »)"},
    {"Actes", "AA = 8", "AA différent de l'année de Date (1 ligne, num 2 : 8)"},
    {"Actes", "HH = 1.5", "HH n'est pas un nombre entier (1 ligne, num 2 : 1.5)"},
    {"Actes", "HH = null", "HH sans valeur (1 ligne, num 2)"},
    {"Actes", "flag_R = null", "flag_R sans valeur (1 ligne, num 2)"},
    {"Actes", "Flag_H = 32768", "Flag_H hors de l'intervalle -32768 à 32767 (1 ligne, num 2 : 32768)"},
    {"Actes", "Type = 'K31'", "Type inconnu (1 ligne, num 2 : « K31 »)"},
    {"Actes", "Heure = x'00'", "Heure n'est pas un texte (1 ligne, num 2 : données binaires)"},
    {"Actes", "Heure = '24:00'", "Heure n'est pas une heure HH:MM (1 ligne, num 2 : « 24:00 »)"},
    {"Actes", "Heure = '08:30' || char(0)",
     "Heure n'est pas de l'UTF-8 ou contient un caractère nul (1 ligne, num 2 : « 08:30· »)"},
    {"Actes_suppr", "H_Suppr = '9h'", "H_Suppr n'est pas une heure HH:MM (1 ligne, num 9 : « 9h »)"},
    {"Patients", "nom = cast(x'4ce9' as text)",
     "nom n'est pas de l'UTF-8 ou contient un caractère nul (1 ligne, num 2 : « L\uFFFD »)"},
    {"textes", "ch4 = 'x' || char(0)", "ch4 n'est pas de l'UTF-8 ou contient un caractère nul (1 ligne, « x· »)"},
    {"Actes", "num_patient = null", "num_patient sans valeur (1 ligne, num 2)", Remark},
    {"Actes", "num_presta = null", "num_presta sans valeur (1 ligne, num 2)", Remark},
    {"Actes", "num_patient = 3", "num_patient sans ligne dans Patients (1 ligne, num 2 : 3)", Remark},
    {"Actes", "num_presta = 3", "num_presta sans ligne dans Presta (1 ligne, num 2 : 3)", Remark},
    {"Recettes", "num = 3e9",
     "num hors de l'intervalle -2147483648 à 2147483647 (1 ligne, num 3000000000 : 3000000000)"},
    {"Plani", "HH = 10", "HH hors de l'intervalle 0 à 9 (1 ligne, num 1 : 10)"},
    {"Plani", "HH = null", "HH sans valeur (1 ligne, num 1)"},
    {"Plani", "Num_Presta = null", "Num_Presta sans valeur (1 ligne, num 1)"},
    {"Plani", "date = '0008-06-18'", "date n'est pas une date aaaa-mm-jj (1 ligne, num 1 : « 0008-06-18 »)"},
    {"Actes_suppr", "flag_R = 6", "flag_R hors de l'intervalle 0 à 5 (1 ligne, num 9 : 6)"},
    {"Recettes", "montant = null", "montant sans valeur (1 ligne, num 1)"},
    {"Recettes", "Date = null", "Date sans valeur (1 ligne, num 1)"},
    {"Recettes", "MM = 5.5", "MM différent du mois de Date (1 ligne, num 1 : 5.5)"},
    {"Recettes", "objet = null", "objet sans valeur (1 ligne, num 1)", Remark},
    {"Presta", "denom = ' '", "denom sans valeur (1 ligne, num 2 : «   »)", Remark},
    {"Presta", "Ordre = null", "Ordre sans valeur (1 ligne, num 2)", Remark},
    {"Presta", "prix = null", "prix sans valeur (1 ligne, num 2)", Remark},
    {"Permn", "Charge9 = 'cent'", "Charge9 n'est pas un nombre (1 ligne, « cent »)"},
    {"Permn", "Date = '2008-06-17'", "Date n'est pas une date jj/mm/aaaa (1 ligne, « 2008-06-17 »)"},
    {"Permn", "Date = '29/02/2007'", "Date n'est pas une date jj/mm/aaaa (1 ligne, « 29/02/2007 »)"},
    {"Tarif", "K1 = 40000", "K1 hors de l'intervalle -32768 à 32767 (1 ligne, 40000)"},
};

/// What is done to the tables, and what `check` says of it.
struct SpoiltTable {
    const char* sql;
    const char* finding;
    const char* kind = "ERREUR";
};

constexpr SpoiltTable Tables[] = {
    {"delete from textes", "textes : aucune ligne au lieu d'une."},
    {"delete from Tarif", "Tarif : aucune ligne, l'écran des tarifs la fera.", Remark},
    {"insert into Tarif default values", "Tarif : 2 lignes au lieu d'une."},
    {"alter table Tarif drop column K30", "Tarif : 31 champs au lieu de 32."},
    {"drop table RCP2", "La table RCP2 est absente."},
    {"alter table Patients drop column diagno", "Patients : le champ diagno est absent."},
    {"alter table RCP2 drop column C7; alter table RCP2 add column C7 TEXT",
     "RCP2 : le champ C7 est du type « TEXT » au lieu de REAL."},
    {"drop table Plani; create table Plani (num INTEGER, date DATE, Num_Presta INTEGER, HH SMALLINT, "
     "num_patient INTEGER); create index Plani_Date on Plani (date, Num_Presta, HH)",
     "Plani : le champ num n'est pas la clé."},
    {"alter table Permn drop column Registre; alter table Permn add column Registre TEXT",
     "Permn : les premiers champs ne sont pas Registre, Id_Fiscale, Article, Telephone, Fax, Compte, Agence, RIB."},
    {"alter table Prov add column Mt3 REAL", "Prov : le champ Mt2 est absent."},
    {"drop index Actes_Mois", "L'index Actes_Mois est absent."},
    {"drop index Plani_Date; create unique index Plani_Date on Plani (date, HH desc, Num_Presta collate nocase) where "
     "HH > 0",
     "L'index Plani_Date porte sur Plani (date, HH desc, Num_Presta nocase), sans doublons, sous condition au lieu de "
     "Plani (date, Num_Presta, HH)."},
    {"update Presta set denom = ' ecg' where num = 1",
     "Presta : denom en double (2 lignes, num 1 : «  ecg », 2 : « ECG »)", Remark},
    {"update Presta set Ordre = 1", "Presta : Ordre en double (2 lignes, num 1 : 1, 2 : 1)", Remark},
    {"create index A_moi on Actes (Heure desc)", "L'index A_moi sur Actes (Heure desc) n'est pas du programme.",
     Remark},
    {"create trigger cadeau after update on Actes begin select 1; end",
     "Le déclencheur cadeau de la table Actes n'est pas du programme, qui n'ouvre pas la base."},
    {"create view vue as select 1", "La vue vue n'est pas du programme, qui n'ouvre pas la base."},
};

/// What is unusual and stops no screen.
constexpr auto Legal = R"(
    update Actes set Heure = '';
    update Actes set Flag_H = 7, Type = null, Heure = ' 8:30 ' where num = 1;
    update Patients set nom = 'Saïdi ' || char(128169) where num = 1;
    update Actes set montant = -5.25, Flag_H = null, date_Presta = null where num = 2;
    update Actes set num = -4 where num = 3;
    update Patients set Sexe = null, Naiss = null, Flag_H = -1;
    update Permn set Date = '', nbre = 99, RC = null, Charge1 = null;
    update Tarif set C = null, K0 = -5;
    update Presta set prix = 0, Ordre = -num;
    update Recettes set montant = -3;
    alter table Prov add column Mt2 REAL DEFAULT 0;
    create table Divers (a);
    insert into Prov (num, Mt) values ('x', 'y'))";

TEST_F(PracticeCheck, FindsEachFaultByTableKeyAndField)
{
    const auto expectFinding = [&](const QString& sql, const char* kind, const QString& finding) {
        Spoil(sql.toUtf8().constData());
        const CommandRun run({"check", Folder()});
        EXPECT_EQ(Findings(run), QStringList("  " + QString(kind) + " : " + finding)) << sql.toStdString();
        EXPECT_EQ(run.code, kind == Remark ? 0 : 1) << sql.toStdString();
        EXPECT_EQ(run.output.contains("Le cabinet est en ordre."), kind == Remark) << sql.toStdString();
    };
    Spoil(Legal);
    const QString good = CommandRun({"check", Folder()}).output;
    EXPECT_TRUE(good.contains("En-tête : Dr D'Angelo / Médecine générale / Alger\n")) << good.toStdString();
    EXPECT_TRUE(good.endsWith("\nLe cabinet est en ordre.\n"));
    EXPECT_EQ(Check(), QStringList());
    for (const auto& [table, value, finding, kind] : Values)
        expectFinding(QString("update %1 set %2 where rowid = 2 or (select count(*) from %1) = 1").arg(table, value),
                      kind, QString(table) + " : " + finding);
    for (const auto& [sql, finding, kind] : Tables)
        expectFinding(sql, kind, finding);
}

TEST_F(PracticeCheck, ReportsEveryFaultInOneRunWithCountsAndAFewExamples)
{
    Run("update Actes set HH = 10, montant = 'x'; delete from textes; drop index Actes_Mois;"
        "with recursive n(i) as (select 10 union all select i + 1 from n where i < 17) "
        "insert into Actes (num, HH, Date, MM, AA, num_patient, num_presta, montant, flag_R) "
        "select i, 0, '2008-06-16', 6, 2008, 1, 1, null, 0 from n;"
        "update Actes set montant = 0 where num = 10");
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
    sound = BytesOf(File());
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
    const QByteArray configuration = BytesOf(folder.filePath("ZEP_CFIG.CFG"));
    const qsizetype access =
        (data::ConfigHeaderRecord - 1) * data::ConfigRecordBytes + 2 * (data::ConfigAccessWord - 1);
    Write(folder.filePath("ZEP_CFIG.CFG"), QByteArray(configuration).replace(access, 2, "\xFF\x3F"));
    EXPECT_EQ(Check(), QStringList());
    Write(folder.filePath("ZEP_CFIG.CFG"), QByteArray(configuration).replace(access, 2, QByteArray("\x00\x40", 2)));
    EXPECT_EQ(Check(), QStringList("  ERREUR : ZEP_CFIG.CFG : la valeur d'accès 16384 ne donne aucun code d'accès."));
    Write(folder.filePath("ZEP_CFIG.CFG"), QByteArray(configuration).replace(access, 2, "\xFF\xBF"));
    EXPECT_EQ(Check(), QStringList("  ERREUR : ZEP_CFIG.CFG : la valeur d'accès -16385 ne donne aucun code d'accès."));

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

    ChangeInLog("update Actes set HH = 10 where num = 2");
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
