#include "data/ReportTemplates.h"
#include "platform/report/PdfText.h"
#include "support/OtherProgram.h"
#include "tools/PracticeCommand.h"

namespace {

void Rewrite(const QString& path, const QByteArray& from, const QByteArray& to)
{
    const QByteArray text = BytesOf(path);
    ASSERT_TRUE(text.contains(from));
    tests::WriteFile(path, QByteArray(text).replace(from, to));
}

class Preview : public testing::Test {
protected:
    void SetUp() override
    {
        EXPECT_EQ(tests::OtherProgram(practice.Folder() + "/ZEP_ONE.MDB").Run(R"(
            insert into Recettes (num, Date, objet, montant) values (3, '2008-06-17', 'Gants stériles', 1200);
            insert into Prov (num) values (3);
            insert into Presta (num, denom, Ordre) values (7, 'Écho', 0);
            insert into Patients (num, nom) values (1, 'Haddad'), (2, 'Benali');
            insert into Plani (num, date, HH, num_patient, Num_Presta) values
                (1, '2008-06-16', 2, 1, 7), (2, '2008-06-17', 3, 2, 7))"),
                  SQLITE_OK);
    }

    QString Pdf() const { return practice.Folder() + "/essai.pdf"; }

    NewPractice practice;
};

} // namespace

TEST_F(Preview, ShowsAChangedTemplateWithTheRowsOfTheLastReport)
{
    Rewrite(practice.Folder() + "/ZEP_R4.RPT", "heading = \"Objet", "heading = \"Motif");
    const BuiltCommand run({"preview", practice.Folder(), "zep_r4.rpt", "--pdf", Pdf()});
    ASSERT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.endsWith("1 page, 1 ligne\n")) << run.output.toStdString();
    EXPECT_EQ(run.errors, "");
    const QString text = tests::ReadPdf(Pdf()).value(0).text;
    for (const char* part : {"Motif", "Gants stériles", "1 200.00"})
        EXPECT_TRUE(text.contains(part)) << part << "\n" << text.toStdString();
}

TEST_F(Preview, ShowsTheLastDayOfThePlanning)
{
    ASSERT_EQ(BuiltCommand({"preview", practice.Folder(), "Planning.RPT", "--pdf", Pdf()}).code, 0);
    const QString text = tests::ReadPdf(Pdf()).value(0).text;
    EXPECT_TRUE(text.contains("Benali")) << text.toStdString();
    EXPECT_FALSE(text.contains("Haddad")) << text.toStdString();
}

TEST_F(Preview, ReplacesAPdfWhenAskedAndNothingElse)
{
    const auto preview = [this](const QStringList& pdf) {
        return BuiltCommand(QStringList{"preview", practice.Folder(), "ZEP_R4.RPT", "--pdf"} + pdf);
    };
    EXPECT_EQ(preview({Pdf()}).code, 0);
    EXPECT_EQ(QFile(Pdf()).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    Rewrite(practice.Folder() + "/ZEP_R4.RPT", "heading = \"Objet", "heading = \"Motif");
    EXPECT_TRUE(preview({Pdf()}).errors.contains("existe déjà ; --force le remplace."));
    EXPECT_FALSE(tests::ReadPdf(Pdf()).value(0).text.contains("Motif"));
    EXPECT_EQ(preview({Pdf(), "--force"}).code, 0);
    EXPECT_TRUE(tests::ReadPdf(Pdf()).value(0).text.contains("Motif"));
    EXPECT_EQ(preview({practice.Folder() + "/ZEP_ONE.MDB", "--force"}).code, 1);
    EXPECT_EQ(preview({practice.Write("faux.pdf", "%!PS"), "--force"}).code, 1);
    const BuiltCommand piped = preview({"/dev/stdout"});
    EXPECT_TRUE(piped.output.startsWith("%PDF-") && piped.errors.endsWith("1 page, 1 ligne\n"));
    EXPECT_FALSE(QFile::exists(practice.Folder() + "/ZEP_Supp.RPT")) << "it comes with the program";
    EXPECT_EQ(BuiltCommand({"preview", practice.Folder(), "ZEP_Supp.RPT", "--pdf", Pdf(), "--force"}).code, 0);
}

TEST_F(Preview, RefusesMistakesAndWritesNothing)
{
    Rewrite(practice.Folder() + "/ZEP_R4.RPT", "field = \"objet\"", "field = \"sujet\"");
    const struct {
        QStringList arguments;
        const char* reason;
    } rows[] = {
        {{practice.Folder(), "ZEP_R4.RPT", "--pdf", Pdf()}, "ZEP_R4.RPT, ligne "},
        {{practice.Folder(), "RIEN.RPT", "--pdf", Pdf()}, "Fichier RIEN.RPT absent"},
        {{practice.Folder() + "/ARCHIVES", "ZEP_R4.RPT", "--pdf", Pdf()}, "n'est pas le dossier d'un cabinet"},
        {{practice.Folder(), "ZEP_R1.RPT", "--pdf", practice.Folder() + "/rien/essai.pdf"},
         "Chemin d'accès introuvable"},
    };
    for (const auto& row : rows) {
        const BuiltCommand run(QStringList("preview") + row.arguments);
        EXPECT_EQ(run.code, 1) << row.reason;
        EXPECT_TRUE(run.errors.contains(row.reason)) << run.errors.toStdString();
    }
    EXPECT_FALSE(QFile::exists(Pdf()));
}

/// The changes that docs/report-templates.md shows, as it has them.
TEST_F(Preview, TheChangesOfTheManualCanBeMadeAsItShowsThem)
{
    QStringList listings;
    QString last;
    for (const QString& line :
         QString::fromUtf8(BytesOf(PRACTICE_MANUAL)).section("## Trois changements", 1).split('\n')) {
        if (line.trimmed() == "```")
            listings << std::exchange(last, {});
        else if (line.trimmed() == "```toml" || !last.isEmpty())
            last += line.trimmed() == "```toml" ? "\n" : line.mid(line.startsWith("   ") ? 3 : 0) + "\n";
    }
    ASSERT_EQ(listings.size(), 5);
    const auto listing = [&](int number) { return listings[number].trimmed().toUtf8(); };

    const QString pending = practice.Folder() + "/ZEP_R3.RPT";
    Rewrite(pending, "Patients.Prenom, Presta.denom,", listing(0));
    Rewrite(pending, "[[column]]\nheading = \"Unité\"", listing(1) + "\n\n[[column]]\nheading = \"Unité\"");
    EXPECT_TRUE(CommandRun({"check-template", pending}).output.contains("les colonnes ont ensemble 208 mm"));
    Rewrite(pending, "width_mm = 40", "width_mm = 32");
    Rewrite(pending, "width_mm = 36", "width_mm = 26");
    Rewrite(pending, "width_mm = 38", "width_mm = 28");

    const QString settled = practice.Folder() + "/ZEP_R2.RPT";
    Rewrite(settled, " order by Prov.rowid\n\"", " " + listing(2) + "\n\"");
    Rewrite(settled, "select row_number() over (order by Prov.rowid) as ligne,", listing(3));

    const QString logo = practice.Folder() + "/ZEP_R4.RPT";
    Rewrite(logo, "[[heading]]\ntext = \"{ch1}\"", listing(4) + "\n\n[[heading]]\ntext = \"{ch1}\"");
    EXPECT_TRUE(CommandRun({"check-template", logo}).output.contains("logo « logo.png »"));
    ASSERT_TRUE(QFile::copy(PRACTICE_PICTURE, practice.Folder() + "/logo.png"));

    for (const QString& report : {pending, settled, logo}) {
        EXPECT_EQ(CommandRun({"check-template", report}).output, "Le modèle est en ordre.\n");
        EXPECT_EQ(BuiltCommand({"preview", practice.Folder(), report, "--pdf", Pdf(), "--force"}).code, 0);
        EXPECT_EQ(tests::ReadPdf(Pdf()).value(0).text.contains("Téléphone"), report == pending);
    }
}

TEST_F(Preview, ChecksPlacesThatNothingFills)
{
    for (const data::ReportTemplate& report : data::ReportTemplates())
        EXPECT_EQ(CommandRun({"check-template", practice.Folder() + "/" + report.name}).output,
                  "Le modèle est en ordre.\n")
            << report.name.toStdString();

    Rewrite(practice.Folder() + "/ZEP_R2.RPT", "right = \"Page {page}", "right = \"{ch1} {ch7|-} {page}");
    const CommandRun unwritten({"check-template", practice.Folder() + "/ZEP_R2.RPT"});
    EXPECT_EQ(unwritten.code, 1);
    EXPECT_TRUE(unwritten.output.endsWith(" : « {ch7} » n'est pas rempli pour cet état, qui reçoit ch4\n"))
        << unwritten.output.toStdString();
    EXPECT_EQ(unwritten.output.count('\n'), 1);
}
