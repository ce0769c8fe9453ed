#include "practice/import/Import.h"
#include "data/Practice.h"
#include "platform/basic/RuntimeError.h"
#include "platform/store/DatabaseReader.h"
#include "practice/fields/FieldValues.h"
#include "practice/import/CsvFile.h"
#include "support/OtherProgram.h"
#include "support/Unix.h"
#include "tools/PracticeCommand.h"

#include <optional>

TEST(Import, TakesEitherDelimiterAnyOrderAndEmptyAsNull)
{
    const NewPractice practice;
    const CommandRun patients = practice.Import(
        "patients", "\xEF\xBB\xBFNUM;Nom;prenom;naiss;sexe;tel;ville\r\n"
                    "1;O'Brien;Élodie;05/03/1974;1;;M'Sila\r\n"
                    "\r\n"
                    "2;\"Haddad; dit \"\"Le Grand\"\"\";Théo;1980-12-31;0;0661 00;\"deux\nlignes\"\r\n");
    EXPECT_EQ(patients.code, 0) << patients.errors.toStdString();
    EXPECT_TRUE(patients.output.startsWith("Patients : 2 lignes ajoutées.")) << patients.output.toStdString();
    const CommandRun acts = practice.Import("Actes", "Date,num,HH,montant,flag_R,type,num_patient\n"
                                                     "17/06/2008,10,3,\"1250,50\",1,k12,1\n"
                                                     "2009-07-18,11,9,100.25,0,,2");
    EXPECT_EQ(acts.code, 0) << acts.errors.toStdString();

    tests::OtherProgram stored(practice.Folder() + "/ZEP_ONE.MDB");
    EXPECT_EQ(stored.Answer("select Naiss || ' ' || quote(tel) || ' ' || Flag_H from Patients where num = 1"),
              "1974-03-05 NULL 0");
    EXPECT_EQ(stored.Answer("select nom || ', ' || ville from Patients where num = 2"),
              "Haddad; dit \"Le Grand\", deux\nlignes");
    EXPECT_EQ(stored.Answer("select Date || ' ' || MM || AA || HH || ' ' || montant || Type from Actes where num = 10"),
              "2008-06-17 620083 1250.5K12");
    EXPECT_EQ(stored.Answer("select Date || ' ' || MM || AA || HH from Actes where num = 11"), "2009-07-18 720099");
}

TEST(Import, NamesEveryBadLineAndAddsNothing)
{
    const NewPractice practice;
    ASSERT_EQ(practice.Import("Actes", "num,Date,HH,montant,flag_R\n5,01/01/2020,0,0,0\n").code, 0);
    const CommandRun run = practice.Import("Actes", "num,Date,HH,montant,flag_R,Type,MM,Heure,AA\n"
                                                    "1,17/06/2008,0,0,0,C,6,08:05,2008\n"
                                                    "1,17/06/2008,0,0,0,C,,,\n"
                                                    "5,17/06/2008,0,0,0,C,,,\n"
                                                    ",17/06/2008,0,0,0,C,,,\n"
                                                    "6,31/06/2008,10,abc,6,K31,13,25:00,\n"
                                                    "7,17/06/2008,0,0,0,C,7,,2007\n"
                                                    "8,17/06/2008\n"
                                                    "9,17/06/2008,0,,0,\"deux\nlignes\",,,\n"
                                                    "2147483648,17/06/2008,0,0,0,,,,\n");
    EXPECT_EQ(run.code, 1);
    for (const char* part :
         {"Ligne 3 : num : la clé 1 est déjà celle de la ligne 2", "Ligne 4 : num : la clé 5 existe déjà dans Actes",
          "Ligne 5 : num : une valeur est obligatoire", "Ligne 6 : Date : « 31/06/2008 »",
          "HH : 10 est hors de l'intervalle 0 à 9", "flag_R : 6", "« K31 »", "MM : 13", "« 25:00 »",
          "Ligne 7 : MM : 7 ne correspond pas à la date ; AA : 2007 ne correspond pas à la date",
          "Ligne 8 : 2 valeurs au lieu de 9", "Ligne 9 : montant", "Ligne 11 : num", "8 problèmes"})
        EXPECT_TRUE(run.errors.contains(part)) << part << "\n" << run.errors.toStdString();
    EXPECT_FALSE(run.errors.contains("Ligne 2 "));
    EXPECT_EQ(practice.Count("Actes"), 1);
}

TEST(Import, RefusesWhatItCannotRead)
{
    const NewPractice practice;
    const QByteArray header = "num,nom\r\n";
    const std::tuple<const char*, QByteArray, const char*> files[] = {
        {"textes", "ch1\n1\n", "n'est pas une table à importer. Tables : Patients, Actes"},
        {"Patients", "", "Le fichier est vide"},
        {"Plani", "num,age\n1,5\n",
         "Ligne 1 : le champ « age » n'existe pas dans Plani. Champs : num, date, Num_Presta, HH, num_patient"},
        {"Patients", "num,nom,NUM\n1,a,1\n", "le champ num est nommé deux fois"},
        {"Patients", "nom\na\n", "Ligne 1 : le champ num manque"},
        {"Patients", "num,nom\n1,a\n2,\"b\n", "Ligne 3 : guillemets jamais refermés"},
        {"Patients", "num,nom\n1,a\n2,b\"c\n", "Ligne 3 : guillemets mal placés"},
        {"Patients", "num,nom\n1,É\n2,\xE9lodie\n", "Ligne 3 : le texte n'est pas en UTF-8"},
        {"Patients", "\xEF\xBB\xBFnum,nom\n1,\xE9lodie\n", "Ligne 2 : le texte n'est pas en UTF-8"},
        {"Patients", "num,nom\n1,\xE9\n2,\x81\n", "Ligne 3 : le texte n'est ni en UTF-8 ni en Windows-1252"},
        {"Patients", QByteArray("\xFF\xFEn\0u\0m\0", 8), "Ligne 1 : le fichier est en UTF-16"},
        {"Patients", "sep=x\nnumxnom\n", "Ligne 1 : le séparateur doit être"},
        {"Patients", "num,nom\n1,\"" + QByteArray(2'000'000, 'a'), "Ligne 2 : plus d'un mégaoctet"},
        {"Patients", "num,nom\n1,\"" + QByteArray(2'000'000, '\n'), "Ligne 2 : plus d'un mégaoctet"},
        {"Patients", header + "x," + QByteArray((1 << 16) - header.size() - 3, 'y') + "\r\nz,f\r\n",
         "Ligne 3 : num : « z »"}, // a line end across blocks
        {"Tarif", "C,K0\n500,600\n500,600\n", "Ligne 3 : Tarif n'a qu'une ligne"},
    };
    for (const auto& [table, text, reason] : files) {
        const CommandRun run = practice.Import(table, text);
        EXPECT_EQ(run.code, 1) << reason;
        EXPECT_TRUE(run.errors.contains(reason)) << reason << "\n" << run.errors.toStdString();
    }
    EXPECT_EQ(practice.Count("Patients"), 0);
    EXPECT_EQ(CommandRun({"import", practice.Folder(), "Patients", "absent.csv"}).code, 1);
}

TEST(Import, RefusesAFileThatChangesMeanwhile)
{
    const NewPractice practice;
    for (const char* const text : {"num\n1\n", "num\n\"1\n"}) {
        const QString path = practice.Write("lignes.csv", text);
        try {
            practice::ReadCsv(path, [&](const practice::CsvRow&) { practice.Write("lignes.csv", "num\n1\n2\n"); });
            FAIL() << text;
        } catch (const basic::RuntimeError& error) {
            EXPECT_EQ(error.Code(), basic::Error::PermissionDenied) << text << error.what();
        }
    }
}

TEST(Import, ReadsCellsAsSpreadsheetsWriteThem)
{
    constexpr practice::FieldRule day{"Date", practice::FieldKind::Date};
    constexpr practice::FieldRule time{"Heure", practice::FieldKind::Time};
    constexpr practice::FieldRule amount{"montant", practice::FieldKind::Amount};
    constexpr practice::FieldRule slot{"HH", practice::FieldKind::Code, practice::Missing::Fault, 0, 9};
    const std::tuple<practice::FieldRule, QStringList, QString> taken[] = {
        {amount,
         {u"1\u202F250,50"_qs, u"1\u00A0234\u00A0567,5"_qs, "-1 250.75", ",5", "12,3456", "-0", "999999999999999"},
         "1250.5|1234567.5|-1250.75|0.5|12.3456|0|999999999999999"},
        {slot, {"+05"}, "5"},
        {time, {"8:05", "08:05:59", "1899-12-30 18:30:00"}, "08:05|08:05|18:30"},
        {day, {"17/06/2008 00:00:00", "2008-06-17T00:00", "7/6/2008"}, "17/06/2008|17/06/2008|07/06/2008"},
    };
    for (const auto& [rule, texts, values] : taken) {
        QStringList read;
        for (const QString& text : texts)
            read << ReadField(rule, text).value.Text();
        EXPECT_EQ(read.join('|'), values);
    }
    const std::tuple<practice::FieldRule, const char*, QStringList> refused[] = {
        {amount, "trop grand", {"1e15"}},
        {amount, "1000 ou 1,00", {"1,000"}},
        {amount, "n'est pas un montant", {"12 50", "nan"}},
        {amount, "caractère nul", {QString("12") + QChar::Null}},
        {slot, "caractère nul", {QString("5") + QChar::Null}},
        {slot, "n'est pas un nombre entier", {"\u0665"}},
        {slot, "hors de l'intervalle", {"10", "-1", "99999999999999999999"}},
        {slot, "obligatoire", {""}},
        {time, "n'est pas une heure", {"24:00"}},
        {day, "n'est pas une date", {"29/02/2007", "17/06/2008 08:00:00", "17/06/0099"}},
        {day, "mdb-export : -D '%Y-%m-%d'", {"06/17/08 00:00:00"}},
        {day, "que deux chiffres", {"17-06-08"}},
    };
    for (const auto& [rule, reason, texts] : refused) {
        for (const QString& text : texts) {
            const practice::ReadValue read = ReadField(rule, text);
            EXPECT_TRUE(read.value.IsNull() && read.problem.contains(reason))
                << text.toStdString() << read.problem.toStdString();
        }
    }
}

TEST(Import, TakesFilesAsSpreadsheetsWriteThem)
{
    const std::pair<const char*, QByteArray> files[] = {
        {"tabs, and a cell that begins with a blank one", "num\tnom\ttel\n1\tÉvrard\t\n2\tb\t5\n"},
        {"a delimiter named before the fields", "sep=;\r\nnum;nom;tel\r\n1;Évrard;\r\n2;b;5\r\n"},
        {"the same with a mark and another one", "\xEF\xBB\xBFSEP=|\nnum|nom|tel\n1|Évrard|\n2|b|5\n"},
        {"lone CR line ends", "num;nom;tel\r1;Évrard;\r2;b;5\r"},
        {"rows without values, and blanks around names", " num , nom, tel \n1,  Évrard ,\n,,\n2,b,5\n\n,,\n , ,\n"},
        {"Windows-1252", "num,nom,tel\n1,\xC9vrard,\n2,b,5\n"},
    };
    for (const auto& [what, text] : files) {
        const NewPractice practice;
        const CommandRun run = practice.Import("Patients", text);
        EXPECT_EQ(run.code, 0) << what << run.errors.toStdString();
        EXPECT_EQ(practice.Count("Patients"), 2) << what;
        EXPECT_EQ(practice.Ask("select nom from Patients where num = 1").Text(), "Évrard") << what;
        EXPECT_EQ(run.output.contains("lignes.csv n'est pas en UTF-8 : lu en Windows-1252"), text.contains("\n1,\xC9"))
            << what;
    }
}

TEST(Import, CountsLinesWhateverEndsThem)
{
    const NewPractice practice;
    for (const char* const end : {"\n", "\r\n", "\r"}) {
        QByteArray text = "num,nom\n1,\"a\nb\"\n\n2,c\nx,d\n" + QByteArray(100'000, 'y') + ",e\nz,f";
        const CommandRun run = practice.Import("Patients", text.replace("\n", end));
        for (const char* const part :
             {"Ligne 6 : num : « x »", "Ligne 7 : num", "Ligne 8 : num : « z »", "3 problèmes"})
            EXPECT_TRUE(run.errors.contains(part)) << part;
    }
}

TEST(Import, PassesOverWhatIsThereAndChangesItWhenAsked)
{
    const NewPractice practice;
    const QByteArray rows = "num,Date,HH,montant,flag_R,Heure\n1,17/06/2008,0,100,2,08:00\n2,17/06/2008,1,200,0,\n";
    const QByteArray changed = "num,Date,HH,montant,flag_R\n4,18/06/2008,0,0,0\n2,17/07/2009,1,250.5,0\n";
    const char* const refusal = "Ligne 3 : num : la clé 2 existe déjà dans Actes avec d'autres valeurs "
                                "(Date, montant, MM, AA)";
    const std::tuple<QByteArray, QStringList, const char*, double> steps[] = {
        {rows, {}, "Actes : 2 lignes ajoutées.", 200},
        {rows + "3,18/06/2008,1,0,0,\n", {}, "Actes : 1 ligne ajoutée, 2 lignes déjà là.", 200},
        {changed, {}, refusal, 200},
        {changed, {"--update", "--dry-run"}, "Actes : 1 ligne à ajouter, 1 ligne à modifier.", 200},
        {changed, {"--update"}, "Actes : 1 ligne ajoutée, 1 ligne modifiée.", 250.5},
    };
    for (const auto& [text, options, answer, amount] : steps) {
        const CommandRun run = practice.Import("Actes", text, options);
        EXPECT_EQ(run.code, answer == refusal ? 1 : 0);
        EXPECT_TRUE((run.errors + run.output).startsWith(answer)) << answer << (run.errors + run.output).toStdString();
        EXPECT_EQ(practice.Ask("select montant from Actes where num = 2").Double(), amount) << answer;
    }
    tests::OtherProgram stored(practice.Folder() + "/ZEP_ONE.MDB");
    EXPECT_EQ(stored.Answer("select group_concat(MM || coalesce(Heure, '')) from Actes not indexed"), "608:00,7,6,6");
    EXPECT_EQ(practice.Count("Actes where date = #07/17/2009#"), 1) << "the indexes follow";
    EXPECT_EQ(store::CheckDatabase(practice.Folder() + "/ZEP_ONE.MDB"), QStringList());
}

TEST(Import, GivesNoKeyOfADeletedServiceAgain)
{
    const NewPractice practice;
    ASSERT_EQ(practice.Import("Presta", "num;denom;prix;Ordre\n1;ECG;1 200,50;0\n").code, 0);
    ASSERT_EQ(practice.Import("Plani", "num,date,Num_Presta,HH\n1,17/06/2008,9,0\n").code, 0);
    ASSERT_EQ(practice.Import("Recettes", "num,Date,objet,montant\n7,17/06/2008,Coton,12.5\n").code, 0);
    tests::OtherProgram other(practice.Folder() + "/ZEP_ONE.MDB");
    EXPECT_EQ(other.Answer("select MM from Recettes where num = 7"), "6.0");
    for (const char* const next : {"insert into Presta (denom) values ('Neuve') returning num = 10",
                                   "insert into Recettes (montant) values (1) returning num = 8"})
        EXPECT_EQ(other.Answer(next), "1") << next;
}

namespace {

/// A practice that another program, which waits for nothing, has open as well.
class SharedImport : public testing::Test {
protected:
    SharedImport()
    {
        EXPECT_EQ(practice.Import("Actes", Acts + "1,17/06/2008,0,100,2\n").code, 0);
        other.emplace(practice.Folder() + "/ZEP_ONE.MDB");
        other->Run("pragma busy_timeout = 0");
        data::PracticeRules().patience = 50;
    }
    ~SharedImport() override { data::PracticeRules().patience = patience; }

    const QByteArray Acts = "num,Date,HH,montant,flag_R\n";
    const int patience = data::PracticeRules().patience;
    const NewPractice practice;
    std::optional<tests::OtherProgram> other;
};

} // namespace

TEST_F(SharedImport, ReadsAndChecksWhileAnotherWrites)
{
    ASSERT_EQ(other->Run("begin immediate; update Actes set montant = 1"), SQLITE_OK);
    EXPECT_EQ(practice.Import("Actes", Acts + "2,17/06/2008,0,0,0\n", {"--dry-run"}).code, 0);
    EXPECT_TRUE(practice.Import("Actes", Acts + "2,17/06/2008,0,0,0\n3,,0,0,0\n").errors.contains("Ligne 3"));
    const CommandRun refused = practice.Import("Actes", Acts + "2,17/06/2008,0,0,0\n");
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.errors.startsWith("practice : ")) << refused.errors.toStdString();
    ASSERT_EQ(other->Run("rollback"), SQLITE_OK);
    EXPECT_EQ(other->Answer("select count(*) from Actes"), "1");
}

TEST_F(SharedImport, ShowsItsProgressOnATerminalAlone)
{
    NEEDS_UNIX("pseudo terminals");
    ASSERT_EQ(other->Run("begin immediate"), SQLITE_OK); // the command waits
    const QString file = practice.Write("lignes.csv", Acts + "2,17/06/2008,0,0,0\n");
    const QStringList arguments{"import", practice.Folder(), "Actes", file};
    const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(::grantpt(terminal) == 0 && ::unlockpt(terminal) == 0);
    QProcess command;
    QProcess piped;
    command.setStandardErrorFile(::ptsname(terminal));
    command.start(PRACTICE_COMMAND, arguments);
    piped.start(PRACTICE_COMMAND, arguments);
    QByteArray shown;
    const auto read = [&] {
        char bytes[4096];
        shown += QByteArray(bytes, qMax(::read(terminal, bytes, sizeof bytes), ssize_t{0}));
    };
    while (shown.count("\rÉcriture : 0 lignes sur 1") < 4)
        read();
    piped.kill();
    EXPECT_TRUE(piped.waitForFinished());
    other->Run("commit");
    EXPECT_TRUE(command.waitForFinished());
    read();
    EXPECT_TRUE(shown.startsWith("\rÉ") && shown.endsWith(" \r")) << shown.toStdString();
    EXPECT_FALSE(piped.readAllStandardError().contains('\r'));
    ::close(terminal);
}

TEST_F(SharedImport, GivesUpOnARowThatWasWrittenMeanwhileUnlessItPassesOverIt)
{
    const std::tuple<bool, const char*, const char*, const char*> cases[] = {
        {false, "update Actes set montant = 55 where num = 1", "", "1 55.0,2 0.0"},
        {true, "update Actes set montant = 120 where num = 1",
         "Ligne 2 : num : la ligne 1 de Actes vient d'être écrite", "1 120.0"},
        {true, "delete from Actes where num = 1", "Ligne 2 : num : la ligne 1", "(null)"},
        {true, "insert into Actes (num) values (2)", "Ligne 3 : num : la ligne 2 de Actes vient d'être écrite",
         "1 100.0,2 0.0"},
    };
    for (const auto& [isUpdate, meanwhile, problem, acts] : cases) {
        other->Run("delete from Actes; insert into Actes (num, Date, MM, AA, HH, montant, flag_R) "
                   "values (1, '2008-06-17', 6, 2008, 0, 100, 2)");
        practice::Import import(practice.Folder(), isUpdate);
        const QByteArray first = isUpdate ? "1,17/06/2008,0,150,3\n" : "1,17/06/2008,0,100,2\n";
        import.Read("Actes", practice.Write("lignes.csv", Acts + first + "2,17/06/2008,0,0,0\n"));
        ASSERT_EQ(import.Sum().changed, isUpdate ? 1 : 0);
        ASSERT_EQ(other->Run(meanwhile), SQLITE_OK);
        import.Write();
        const QString problems = import.ProblemTexts().join('\n');
        EXPECT_TRUE(problems.contains(problem)) << problems.toStdString();
        EXPECT_EQ(problems.isEmpty(), !isUpdate);
        EXPECT_EQ(other->Answer("select group_concat(num || ' ' || montant) from Actes not indexed"), acts);
    }
}

TEST_F(SharedImport, GivesUpEveryFileForOneRow)
{
    practice.Write("csv/Patients.csv", "num,nom\n1,a\n");
    practice.Write("csv/Actes.csv", Acts + "2,17/06/2008,0,0,0\n");
    practice.Write("csv/Permn.csv", "Charge1\n1500\n");
    for (const char* const meanwhile : {"insert into Actes (num) values (2)", "update Permn set Charge1 = 70"}) {
        practice::Import import(practice.Folder(), true);
        import.ReadFolder(practice.File("csv"));
        ASSERT_EQ(other->Run(meanwhile), SQLITE_OK);
        import.Write();
        EXPECT_EQ(import.ProblemCount(), 1) << import.ProblemTexts().join('\n').toStdString();
        EXPECT_EQ(other->Answer("select count(*) from Patients"), "0") << meanwhile;
        EXPECT_NE(other->Answer("select Charge1 from Permn"), "1500.0") << meanwhile;
        other->Run("delete from Actes where num = 2");
    }
}
