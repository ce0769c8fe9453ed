#include "tools/PracticeCommand.h"

#include "data/Practice.h"

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
        {"repair"},
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
    EXPECT_EQ(data::ConfigWord(bytes.mid(3 * 84, 84), data::ConfigAccessWord), -3);
    EXPECT_EQ(data::ConfigWord(bytes.mid(3 * 84, 84), data::ConfigLanguageWord), 1);
    EXPECT_EQ(data::DecodeConfigRecord(bytes.mid(36 * 84, 84)), "Dr D'Angelo");
    EXPECT_EQ(data::DecodeConfigRecord(bytes.mid(39 * 84, 84)), "Tél. 036");

    const CommandRun again({"new", folder, "--code", "8", "--letterhead", "Dr Haddad"});
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.errors.contains("contient déjà un cabinet"));
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
