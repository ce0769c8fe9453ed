#include "tools/PracticeCommand.h"

#include "archives/Archives.h"
#include "platform/host/Host.h"
#include "support/OtherProgram.h"
#include "support/Unix.h"

#include <QDir>

namespace {

constexpr auto Rows = R"(
    insert into Patients (num, nom, Prenom) values (1, 'SAÏDI', 'Fatima'), (2, 'L''Herbier', 'Malika');
    insert into Presta (num, denom, prix, Ordre) values (1, 'Consultation', 800, 0), (2, 'ECG', 1200, 1);
    insert into Actes (num, Date, MM, AA, num_patient, num_presta, montant, Type) values
        (1, '2008-06-02', 6, 2008, 1, 1, 800, 'C'), (2, '2008-06-09', 6, 2008, 2, 2, 1200, 'K5'),
        (3, '2008-06-16', 6, 2008, 1, 1, 800, 'C');
    insert into Recettes (num, Date, objet, montant) values (1, '2008-06-05', 'Coton', 150);
)";

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
        archives::CopyDatabase(practice.Folder() + "/ZEP_ONE.MDB", archives + "/" + name);
        Date(name, day);
    }

    void Date(const QString& name, const QDate& day) const { tests::DateFile(archives + "/" + name, day); }

    CommandRun Compare(const QStringList& options = {}) const
    {
        return CommandRun(QStringList{"compare", practice.Folder()} + options);
    }
    CommandRun Restore(const QStringList& options, const char* typed = "") const
    {
        return CommandRun(QStringList{"restore", practice.Folder()} + options, typed);
    }

    NewPractice practice;
    const QString archives = practice.Folder() + "/ARCHIVES";
};

} // namespace

TEST_F(Copies, AreComparedDayByDay)
{
    const std::pair<const char*, const char*> changes[] = {
        {"select 1", ""},
        {"update Patients set nom = 'Saïdi' where num = 1", ""},
        {"update Actes set flag_R = 2", ""},                      // what isn't cash
        {"update Actes set montant = 900 where num = 3", ""},     // the day of the copy
        {"update Actes set montant = 800.004 where num = 1", ""}, // to the cent
        {"update Actes set montant = 750 where num = 1",
         "  lundi 02/06/2008 : solde du soir 800.00 -> 750.00\n"
         "    Acte 1 (SAÏDI Fatima, Consultation) : montant 800.00 -> 750.00\n"},
        {"delete from Actes where num = 2; delete from Patients where num = 2",
         "  lundi 09/06/2008 : solde du soir 1 850.00 -> 650.00\n"
         "    Acte 2 (L'Herbier Malika, ECG) : disparu, 1 200.00\n"},
        {"insert into Actes (num, Date, num_patient, num_presta, montant) values (9, '2008-06-04', 7, null, 0.1 + 0.2)",
         "  mercredi 04/06/2008 : solde du soir 800.00 -> 800.30\n"
         "    Acte 9 (n° 7, ?) : ajouté, 0.30\n"},
        {"update Recettes set montant = 175.5 where num = 1;"
         "insert into Recettes (num, Date, objet, montant) values (2, '2008-06-01', 'Loyer', 20)",
         "  dimanche 01/06/2008 : solde du soir 0.00 -> -20.00\n"
         "    Dépense 2 (Loyer) : ajoutée, 20.00\n"
         "  jeudi 05/06/2008 : solde du soir 650.00 -> 604.50\n"
         "    Dépense 1 (Coton) : montant 150.00 -> 175.50\n"},
        {"update Actes set montant = 800.004 where num = 1;" // rounded as it is shown: 800.00 less 0.01
         "insert into Recettes (num, Date, objet, montant) values (2, '2008-06-02', 'Timbre', 0.006)",
         "  lundi 02/06/2008 : solde du soir 800.00 -> 800.00\n"
         "    Acte 1 (SAÏDI Fatima, Consultation) : montant 800.00 -> 800.00\n"
         "    Dépense 2 (Timbre) : ajoutée, 0.01\n"},
        {"update Actes set Date = '2008-06-03' where num = 1",
         "  lundi 02/06/2008 : solde du soir 800.00 -> 0.00\n"
         "    Acte 1 (SAÏDI Fatima, Consultation) : date 02/06/2008 -> 03/06/2008\n"
         "  mardi 03/06/2008 : solde du soir 800.00 -> 800.00\n"
         "    Acte 1 (SAÏDI Fatima, Consultation) : date 02/06/2008 -> 03/06/2008\n"},
    };
    for (const auto& [change, days] : changes) {
        Run("delete from Actes; delete from Recettes; delete from Patients; delete from Presta");
        Run(Rows);
        Run(change);
        const CommandRun run = Compare();
        EXPECT_EQ(run.output.section("18:02.\n", 1).section("Lignes :", 0, 0),
                  *days != 0 ? QString("Jours dont la caisse a changé :\n") + days
                             : "Aucun jour avant le 16/06/2008 n'a changé : les soldes sont ceux de la copie.\n");
        EXPECT_EQ(run.code, *days != 0) << change;
    }
}

TEST_F(Copies, AreComparedRowByRowInAFileOfWhichASpreadsheetRunsNothing)
{
    Run("update Patients set nom = 'Saïdi; \"F.\"', Prenom = '=1+1', tel = '-5', ville = ' @x', diagno = 'a=b' "
        "where num = 1; update Patients set Prenom = '+33' where num = 2; delete from Plani;"
        "delete from Presta where num = 2; update Actes set montant = -5.25 where num = 3;"
        "insert into Actes (num, Date, flag_R) values (4, '2008-06-17', 3); update Permn set Charge1 = 10.5;"
        "alter table Permn add column \"=x\" TEXT");
    const QString csv = practice.Folder() + "/ecarts.csv";
    const CommandRun run = Compare({"--rows", "--csv", csv});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(
        run.output.section("Lignes :\n", 1),
        "  Patients : 2 modifiées\n"
        "    Patients 1 modifiée : nom : SAÏDI -> Saïdi; \"F.\", prénom : Fatima -> =1+1, téléphone : vide -> -5, "
        "ville : vide ->  @x, diagnostic : vide -> a=b\n"
        "    Patients 2 modifiée : prénom : Malika -> +33\n"
        "  Actes : 1 ajoutée, 1 modifiée\n"
        "    Actes 3 modifiée : montant : 800.00 -> -5.25\n"
        "    Actes 4 ajoutée : date : 17/06/2008, montant : 0.00, règlement : R+, archivé : 0\n"
        "  Actes_suppr : rien n'a changé\n"
        "  Plani : rien n'a changé\n"
        "  Presta : 1 disparue\n"
        "    Presta 2 disparue : nom : ECG, prix : 1 200.00, Ordre : 1\n"
        "  Recettes : rien n'a changé\n"
        "  Tarif : rien n'a changé\n"
        "  Permn : 1 modifiée\n"
        "    Permn 1 modifiée : Charge1 : vide -> 10.50\n");
    const QByteArray bytes = BytesOf(csv);
    EXPECT_TRUE(bytes.startsWith("\xEF\xBB\xBFtable;num;changement;champ;avant;maintenant\r\n")) << bytes.data();
    EXPECT_EQ(
        QString::fromUtf8(bytes).split("\r\n").filter("modifiée"),
        QStringList({R"(Patients;1;modifiée;"nom";"SAÏDI";"Saïdi; ""F.""")",
                     R"(Patients;1;modifiée;"Prenom";"Fatima";"'=1+1")", R"(Patients;1;modifiée;"tel";"";"'-5")",
                     R"(Patients;1;modifiée;"ville";"";"' @x")", R"(Patients;1;modifiée;"diagno";"";"a=b")",
                     R"(Patients;2;modifiée;"Prenom";"Malika";"'+33")",
                     R"(Actes;3;modifiée;"montant";"800.00";"-5.25")", R"(Permn;1;modifiée;"Charge1";"";"10.50")"}));
    EXPECT_EQ(Compare({"--csv", "/nulle/part.csv"}).code, 2);
    NEEDS_UNIX("mode bits and a name of the standard output");
    EXPECT_EQ(QFile(csv).permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    const BuiltCommand piped({"compare", practice.Folder(), "--csv", "/dev/stdout"});
    EXPECT_TRUE(piped.errors.startsWith("Comparé à ")) << "apart from what a spreadsheet reads";
    EXPECT_EQ(piped.output, QString::fromUtf8(bytes));
}

/// The names of files that a comparison may not replace, even with --force.
TEST_F(Copies, AreComparedInAFileThatReplacesNoOther)
{
    NEEDS_UNIX("mkfifo");
    const QString folder = practice.Folder();
    const auto bytes = [](const QString& path) {
        return QFileInfo(path).isFile() ? BytesOf(path) : QByteArray("none");
    };
    const auto compare = [this](const QString& csv, const QStringList& options = {}) {
        return Compare(QStringList{"--csv", csv} + options).code;
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
    EXPECT_EQ(compare(sheet), 2);
    EXPECT_EQ(BytesOf(sheet), "num;nom\n1;a\n");
    EXPECT_EQ(compare(sheet, {"--force"}), 0);
    EXPECT_TRUE(BytesOf(sheet).contains("champ;avant"));

    QFile pipe(practice.File("tube.csv"));
    ASSERT_TRUE(::mkfifo(qPrintable(pipe.fileName()), 0600) == 0 && pipe.open(QFile::ReadWrite | QFile::Unbuffered));
    EXPECT_EQ(compare(pipe.fileName()), 0);
    EXPECT_EQ(pipe.read(1), "\xEF");
    EXPECT_EQ(QDir(folder + "/..").entryList({"*ecarts*", "*tube*"}, QDir::AllEntries | QDir::Hidden | QDir::System),
              QStringList({"ecarts.csv", "tube.csv"}))
        << "no partial file";
}

TEST_F(Copies, AreNamedByPathNameOrDay)
{
    Copy("ZEP_ONE 2008-06-10.MDB", QDate(2008, 6, 12));
    Copy("ZEP_ONE avant restauration 2008-06-15 10-00-00.MDB", QDate(2008, 6, 15));
    const QString elsewhere = practice.Folder() + "/clé usb.sauve";
    QFile::copy(archives + "/ZEP_ONE.MDB", elsewhere);
    Date("../clé usb.sauve", QDate(2008, 6, 1));
    const std::pair<QStringList, const char*> copies[] = {
        {{}, "« ZEP_ONE.MDB » du 16/06/2008"},
        {{"16/06/2008"}, "« ZEP_ONE.MDB » du 16/06/2008"},
        {{"2008-06-10"}, "« ZEP_ONE 2008-06-10.MDB » du 12/06/2008"},
        {{"zep_one 2008-06-10.mdb"}, "« ZEP_ONE 2008-06-10.MDB » du 12/06/2008"},
        {{elsewhere}, "« clé usb.sauve » du 01/06/2008"},
    };
    for (const auto& [typed, copy] : copies)
        EXPECT_EQ(Compare(typed).output.section('\n', 0, 0), QString("Comparé à la copie %1 à 18:02.").arg(copy));
    EXPECT_TRUE(Compare({"2008-06-10"}).output.contains("Aucun jour avant le 10/06/2008"))
        << "by its name, though it was copied anew";
    EXPECT_TRUE(Compare({"2008-06-15"})
                    .errors.contains("n'existe pas ; copies : ZEP_ONE.MDB, ZEP_ONE 2008-06-10.MDB, ZEP_ONE "
                                     "avant restauration 2008-06-15 10-00-00.MDB."));

    host::FixToday(QDate(2008, 6, 10)); // both are of today or later
    EXPECT_EQ(Compare().code, 2);
    EXPECT_EQ(CommandRun({"compare", "/nulle/part"}).code, 2);
}

TEST_F(Copies, AreComparedWithAWarningWhenChangedSinceTheirClosing)
{
    const QByteArray copied = BytesOf(archives + "/ZEP_ONE.MDB");
    tests::WriteFile(archives + "/ZEP_ONE.MDB", QByteArray(copied).replace("Consultation", "Xonsultation"));
    const CommandRun run = Compare({"ZEP_ONE.MDB"});
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.output.contains("modifiée depuis sa clôture")) << run.output.toStdString();
    EXPECT_TRUE(CommandRun({"archives", practice.Folder()}).output.contains("MODIFIÉE DEPUIS SA CLÔTURE"));
    for (const char* const answer : {"", "non\n", "oui\n"}) // --yes answers the first question alone
        EXPECT_EQ(Restore({"ZEP_ONE.MDB", "--yes"}, answer).code, *answer != 'o');
}

TEST_F(Copies, OfAnOlderVersionAreComparedByWhatBothHave)
{
    ASSERT_EQ(tests::OtherProgram(archives + "/ZEP_ONE.MDB")
                  .Run("pragma user_version=1; alter table Patients drop column diagno; drop table Plani"),
              SQLITE_OK);
    QFile::remove(archives + "/ZEP_ONE.MDB.sceau");
    Date("ZEP_ONE.MDB", QDate(2008, 6, 16));
    Run("update Patients set diagno = 'HTA'");
    const CommandRun run = Compare();
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
        const CommandRun run = Restore({}, answer);
        EXPECT_EQ(run.code, 1) << answer;
        EXPECT_TRUE(run.output.endsWith("Rien n'a été changé.\n"));
    }
    EXPECT_EQ(practice.Count("Actes"), 4);

    const CommandRun run = Restore({}, " OUI \n");
    EXPECT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.startsWith("Copie : ZEP_ONE.MDB du 16/06/2008 à 18:02\n"
                                      "Dernier acte de la copie : n° 3 du 16/06/2008 (SAÏDI Fatima)\n"
                                      "Dernier acte actuel : n° 9 du 17/06/2008 (L'Herbier Malika)\n"
                                      "  Actes : 2 lignes perdues, 2 remises à leur état d'avant, 1 retrouvée\n"))
        << run.output.toStdString();
    EXPECT_TRUE(run.output.contains("Le fichier d'avant est gardé : " + archives + "/ZEP_ONE avant restauration "));
    EXPECT_EQ(practice.Count("Actes"), 3);
}

TEST_F(Copies, ArePutBackInPlaceOfWhatCantBeReadAndNotUnderAnOpenPractice)
{
    QFile(practice.Folder() + "/ZEP_ONE.MDB").resize(5000);
    const CommandRun whole = Restore({"--yes"});
    EXPECT_EQ(whole.code, 0) << whole.errors.toStdString();
    EXPECT_TRUE(whole.output.contains("Le fichier actuel ne peut pas être lu : ")) << whole.output.toStdString();
    {
        const practice::PracticeData open(practice.Folder());
        const CommandRun run = Restore({"--yes"});
        EXPECT_EQ(run.code, 2);
        EXPECT_TRUE(run.errors.contains("Le cabinet est ouvert dans un programme")) << run.errors.toStdString();
    }
    QFile(archives + "/ZEP_ONE.MDB").resize(8192);
    EXPECT_EQ(Restore({"--yes"}).code, 2) << "no whole copy";
    EXPECT_EQ(Restore({"ZEP_ONE.MDB", "--yes"}).code, 2) << "a damaged one";
    EXPECT_EQ(practice.Count("Actes"), 3);
}
