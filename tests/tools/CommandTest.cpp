#include "tools/PracticeCommand.h"

#include "data/Practice.h"

TEST(PracticeCommand, NamesInvalidArguments)
{
    const struct {
        QStringList typed;
        const char* reason;
    } rows[] = {
        {{}, "il faut une commande"},
        {{"vendre"}, "commande inconnue : « vendre »"},
        {{"demo", "x", "--acte", "5"}, "option inconnue : --acte"},
        {{"demo", "x", "--acts"}, "il manque une valeur après --acts"},
        {{"demo", "x", "--acts", "3", "--acts", "4"}, "--acts est donnée deux fois"},
        {{"demo", "x", "--acts", "--seed", "3"}, "il manque une valeur après --acts"},
        {{"demo", "x", "--until", "31/02/2024"}, "valeur incorrecte « 31/02/2024 » pour --until"},
        {{"demo", ""}, "DOSSIER est vide"},
        {{"new", "x", "--code", "2"}, "il manque l'option --letterhead"},
        {{"new", "x", "--code", "2", "--letterhead"}, "il manque une valeur après --letterhead"},
        {{"import", "x", "Patients"}, "il manque FICHIER"},
        {{"new", "x", "--code", "12", "--letterhead", "a", "--language", "en"}, "« en » pour --language"},
        {{"demo", "x", "--acts", "-5"}, "valeur incorrecte « -5 » pour --acts"},
    };
    for (const auto& row : rows) {
        const CommandRun run(row.typed);
        EXPECT_EQ(run.code, 2) << row.reason;
        EXPECT_TRUE(run.errors.startsWith("practice : ") && run.errors.contains(row.reason))
            << row.reason << "\n"
            << run.errors.toStdString();
        const bool isCommand = run.errors.contains("Utilisation :\n  practice " + row.typed.value(0));
        EXPECT_TRUE(isCommand || (run.errors.count('\n') == 1 && run.errors.contains("practice --help")));
    }
    EXPECT_FALSE(QFile::exists("x"));
    EXPECT_TRUE(CommandRun({"new", "--help"}).output.contains("--letterhead"));
    EXPECT_FALSE(CommandRun({"new", "--help"}).output.contains("--acts")) << "of another command";
}

TEST(PracticeCommand, CountsTheNamesOfEachCommand)
{
    const struct {
        const char* command;
        int least, most;
        const char* last; ///< of those that it must have
    } rows[] = {{"adopt", 2, 2, "NOUVEAU_DOSSIER"},
                {"archives", 1, 1, "DOSSIER"},
                {"check", 1, 1, "DOSSIER|FICHIER"},
                {"check-template", 1, 1, "FICHIER"},
                {"compare", 1, 2, "DOSSIER"},
                {"demo", 1, 1, "DOSSIER"},
                {"export", 2, 99, "DOSSIER_CSV"},
                {"feed", 2, 2, "SOURCE"},
                {"fields", 0, 0, ""},
                {"import", 2, 3, "TABLE ou DOSSIER_CSV"},
                {"new", 1, 1, "DOSSIER"},
                {"preview", 2, 2, "MODELE.RPT"},
                {"repair", 1, 1, "DOSSIER"},
                {"restore", 1, 2, "DOSSIER"},
                {"set", 1, 1, "DOSSIER"},
                {"shortcut", 1, 1, "DOSSIER"}};
    for (const auto& row : rows) {
        const QStringList names(row.most, "x");
        if (row.least > 0) {
            const CommandRun few(QStringList{row.command} + names.first(row.least - 1));
            EXPECT_TRUE(few.code == 2 && few.errors.startsWith(QString("practice : il manque %1.\n").arg(row.last)))
                << row.command << few.errors.toStdString();
        }
        if (row.most < 99) {
            const CommandRun many(QStringList{row.command} + names + QStringList{"y"});
            EXPECT_TRUE(many.code == 2 && many.errors.startsWith("practice : argument en trop : « y ».\n"))
                << row.command << many.errors.toStdString();
        }
    }
}

TEST(PracticeCommand, NewStoresHalfTheCodeAndTheLetterhead)
{
    const NewPractice practice;
    const QString folder = practice.File("autre");
    const CommandRun odd({"new", folder, "--code", "7", "--letterhead", "Dr Haddad"});
    EXPECT_EQ(odd.code, 1);
    EXPECT_TRUE(odd.errors.contains("nombre pair")) << odd.errors.toStdString();

    const CommandRun made(
        {"new", folder, "--code", "-6", "--letterhead", "Dr D'Angelo", "", "Sétif", "Tél. 036", "--language", "ar"});
    ASSERT_EQ(made.code, 0) << made.errors.toStdString();
    EXPECT_TRUE(made.output.contains("Code d'accès : -6"));
    const auto record = [&](int number) { return BytesOf(folder + "/ZEP_CFIG.CFG").mid((number - 1) * 84, 84); };
    EXPECT_EQ(data::ConfigWord(record(4), data::ConfigAccessWord), -3);
    EXPECT_EQ(data::ConfigWord(record(4), data::ConfigLanguageWord), 1);
    EXPECT_EQ(data::DecodeConfigRecord(record(40)), "Tél. 036");

    const CommandRun again({"new", folder, "--code", "8", "--letterhead", "Dr Haddad"});
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.errors.contains("contient déjà un cabinet"));
}

TEST(PracticeCommand, CheckTemplateListsEachMistakeWithItsLine)
{
    const NewPractice practice;
    const CommandRun checked({"check-template", practice.Write("ESSAI.RPT", R"(title = "Essai"
[rows]
select = "select Mt2, Mt3 from Prov"
[[column]]
field = "Mt2"
)")});
    EXPECT_EQ(checked.code, 1);
    EXPECT_EQ(checked.output, "ESSAI.RPT, ligne 3 : champ inconnu « Mt3 »\n"
                              "ESSAI.RPT, ligne 4 : colonne « Mt2 » sans largeur (width_mm)\n");
    EXPECT_EQ(CommandRun({"check-template", "rien.RPT"}).code, 1);
}
