#include "tools/PracticeCommand.h"

TEST(Import, TakesEitherDelimiterAnyOrderAndEmptyAsNull)
{
    const NewPractice practice;
    const CommandRun patients = practice.Import(
        "patients", "\xEF\xBB\xBFNUM;Nom;prenom;naiss;sexe;tel;ville\r\n"
                    "1;O'Brien;Élodie;05/03/1974;1;;M'Sila\r\n"
                    "\r\n"
                    "2;\"Haddad; dit \"\"Le Grand\"\"\";Théo;1980-12-31;0;0661 00;\"deux\nlignes\"\r\n");
    EXPECT_EQ(patients.code, 0) << patients.errors.toStdString();
    EXPECT_TRUE(patients.output.startsWith("2 ligne(s)")) << patients.output.toStdString();
    const CommandRun acts = practice.Import("Actes", "Date,num,HH,montant,flag_R,type,num_patient\n"
                                                     "17/06/2008,10,3,\"1250,50\",1,k12,1\n"
                                                     "2008-06-18,11,9,100.25,0,,2");
    EXPECT_EQ(acts.code, 0) << acts.errors.toStdString();

    const practice::PracticeData data(practice.Folder());
    dao::Recordset rows = data.Database().OpenRecordset("Patients");
    EXPECT_EQ(rows["Naiss"].Text(), "05/03/1974");
    EXPECT_TRUE(rows["tel"].IsNull());
    EXPECT_EQ(rows["Flag_H"].Integer(), 0);
    rows.MoveNext();
    EXPECT_EQ(rows["nom"].Text(), "Haddad; dit \"Le Grand\"");
    EXPECT_EQ(rows["ville"].Text(), "deux\nlignes");
    rows = data.Database().OpenRecordset("select * from Actes where date = #06/17/2008#");
    EXPECT_EQ(rows["montant"].Double(), 1250.5);
    EXPECT_EQ(rows["Type"].Text(), "K12");
    EXPECT_EQ(rows["MM"].Integer(), 6);
    EXPECT_EQ(rows["AA"].Integer(), 2008);
    EXPECT_EQ(data.Database().OpenRecordset("select * from Actes where num = 11")["HH"].Integer(), 9)
        << "the last slot";
}

TEST(Import, NamesEveryBadLineAndAddsNothing)
{
    const NewPractice practice;
    ASSERT_EQ(practice.Import("Actes", "num,Date,HH,montant,flag_R\n5,01/01/2020,0,0,0\n").code, 0);
    const CommandRun run = practice.Import("Actes", "num,Date,HH,montant,flag_R,Type,MM,Heure\n"
                                                    "1,17/06/2008,0,0,0,C,6,08:05\n"
                                                    "1,17/06/2008,0,0,0,C,,\n"
                                                    "5,17/06/2008,0,0,0,C,,\n"
                                                    ",17/06/2008,0,0,0,C,,\n"
                                                    "6,31/06/2008,10,abc,6,K31,13,25:00\n"
                                                    "7,17/06/2008,0,0,0,C,7,\n"
                                                    "8,17/06/2008\n"
                                                    "9,17/06/2008,0,,0,\"deux\nlignes\",,\n"
                                                    "2147483648,17/06/2008,0,0,0,,,\n");
    EXPECT_EQ(run.code, 1);
    for (const char* part :
         {"Ligne 3 : num : la clé 1 est déjà celle de la ligne 2", "Ligne 4 : num : la clé 5 existe déjà dans Actes",
          "Ligne 5 : num : une valeur est obligatoire", "Ligne 6 : Date : « 31/06/2008 »",
          "HH : 10 est hors de l'intervalle 0 à 9", "flag_R : 6", "« K31 »", "MM : 13", "« 25:00 »",
          "Ligne 7 : MM : 7 ne correspond pas à la date", "Ligne 8 : 2 valeurs au lieu de 8", "Ligne 9 : montant",
          "Ligne 11 : num", "8 problème(s)"})
        EXPECT_TRUE(run.errors.contains(part)) << part << "\n" << run.errors.toStdString();
    EXPECT_FALSE(run.errors.contains("Ligne 2 "));
    EXPECT_EQ(practice.Count("Actes"), 1);
}

TEST(Import, RefusesWhatItCannotRead)
{
    const NewPractice practice;
    const struct {
        const char* table;
        QByteArray text;
        const char* reason;
    } rows[] = {
        {"Presta", "num\n1\n", "n'est pas une table à importer"},
        {"Patients", "", "Le fichier est vide"},
        {"Patients", "num,age\n1,5\n", "Ligne 1 : le champ « age » n'existe pas dans Patients"},
        {"Patients", "num,nom,NUM\n1,a,1\n", "le champ num est nommé deux fois"},
        {"Patients", "nom\na\n", "Ligne 1 : le champ num manque"},
        {"Patients", "num,nom\n1,a\n2,\"b\n", "Ligne 3 : guillemets jamais refermés"},
        {"Patients", "num,nom\n1,a\n2,b\"c\n", "Ligne 3 : guillemets mal placés"},
        {"Patients", "num,nom\n1,\xE9lodie\n", "Ligne 2 : le texte n'est pas en UTF-8"},
        {"Plani", "num,date,HH\n1,17/06/2008,3\n", "le champ Num_Presta manque"},
    };
    for (const auto& row : rows) {
        const CommandRun run = practice.Import(row.table, row.text);
        EXPECT_EQ(run.code, 1) << row.reason;
        EXPECT_TRUE(run.errors.contains(row.reason)) << row.reason << "\n" << run.errors.toStdString();
    }
    EXPECT_EQ(practice.Count("Patients"), 0);
    EXPECT_EQ(CommandRun({"import", practice.Folder(), "Patients", "absent.csv"}).code, 1);
}
