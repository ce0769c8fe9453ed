#include "tools/PracticeCommand.h"

#include "data/Archives.h"
#include "platform/host/Host.h"
#include "support/OtherProgram.h"

#include <QDir>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr auto Rows = R"(
    insert into Patients (num, nom, Prenom) values (1, 'SAÏDI', 'Fatima'), (2, 'L''Herbier', 'Malika');
    insert into Presta (num, denom, prix, Ordre) values (1, 'Consultation', 800, 0), (2, 'ECG', 1200, 1);
    insert into Actes (num, Date, MM, AA, num_patient, num_presta, montant, Type) values
        (1, '2008-06-02', 6, 2008, 1, 1, 800, 'C'), (2, '2008-06-09', 6, 2008, 2, 2, 1200, 'K5'),
        (3, '2008-06-16', 6, 2008, 1, 1, 800, 'C');
    insert into Recettes (num, Date, objet, montant) values (1, '2008-06-05', 'Coton', 150);
)";

const QString SameDays = "Aucun jour avant le 16/06/2008 n'a changé : les soldes sont ceux de la copie.\n";

/// A practice whose copy was made on 16/06/2008 at 18:02; today is the 17th.
class Copies : public testing::Test {
protected:
    Copies()
    {
        host::FixToday(QDate(2008, 6, 17));
        Run(Rows);
        Copy();
    }
    ~Copies() override { host::FixToday(QDate()); }

    void Run(const char* sql) const
    {
        ASSERT_EQ(tests::OtherProgram(practice.Folder() + "/ZEP_ONE.MDB").Run(sql), SQLITE_OK) << sql;
    }

    void Copy(const QString& name = "ZEP_ONE.MDB", const QDate& day = QDate(2008, 6, 16)) const
    {
        QDir().mkpath(archives);
        store::CopyDatabase(practice.Folder() + "/ZEP_ONE.MDB", archives + "/" + name);
        Date(name, day);
    }

    void Date(const QString& name, const QDate& day) const
    {
        QFile file(archives + "/" + name);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime(day, QTime(18, 2)), QFileDevice::FileModificationTime);
    }

    /// What is said of the days when the practice has changed since.
    QString DaysAfter(const char* change)
    {
        Run("delete from Actes; delete from Recettes; delete from Patients; delete from Presta");
        Run(Rows);
        Run(change);
        const CommandRun run({"compare", practice.Folder()});
        const QString days = run.output.section("18:02.\n", 1).section("Lignes :", 0, 0);
        EXPECT_EQ(run.code, days == SameDays ? 0 : 1) << change;
        return days;
    }

    NewPractice practice;
    const QString archives = practice.Folder() + "/ARCHIVES";
};

} // namespace

TEST_F(Copies, AreComparedDayByDay)
{
    EXPECT_EQ(DaysAfter("select 1"), SameDays);
    EXPECT_EQ(DaysAfter("update Patients set nom = 'Saïdi' where num = 1"), SameDays);
    EXPECT_EQ(DaysAfter("update Actes set flag_R = 2"), SameDays) << "what isn't cash";
    EXPECT_EQ(DaysAfter("update Actes set montant = 900 where num = 3"), SameDays) << "the day of the copy";
    EXPECT_EQ(DaysAfter("update Actes set montant = 800.004 where num = 1"), SameDays) << "to the cent";

    EXPECT_EQ(DaysAfter("update Actes set montant = 750 where num = 1"),
              "Jours dont la caisse a changé :\n"
              "  lundi 02/06/2008 : solde du soir 800.00 -> 750.00\n"
              "    Acte 1 (SAÏDI Fatima, Consultation) : montant 800.00 -> 750.00\n");
    EXPECT_EQ(DaysAfter("delete from Actes where num = 2; delete from Patients where num = 2"),
              "Jours dont la caisse a changé :\n"
              "  lundi 09/06/2008 : solde du soir 1 850.00 -> 650.00\n"
              "    Acte 2 (L'Herbier Malika, ECG) : disparu, 1 200.00\n");
    EXPECT_EQ(DaysAfter("insert into Actes (num, Date, num_patient, num_presta, montant) "
                        "values (9, '2008-06-04', 7, null, 0.1 + 0.2)"),
              "Jours dont la caisse a changé :\n"
              "  mercredi 04/06/2008 : solde du soir 800.00 -> 800.30\n"
              "    Acte 9 (n° 7, ?) : ajouté, 0.30\n");
    EXPECT_EQ(DaysAfter("update Recettes set montant = 175.5 where num = 1;"
                        "insert into Recettes (num, Date, objet, montant) values (2, '2008-06-01', 'Loyer', 20)"),
              "Jours dont la caisse a changé :\n"
              "  dimanche 01/06/2008 : solde du soir 0.00 -> -20.00\n"
              "    Dépense 2 (Loyer) : ajoutée, 20.00\n"
              "  jeudi 05/06/2008 : solde du soir 650.00 -> 604.50\n"
              "    Dépense 1 (Coton) : montant 150.00 -> 175.50\n");
    EXPECT_EQ(DaysAfter("update Actes set montant = 800.004 where num = 1;"
                        "insert into Recettes (num, Date, objet, montant) values (2, '2008-06-02', 'Timbre', 0.006)")
                  .section('\n', 1, 1),
              "  lundi 02/06/2008 : solde du soir 800.00 -> 800.00")
        << "each figure is rounded as it is shown: 800.00 less 0.01";
    EXPECT_EQ(DaysAfter("update Actes set Date = '2008-06-03' where num = 1"),
              "Jours dont la caisse a changé :\n"
              "  lundi 02/06/2008 : solde du soir 800.00 -> 0.00\n"
              "    Acte 1 (SAÏDI Fatima, Consultation) : date 02/06/2008 -> 03/06/2008\n"
              "  mardi 03/06/2008 : solde du soir 800.00 -> 800.00\n"
              "    Acte 1 (SAÏDI Fatima, Consultation) : date 02/06/2008 -> 03/06/2008\n");
}

TEST_F(Copies, AreComparedRowByRow)
{
    Run("update Patients set nom = 'Saïdi; Fatima \"F.\"', tel = null where num = 1; delete from Plani; delete from "
        "Presta "
        "where num = 2; insert into Actes (num, Date, flag_R) values (4, '2008-06-17', 3); update Permn set Charge1 = "
        "10.5");
    const QString csv = practice.Folder() + "/ecarts.csv";
    const CommandRun run({"compare", practice.Folder(), "--rows", "--csv", csv});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.output.section("Lignes :\n", 1),
              "  Patients : 1 modifiée\n"
              "    Patients 1 modifiée : nom : SAÏDI -> Saïdi; Fatima \"F.\"\n"
              "  Actes : 1 ajoutée\n"
              "    Actes 4 ajoutée : date : 17/06/2008, montant : 0.00, règlement : R+, archivé : 0\n"
              "  Actes_suppr : rien n'a changé\n"
              "  Plani : rien n'a changé\n"
              "  Presta : 1 disparue\n"
              "    Presta 2 disparue : nom : ECG, prix : 1 200.00, Ordre : 1\n"
              "  Recettes : rien n'a changé\n"
              "  Tarif : rien n'a changé\n"
              "  Permn : 1 modifiée\n"
              "    Permn 1 modifiée : Charge1 : vide -> 10.50\n");
    QFile file(csv);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.startsWith("\xEF\xBB\xBF")) << "spreadsheets know UTF-8 by it";
    const QString lines = QString::fromUtf8(bytes);
    EXPECT_TRUE(lines.startsWith("table;num;changement;champ;avant;maintenant\r\n"
                                 "Patients;1;modifiée;\"nom\";\"SAÏDI\";\"Saïdi; Fatima \"\"F.\"\"\"\r\n"))
        << lines.toStdString();
    EXPECT_TRUE(lines.endsWith("Permn;1;modifiée;\"Charge1\";\"\";\"10.50\"\r\n"));
    EXPECT_EQ(file.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_EQ(CommandRun({"compare", practice.Folder(), "--csv", "/nulle/part.csv"}).code, 2);
}

TEST_F(Copies, AreComparedInAFileOfWhichASpreadsheetRunsNothing)
{
    Run("update Patients set nom = '=1+1', Prenom = '+33', tel = '-5', ville = ' @x', diagno = 'a=b' where num = 1;"
        "update Actes set montant = -5.25 where num = 3; alter table Permn add column \"=x\" TEXT");
    const BuiltCommand run({"compare", practice.Folder(), "--csv", "/dev/stdout"});
    EXPECT_TRUE(run.errors.startsWith("Comparé à ")) << "apart from what a spreadsheet reads";
    EXPECT_EQ(
        run.output.section("maintenant\r\n", 1),
        "Patients;1;modifiée;\"nom\";\"SAÏDI\";\"'=1+1\"\r\nPatients;1;modifiée;\"Prenom\";\"Fatima\";\"'+33\"\r\n"
        "Patients;1;modifiée;\"tel\";\"\";\"'-5\"\r\nPatients;1;modifiée;\"ville\";\"\";\"' @x\"\r\n"
        "Patients;1;modifiée;\"diagno\";\"\";\"a=b\"\r\nActes;3;modifiée;\"montant\";\"800.00\";\"-5.25\"\r\n");
}

/// The names of files that a comparison may not replace, even with --force.
TEST_F(Copies, AreComparedInAFileThatReplacesNoOther)
{
    const QString folder = practice.Folder();
    const auto bytes = [](const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    };
    const auto compare = [&folder](const QString& csv, const QStringList& options) {
        return CommandRun(QStringList{"compare", folder, "--csv", csv} + options).code;
    };
    const QString sheet = practice.Write("ecarts.csv", "num;nom\n1;a\n");
    ASSERT_TRUE(QFile::link(sheet, folder + "/lien.csv") && QDir(folder).mkdir("dossier.csv"));
    QStringList kept = {folder + "/lien.csv",         folder + "/dossier.csv",
                        folder + "/ZEP_ONE.MDB-wal",  folder + "/zep_one.mdb.part",
                        folder + "/NEUF.RPT",         practice.Write("a.txt", "a;b\n"),
                        practice.Write("a.csv", "a"), practice.Write("modele.csv", "title = \"a;b\"\n")};
    for (const char* const name : {"ZEP_ONE.MDB", "ARCHIVES/ZEP_ONE.MDB", "ZEP_CFIG.CFG", "system.mdw", "ZEP_R1.RPT"}) {
        kept << folder + "/" + name << folder + "/" + QFileInfo(name).baseName() + ".csv";
        QFile::copy(folder + "/" + name, kept.last());
    }
    for (const QString& path : kept) {
        const QByteArray before = bytes(path);
        EXPECT_EQ(compare(path, {"--force"}), 2) << path.toStdString();
        EXPECT_EQ(bytes(path), before) << path.toStdString();
    }
    EXPECT_EQ(compare(sheet, {}), 2);
    EXPECT_EQ(bytes(sheet), "num;nom\n1;a\n");
    EXPECT_EQ(compare(sheet, {"--force"}), 0);
    EXPECT_TRUE(bytes(sheet).contains("champ;avant"));

    const QString pipe = practice.File("tube.csv");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    const int reader = ::open(qPrintable(pipe), O_RDWR | O_NONBLOCK);
    EXPECT_EQ(compare(pipe, {}), 0);
    char mark = 0;
    EXPECT_TRUE(::read(reader, &mark, 1) == 1 && mark == '\xEF');
    ::close(reader);
    EXPECT_EQ(QDir(folder + "/..").entryList({"*ecarts*", "*tube*"}, QDir::AllEntries | QDir::Hidden | QDir::System),
              QStringList({"ecarts.csv", "tube.csv"}))
        << "no partial file";
}

TEST_F(Copies, AreNamedByPathNameOrDay)
{
    Copy("ZEP_ONE 2008-06-10.MDB", QDate(2008, 6, 12));
    Copy("ZEP_ONE avant restauration 2008-06-15 10-00-00.MDB", QDate(2008, 6, 15));
    const auto compared = [this](const QStringList& copy) {
        const CommandRun run(QStringList{"compare", practice.Folder()} + copy);
        return run.code == 0 ? run.output.section('\n', 0, 0) : run.errors;
    };
    EXPECT_EQ(compared({}), "Comparé à la copie « ZEP_ONE.MDB » du 16/06/2008 à 18:02.");
    EXPECT_EQ(compared({"2008-06-10"}), "Comparé à la copie « ZEP_ONE 2008-06-10.MDB » du 12/06/2008 à 18:02.");
    EXPECT_TRUE(
        CommandRun({"compare", practice.Folder(), "2008-06-10"}).output.contains("Aucun jour avant le 10/06/2008"))
        << "by its name, though it was copied anew";
    EXPECT_EQ(compared({"16/06/2008"}), "Comparé à la copie « ZEP_ONE.MDB » du 16/06/2008 à 18:02.");
    EXPECT_EQ(compared({"zep_one 2008-06-10.mdb"}),
              "Comparé à la copie « ZEP_ONE 2008-06-10.MDB » du 12/06/2008 à 18:02.");
    const QString elsewhere = practice.Folder() + "/clé usb.sauve";
    QFile::copy(archives + "/ZEP_ONE.MDB", elsewhere);
    EXPECT_TRUE(compared({elsewhere}).startsWith("Comparé à la copie « clé usb.sauve » du "));
    EXPECT_TRUE(compared({"2008-06-15"})
                    .contains("n'existe pas ; copies : ZEP_ONE.MDB, ZEP_ONE 2008-06-10.MDB, ZEP_ONE "
                              "avant restauration 2008-06-15 10-00-00.MDB."));

    host::FixToday(QDate(2008, 6, 10)); // both are of today or later
    EXPECT_EQ(CommandRun({"compare", practice.Folder()}).code, 2);
    EXPECT_EQ(CommandRun({"compare", "/nulle/part"}).code, 2);
}

TEST_F(Copies, AreComparedWithAWarningWhenChangedSinceTheirClosing)
{
    QFile file(archives + "/ZEP_ONE.MDB");
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QByteArray name = "Consultation";
    const qsizetype at = file.readAll().indexOf(name);
    ASSERT_GT(at, 0);
    file.seek(at);
    file.write("X");
    file.close();
    const CommandRun run({"compare", practice.Folder(), "ZEP_ONE.MDB"});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.output.contains("modifiée depuis sa clôture")) << run.output.toStdString();
    EXPECT_TRUE(CommandRun({"archives", practice.Folder()}).output.contains("MODIFIÉE DEPUIS SA CLÔTURE"));
    for (const char* const answer : {"", "non\n", "oui\n"}) // --yes answers the first question alone
        EXPECT_EQ(CommandRun({"restore", practice.Folder(), "ZEP_ONE.MDB", "--yes"}, answer).code, *answer != 'o');
}

TEST_F(Copies, OfAnOlderVersionAreComparedByWhatBothHave)
{
    ASSERT_EQ(tests::OtherProgram(archives + "/ZEP_ONE.MDB")
                  .Run("pragma user_version=1; alter table Patients drop column diagno; drop table Plani"),
              SQLITE_OK);
    QFile::remove(archives + "/ZEP_ONE.MDB.sceau");
    Date("ZEP_ONE.MDB", QDate(2008, 6, 16));
    Run("update Patients set diagno = 'HTA'");
    const CommandRun run({"compare", practice.Folder()});
    EXPECT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.contains("Patients : rien n'a changé"));
    EXPECT_FALSE(run.output.contains("Plani"));
}

TEST_F(Copies, AreListedWithWhatTheyHold)
{
    Copy("ZEP_ONE 2008-06-10.MDB", QDate(2008, 6, 10));
    const CommandRun run({"archives", practice.Folder()});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.output.startsWith("ZEP_ONE.MDB\n  16/06/2008 à 18:02, ")) << run.output.toStdString();
    EXPECT_TRUE(
        run.output.contains(", entière\n"
                            "  Patients 2, Actes 3, Actes_suppr 0, Plani 0, Presta 2, Tarif 0, Recettes 1, Permn 1\n"
                            "  Dernier acte : n° 3 du 16/06/2008 (SAÏDI Fatima)\n"
                            "  Solde : 2 650.00 au soir du lundi 16/06/2008\n"));
    QFile(archives + "/ZEP_ONE 2008-06-10.MDB").resize(8192);
    const CommandRun damaged({"archives", practice.Folder()});
    EXPECT_EQ(damaged.code, 1);
    EXPECT_TRUE(damaged.output.contains("INUTILISABLE : ")) << damaged.output.toStdString();
    QDir(archives).removeRecursively();
    EXPECT_TRUE(CommandRun({"archives", practice.Folder()}).output.startsWith("Il n'y a aucune copie"));
}

TEST_F(Copies, ArePutBackOnlyWhenTheUserSaysOui)
{
    Run("delete from Actes where num = 3; update Actes set montant = 5; insert into Actes (num, Date, num_patient) "
        "values (8, '2008-06-17', 2), (9, '2008-06-17', 2)");
    for (const char* answer : {"", "non\n", "o\n", "oui, mais\n"}) {
        const CommandRun run({"restore", practice.Folder()}, answer);
        EXPECT_EQ(run.code, 1) << answer;
        EXPECT_TRUE(run.output.endsWith("Rien n'a été changé.\n"));
    }
    EXPECT_EQ(practice.Count("Actes"), 4);

    const CommandRun run({"restore", practice.Folder()}, " OUI \n");
    EXPECT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.startsWith("Copie : ZEP_ONE.MDB du 16/06/2008 à 18:02\n"
                                      "Dernier acte de la copie : n° 3 du 16/06/2008 (SAÏDI Fatima)\n"
                                      "Dernier acte actuel : n° 9 du 17/06/2008 (L'Herbier Malika)\n"
                                      "  Actes : 2 lignes perdues, 2 remises à leur état d'avant, 1 retrouvée\n"))
        << run.output.toStdString();
    EXPECT_TRUE(run.output.contains("Le fichier d'avant est gardé : " + archives + "/ZEP_ONE avant restauration "));
    EXPECT_EQ(practice.Count("Actes"), 3);
}

TEST_F(Copies, ArePutBackInPlaceOfWhatCantBeRead)
{
    QFile(practice.Folder() + "/ZEP_ONE.MDB").resize(5000);
    const CommandRun run({"restore", practice.Folder(), "--yes"});
    EXPECT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.contains("Le fichier actuel ne peut pas être lu : ")) << run.output.toStdString();
    EXPECT_EQ(practice.Count("Actes"), 3);
}

TEST_F(Copies, AreNotPutBackUnderAnOpenPractice)
{
    {
        const practice::PracticeData open(practice.Folder());
        const CommandRun run({"restore", practice.Folder(), "--yes"});
        EXPECT_EQ(run.code, 2);
        EXPECT_TRUE(run.errors.contains("Le cabinet est ouvert dans un programme")) << run.errors.toStdString();
    }
    QFile(archives + "/ZEP_ONE.MDB").resize(8192);
    EXPECT_EQ(CommandRun({"restore", practice.Folder(), "--yes"}).code, 2) << "no whole copy";
    EXPECT_EQ(CommandRun({"restore", practice.Folder(), "ZEP_ONE.MDB", "--yes"}).code, 2) << "a damaged one";
    EXPECT_EQ(practice.Count("Actes"), 3);
}
