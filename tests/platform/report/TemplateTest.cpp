#include "platform/pages/TemplateCheck.h"
#include "platform/report/ReportPractice.h"
#include "support/Printing.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

using tests::ReportPractice;

const QByteArray GoodTemplate = R"(title = "Essai"
[rows]
select = """
select num, nom
  from Patients
"""
[[column]]
heading = "Nom"
field = "nom"
width_mm = 50
)";

QByteArray With(const char* part, const char* instead)
{
    return QByteArray(GoodTemplate).replace(part, instead);
}

TEST(Template, NamesEachMistakeWithItsLineAndReason)
{
    struct Case {
        QByteArray text;
        int line;
        const char* reason;
    };
    const Case cases[] = {
        {With("from Patients", "from Patient"), 5, "table inconnue « Patient »"},
        {With("select num, nom\n", "select num,\n nomm\n"), 5, "champ inconnu « nomm »"},
        {With("field = \"nom\"", "field = \"Prenom\""), 7, "champ inconnu « Prenom » : « select » donne num, nom"},
        {With("width_mm = 50", ""), 7, "colonne « Nom » sans largeur (width_mm)"},
        {With("width_mm = 50", "width_mm = 500"), 10, "« width_mm » doit aller de 3 à 400"},
        {With("width_mm = 50", "width_mm = 190"), 7, "les colonnes ont ensemble 190 mm"},
        {With("width_mm = 50", "widht_mm = 50"), 10, "« widht_mm » est inconnu dans [[column]]"},
        {With("width_mm = 50", "width_mm = 50\nmask = \"%d\""), 11, "masque inconnu « %d »"},
        {With("width_mm = 50", "width_mm = 50\nalign = \"middle\""), 11, "alignement inconnu « middle »"},
        {With("select num, nom\n  from Patients", "delete from Patients"), 4, "seul « select » est permis"},
        {With("select num, nom\n  from Patients", "attach 'x.db' as x"), 4, "seul « select » est permis"},
        {With("select num, nom\n  from Patients", "pragma user_version = 9"), 4, "seul « select » est permis"},
        {With("from Patients", "from Patients;\ndelete from Patients"), 5, "une seule interrogation est permise"},
        {With("from Patients", "frm Patients"), 5, "erreur de syntaxe près de « Patients »"},
        {With("from Patients", "from Patients where num = ?"), 4, "l'interrogation attend une valeur"},
        {With("[rows]", "[[heading]]\ntext = \"{ch11}\"\n[rows]"), 3, "repère inconnu « {ch11} »"},
        {With("[rows]", "[paper]\nsize = \"A9\"\n[rows]"), 3, "papier inconnu « A9 »"},
        {With("[rows]", "[paper]\ntop_mm = \"dix\"\n[rows]"), 3, "« top_mm » doit être un nombre"},
        {With("[rows]", "[paper]\ntop_mm = 101\n[rows]"), 3, "« top_mm » doit aller de 0 à 100"},
        {With("[rows]", "[paper]\nright_mm = 101\n[rows]"), 3, "« right_mm » doit aller de 0 à 100"},
        {With("[rows]", "[paper]\nbottom_mm = -1\n[rows]"), 3, "« bottom_mm » doit aller de 0 à 100"},
        {With("[rows]", "[paper]\nleft_mm = -1\n[rows]"), 3, "« left_mm » doit aller de 0 à 100"},
        {With("[rows]", "[paper]\ntext_points = 4\n[rows]"), 3, "« text_points » doit aller de 5 à 24"},
        {With("[rows]", "[[heading]]\ntext = \"A\"\npoints = 49\n[rows]"), 4, "« points » doit aller de 5 à 48"},
        {With("[rows]", "[[heading]]\ntext = \"A\"\nspace_mm = 101\n[rows]"), 4, "« space_mm » doit aller de 0 à 100"},
        {With("[rows]", "[logo]\nfile = \"a.png\"\nheight_mm = 2\n[rows]"), 4, "« height_mm » doit aller de 3 à 100"},
        {With("[[column]]", "[column]"), 7, "« column » doit être un tableau entre doubles crochets"},
        {With("[[column]]", "[group]\nfield = \"ville\"\n[[column]]"), 7, "champ inconnu « ville »"},
        {With("[[column]]", "[group]\nfield = \"nom\"\nheading = \"{nom} {ville|?}\"\n[[column]]"), 7,
         "champ inconnu « ville »"},
        {With("[[column]]", "[group]\nfield = \"nom\"\nsubtotal = \"{ville}\"\n[[column]]"), 7,
         "champ inconnu « ville »"},
        {"", 1, "aucune interrogation"},
    };
    ReportPractice practice;
    for (const Case& each : cases) {
        const QList<pages::Fault> faults = pages::CheckTemplate(practice.WriteTemplate(each.text), practice.Source());
        const bool isFound = std::ranges::any_of(faults, [&](const pages::Fault& fault) {
            return fault.line == each.line && fault.reason.startsWith(QString::fromUtf8(each.reason));
        });
        QString found;
        for (const pages::Fault& fault : faults)
            found += QString("%1: %2\n").arg(fault.line).arg(fault.reason);
        EXPECT_TRUE(isFound) << "expected " << each.line << ": " << each.reason << "\nfound " << qPrintable(found);
    }
    EXPECT_EQ(practice.Database().OpenRecordset("select count(num) as S1 from Patients")["S1"].Long(), 3);
}

TEST(Template, ExplainsSyntaxErrors)
{
    const QByteArray deepName = "[" + QByteArray("a.").repeated(50'000) + "a]\n";
    const QByteArray deepList = "\na = " + QByteArray("[").repeated(50'000);
    struct Case {
        QByteArray text;
        int line;
        const char* reason;
    };
    const Case cases[] = {
        {With("title = \"Essai\"", "title = \"Essai"), 1, "un guillemet ouvert n'est pas fermé sur cette ligne"},
        {With("heading = \"Nom\"", "heading = \"Nom\n"), 8, "un guillemet ouvert n'est pas fermé"},
        {With("\"\"\"\n[[", "\n[["), 3, "les trois guillemets ouverts ici ne sont fermés nulle part"},
        {With("width_mm = 50", "width_mm = 12,5"), 10, "un nombre s'écrit avec un point : 12.5"},
        {With("width_mm = 50", "width_mm = 50\nchoices = [\"un\",\n\"deux\"\n\n[totals]\nlabel = \"x\""), 11,
         "un crochet ouvert ici n'est fermé nulle part"},
        {With("width_mm = 50", "width_mm = 50\nchoices = [\"un\","), 11,
         "un crochet ouvert ici n'est fermé nulle part"},
        {With("width_mm = 50", "width_mm = 50\nchoices = [\"un\" \"deux\"]"), 11, "liste mal écrite"},
        {With("width_mm = 50", "width_mm = 50\nblank_zero = oui"), 11, "oui s'écrit true"},
        {With("heading = \"Nom\"", "heading = Nom"), 8, "un texte se met entre guillemets : \"Nom\""},
        {With("heading = \"Nom\"", "heading = « Nom »"), 8, "un texte se met entre guillemets droits"},
        {With("heading = \"Nom\"", "heading = \"Nom\" du patient"), 8, "il y a quelque chose de trop"},
        {With("heading = \"Nom\"", "heading = \"C:\\dossier\""), 8, "« \\ » s'écrit « \\\\ »"},
        {With("heading = \"Nom\"", "heading"), 8, "« = » manque"},
        {With("heading = \"Nom\"", "heading ="), 8, "la valeur manque"},
        {With("heading = \"Nom\"", "en tête = \"Nom\""), 8, "clé mal écrite « en tête »"},
        {With("width_mm = 50", "width_mm = 50\nfield = \"num\""), 11, "« field » est déjà plus haut"},
        {With("[[column]]", "[[column]"), 7, "titre mal écrit « [[column] »"},
        {With("[[column]]", "[rows]\n[[column]]"), 7, "« [rows] » est déjà plus haut"},
        {With("[[column]]", "[@]\n[[column]]"), 7, "titre mal écrit « [@] »"},
        {With("\"Nom\"", "\"Pr\xe9nom\""), 8, "cette ligne n'est pas en UTF-8"},
        {"\xff\xfet\0", 1, "le fichier est en UTF-16"},
        {"a = \"\"\"un \"mot\"\"\"\"\nb =\n", 2, "la valeur manque"}, // the text ends with a quote of its own
        {deepName, 1, "plus de 8 niveaux"},
        {deepList, 2, "plus de 8 niveaux"},
        {"a = \"\"\"x\"\"\"\"\nb = '" + deepList, 3, "plus de 8 niveaux"}, // must not be hidden by an unclosed text
    };
    for (const Case& each : cases) {
        const QList<pages::Fault> faults = pages::ReadTemplate(each.text, {}).faults;
        ASSERT_EQ(faults.size(), 1) << each.reason;
        EXPECT_EQ(faults[0].line, each.line) << each.reason;
        EXPECT_TRUE(faults[0].reason.startsWith(QString::fromUtf8(each.reason))) << qPrintable(faults[0].reason) << "\n"
                                                                                 << each.reason;
    }
}

TEST(Template, AllowsEightLevelsOfNesting)
{
    const auto isTooDeep = [](const QByteArray& text) {
        const QList<pages::Fault> faults = pages::ReadTemplate(text, {}).faults;
        return std::ranges::any_of(faults, [](const auto& fault) { return fault.reason.startsWith("plus de 8"); });
    };
    EXPECT_FALSE(isTooDeep("[a" + QByteArray(".a").repeated(7) + "]\n"));
    EXPECT_TRUE(isTooDeep("[a" + QByteArray(".a").repeated(8) + "]\n"));
    EXPECT_FALSE(isTooDeep("a = " + QByteArray("[").repeated(8) + QByteArray("]").repeated(8) + "\n"));
    EXPECT_TRUE(isTooDeep("a = " + QByteArray("[").repeated(9) + QByteArray("]").repeated(9) + "\n"));
    EXPECT_FALSE(isTooDeep("# " + QByteArray(".").repeated(99) + "\na = '" + QByteArray("[").repeated(99) + "'\n"));
}

TEST(Template, ReportsUnreadableFilesAsFaultsOfTheFile)
{
    ReportPractice practice;
    const auto refusal = [](const QString& path) {
        const QList<pages::Fault> faults = pages::ReadTemplateFile(path, {}).faults;
        return faults.size() == 1 && faults[0].line == 0 ? faults[0].reason : QString();
    };
    EXPECT_TRUE(QFile::exists(ZEP_PROGRAM_FOLDER "/ZEP_Supp.RPT")) << "it is read from beside the program";
    EXPECT_EQ(refusal(practice.Folder() + "/RIEN.RPT"), "le fichier n'existe pas");
    EXPECT_EQ(refusal(practice.Folder()), "ce n'est pas un fichier");
    EXPECT_EQ(refusal("/proc/self/mem"), "le fichier ne peut pas être lu : le disque répond par une erreur");
    constexpr qsizetype largest = 64 * 1024;
    EXPECT_EQ(refusal(practice.WriteTemplate(GoodTemplate + QByteArray(largest + 1 - GoodTemplate.size(), '#'))),
              "le fichier est trop grand pour un modèle d'état (plus de 64 Ko)");
    const QString allowed = practice.WriteTemplate(GoodTemplate + QByteArray(largest - GoodTemplate.size(), '#'));
    EXPECT_EQ(pages::ReadTemplateFile(allowed, {}).faults.size(), 0);
}

} // namespace
