#include "tools/PracticeCommand.h"

#include "data/Practice.h"

#include <QDir>

TEST(PracticeCommand, ShowsItsUsageForInvalidArguments)
{
    const QStringList nonsense[] = {
        {},
        {"vendre"},
        {"new"},
        {"new", "x"},
        {"new", "x", "--code", "douze", "--letterhead", "a"},
        {"new", "x", "--code", "12", "--letterhead", "a", "--language", "en"},
        {"demo", "x", "--acts", "-5"},
        {"demo", "x", "--until", "hier"},
        {"demo", "x", "--until", "31/02/2024"},
        {"demo", "x", "--acts"},
        {"demo", "x", "--actes", "5"},
        {"demo", ""},
        {"new", "x", "--code", "", "--letterhead", "a"},
        {"new", "x", "--code", "12"},
        {"demo", "x", "y"},
        {"import", "x", "Patients"},
        {"check"},
    };
    for (const QStringList& arguments : nonsense) {
        const CommandRun run(arguments);
        EXPECT_EQ(run.code, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(run.errors.contains("Utilisation :")) << arguments.join(' ').toStdString();
        EXPECT_EQ(run.output, "");
    }
    EXPECT_TRUE(CommandRun({"demo", "x", "--acts", "-5"}).errors.contains("--acts"));
    EXPECT_TRUE(CommandRun({"new", "x", "--letterhead", "a"}).errors.contains("--code"));
    EXPECT_FALSE(QFile::exists("x"));
    EXPECT_EQ(CommandRun({"demo", "--help"}).code, 0);
}

TEST(PracticeCommand, NewStoresHalfTheCodeAndTheLetterhead)
{
    const QTemporaryDir place;
    const QString folder = place.filePath("cabinet");
    const CommandRun odd({"new", folder, "--code", "7", "--letterhead", "Dr Haddad"});
    EXPECT_EQ(odd.code, 1);
    EXPECT_TRUE(odd.errors.contains("nombre pair")) << odd.errors.toStdString();

    const CommandRun made(
        {"new", folder, "--code", "-6", "--letterhead", "Dr D'Angelo", "", "Sétif", "Tél. 036", "--language", "ar"});
    ASSERT_EQ(made.code, 0) << made.errors.toStdString();
    EXPECT_TRUE(made.output.contains("Code d'accès : -6"));
    QFile file(folder + "/ZEP_CFIG.CFG");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_EQ(data::ConfigWord(bytes.mid(3 * 84, 84), data::configAccessWord), -3);
    EXPECT_EQ(data::ConfigWord(bytes.mid(3 * 84, 84), data::configLanguageWord), 1);
    EXPECT_EQ(data::DecodeConfigRecord(bytes.mid(36 * 84, 84)), "Dr D'Angelo");
    EXPECT_EQ(data::DecodeConfigRecord(bytes.mid(39 * 84, 84)), "Tél. 036");

    const CommandRun again({"new", folder, "--code", "8", "--letterhead", "Dr Haddad"});
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.errors.contains("contient déjà un cabinet"));
}

TEST(PracticeCommand, CheckReportsFaults)
{
    const NewPractice practice;
    EXPECT_EQ(CommandRun({"check", practice.Folder()}).code, 0);
    {
        const practice::PracticeData data(practice.Folder());
        dao::Recordset acts = data.Database().OpenRecordset("Actes");
        acts.AddNew();
        acts["num"] = 7;
        acts["Date"] = "17/06/2008";
        acts["HH"] = 10;
        acts["flag_R"] = 6;
        acts["Type"] = "K31";
        acts["montant"] = dao::Value();
        acts["num_patient"] = 99;
        acts.Update();
        data.Database().Execute("Delete * from textes");
    }
    const CommandRun bad({"check", practice.Folder()});
    EXPECT_EQ(bad.code, 1);
    for (const char* part :
         {"ERREUR : Actes : HH hors de l'intervalle 0 à 9 (1 ligne, num 7)", "flag_R hors de l'intervalle",
          "Type inconnu « K31 »", "montant sans valeur", "ERREUR : textes : 0 ligne",
          "Remarque : Actes : num_patient sans ligne dans Patients (1 ligne, num 7)"})
        EXPECT_TRUE(bad.output.contains(part)) << part << "\n" << bad.output.toStdString();
}

TEST(PracticeCommand, CheckLooksForEachKeyInItsOwnTable)
{
    const NewPractice practice;
    ASSERT_EQ(practice.Import("Patients", "num,nom\n1,Haddad\n").code, 0);
    {
        const practice::PracticeData data(practice.Folder());
        dao::Recordset services = data.Database().OpenRecordset("Presta");
        services.AddNew();
        services["num"] = 2;
        services.Update();
    }
    ASSERT_EQ(practice
                  .Import("Actes", "num,Date,HH,montant,flag_R,num_patient,num_presta\n"
                                   "5,17/06/2008,0,0,0,1,2\n6,17/06/2008,0,0,0,2,1\n")
                  .code,
              0);
    const CommandRun run({"check", practice.Folder()});
    EXPECT_EQ(run.code, 0) << "remarks alone";
    for (const char* part : {"Actes : num_patient sans ligne dans Patients (1 ligne, num 6)",
                             "Actes : num_presta sans ligne dans Presta (1 ligne, num 6)"})
        EXPECT_TRUE(run.output.contains(part)) << part << "\n" << run.output.toStdString();
}

TEST(PracticeCommand, CheckCountsTheRowsOfTablesThatHoldOne)
{
    const NewPractice practice;
    {
        const practice::PracticeData data(practice.Folder());
        for (const char* table : {"Permn", "Tarif", "Tarif"}) {
            dao::Recordset rows = data.Database().OpenRecordset(table);
            rows.AddNew();
            rows.Update();
        }
    }
    const CommandRun run({"check", practice.Folder()});
    EXPECT_EQ(run.code, 1);
    for (const char* part : {"ERREUR : Permn : 2 lignes au lieu d'une.", "ERREUR : Tarif : 2 lignes au lieu d'une."})
        EXPECT_TRUE(run.output.contains(part)) << part << "\n" << run.output.toStdString();
}

TEST(PracticeCommand, CheckNamesMissingAndDamagedFiles)
{
    const NewPractice practice;
    const QDir folder(practice.Folder());
    ASSERT_TRUE(QFile::resize(folder.filePath("ZEP_CFIG.CFG"), 1000));
    ASSERT_TRUE(QFile::remove(folder.filePath("system.mdw")));
    {
        QFile database(folder.filePath("ZEP_ONE.MDB"));
        ASSERT_TRUE(database.open(QIODevice::WriteOnly));
        database.write(QByteArray(8192, 'x'));
    }
    const CommandRun run({"check", practice.Folder()});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.output.contains("ZEP_CFIG.CFG est trop court")) << run.output.toStdString();
    EXPECT_TRUE(run.output.contains("Le fichier system.mdw est absent")) << run.output.toStdString();
    EXPECT_TRUE(run.output.contains("ERREUR : ZEP_ONE.MDB")) << run.output.toStdString();
    EXPECT_EQ(CommandRun({"check", folder.filePath("nulle part")}).code, 1);
}

TEST(PracticeCommand, CheckTemplateListsEachMistakeWithItsLine)
{
    const NewPractice practice;
    EXPECT_EQ(CommandRun({"check-template", practice.Folder() + "/ZEP_R1.RPT"}).output, "Le modèle est en ordre.\n");

    QFile file(practice.Folder() + "/ESSAI.RPT");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("title = \"Essai\"\n[rows]\nselect = \"select Mt2, Mt3 from Prov\"\n[[column]]\nfield = \"Mt2\"\n");
    file.close();
    const CommandRun checked({"check-template", file.fileName()});
    EXPECT_EQ(checked.code, 1);
    EXPECT_EQ(checked.output, "ESSAI.RPT, ligne 3 : champ inconnu « Mt3 »\n"
                              "ESSAI.RPT, ligne 4 : colonne « Mt2 » sans largeur (width_mm)\n");
    EXPECT_EQ(CommandRun({"check-template", "rien.RPT"}).code, 1);
    EXPECT_EQ(CommandRun({"check-template"}).code, 2);
}
