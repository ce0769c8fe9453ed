#include "practice/import/Import.h"
#include "data/Practice.h"
#include "platform/store/DatabaseReader.h"
#include "practice/fields/FieldValues.h"
#include "support/OtherProgram.h"
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
    rows = data.Database().OpenRecordset("select * from Actes where num = 11");
    EXPECT_EQ(rows["HH"].Integer(), 9) << "the last slot";
    EXPECT_EQ(rows["MM"].Integer(), 7);
    EXPECT_EQ(rows["AA"].Integer(), 2009) << "of its own day";
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
    const struct {
        const char* table;
        QByteArray text;
        const char* reason;
    } rows[] = {
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
        {"Tarif", "C,K0\n500,600\n500,600\n", "Ligne 3 : Tarif n'a qu'une ligne"},
    };
    for (const auto& row : rows) {
        const CommandRun run = practice.Import(row.table, row.text);
        EXPECT_EQ(run.code, 1) << row.reason;
        EXPECT_TRUE(run.errors.contains(row.reason)) << row.reason << "\n" << run.errors.toStdString();
    }
    EXPECT_EQ(practice.Count("Patients"), 0);
    EXPECT_EQ(CommandRun({"import", practice.Folder(), "Patients", "absent.csv"}).code, 1);
    EXPECT_EQ(CommandRun({"import", practice.Folder(), "Patients"}).code, 2) << "a table without a file";
}

TEST(Import, ReadsCellsAsSpreadsheetsWriteThem)
{
    constexpr practice::FieldRule day{"Date", practice::FieldKind::Date};
    constexpr practice::FieldRule time{"Heure", practice::FieldKind::Time};
    constexpr practice::FieldRule amount{"montant", practice::FieldKind::Amount};
    constexpr practice::FieldRule slot{"HH", practice::FieldKind::Code, practice::Missing::Fault, 0, 9};
    const struct {
        practice::FieldRule rule;
        QStringList texts;
        QString values; ///< as text, separated by "|"
    } taken[] = {
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
    const struct {
        practice::FieldRule rule;
        const char* reason;
        QStringList texts;
    } refused[] = {
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
    const struct {
        const char* what;
        QByteArray text;
    } files[] = {
        {"tabs, and a cell that begins with a blank one", "num\tnom\ttel\n1\tÉvrard\t\n2\tb\t5\n"},
        {"a delimiter named before the fields", "sep=;\r\nnum;nom;tel\r\n1;Évrard;\r\n2;b;5\r\n"},
        {"the same with a mark and another one", "\xEF\xBB\xBFSEP=|\nnum|nom|tel\n1|Évrard|\n2|b|5\n"},
        {"lone CR line ends", "num;nom;tel\r1;Évrard;\r2;b;5\r"},
        {"rows without values, and blanks around names", " num , nom, tel \n1,  Évrard ,\n,,\n2,b,5\n\n,,\n , ,\n"},
        {"Windows-1252", "num,nom,tel\n1,\xC9vrard,\n2,b,5\n"},
    };
    for (const auto& file : files) {
        const NewPractice practice;
        const CommandRun run = practice.Import("Patients", file.text);
        EXPECT_EQ(run.code, 0) << file.what << run.errors.toStdString();
        EXPECT_EQ(practice.Count("Patients"), 2) << file.what;
        EXPECT_EQ(practice.Ask("select nom from Patients where num = 1").Text(), "Évrard") << file.what;
        EXPECT_EQ(run.output.contains("lignes.csv n'est pas en UTF-8 : lu en Windows-1252"),
                  file.text.contains("\n1,\xC9"))
            << file.what;
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

    const QByteArray header = "num,nom\r\n";
    const QByteArray endAcrossBlocks = header + "x," + QByteArray((1 << 16) - header.size() - 3, 'y') + "\r\nz,f\r\n";
    EXPECT_TRUE(practice.Import("Patients", endAcrossBlocks).errors.contains("Ligne 3 : num : « z »"));
}

TEST(Import, PassesOverWhatIsThereAndChangesItWhenAsked)
{
    const NewPractice practice;
    const QByteArray rows = "num,Date,HH,montant,flag_R,Heure\n1,17/06/2008,0,100,2,08:00\n2,17/06/2008,1,200,0,\n";
    ASSERT_EQ(practice.Import("Actes", rows).code, 0);
    CommandRun run = practice.Import("Actes", rows + "3,18/06/2008,1,0,0,\n");
    EXPECT_TRUE(run.output.startsWith("Actes : 1 ligne ajoutée, 2 lignes déjà là.")) << run.output.toStdString();
    run = practice.Import("Actes", rows);
    EXPECT_EQ(run.code, 0);
    EXPECT_TRUE(run.output.contains("Rien à importer")) << run.output.toStdString();

    const QByteArray changed = "num,Date,HH,montant,flag_R\n4,18/06/2008,0,0,0\n2,17/07/2009,1,250.5,0\n";
    run = practice.Import("Actes", changed);
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.errors.contains("Ligne 3 : num : la clé 2 existe déjà dans Actes avec d'autres valeurs (Date, "
                                    "montant, MM, AA)"))
        << run.errors.toStdString();
    EXPECT_EQ(practice.Count("Actes"), 3);

    run = practice.Import("Actes", changed, {"--update", "--dry-run"});
    EXPECT_TRUE(run.output.startsWith("Actes : 1 ligne à ajouter, 1 ligne à modifier.")) << run.output.toStdString();
    EXPECT_EQ(practice.Ask("select montant from Actes where num = 2").Double(), 200);
    run = practice.Import("Actes", changed, {"--update"});
    EXPECT_TRUE(run.output.startsWith("Actes : 1 ligne ajoutée, 1 ligne modifiée.")) << run.output.toStdString();
    EXPECT_EQ(practice.Ask("select montant from Actes where num = 2").Double(), 250.5);
    EXPECT_EQ(practice.Ask("select MM from Actes where num = 2").Long(), 7);
    EXPECT_EQ(practice.Ask("select Heure from Actes where num = 1").Text(), "08:00") << "not named, not touched";
    EXPECT_EQ(practice.Count("Actes where date = #07/17/2009#"), 1) << "the indexes follow";
    EXPECT_EQ(store::CheckDatabase(practice.Folder() + "/ZEP_ONE.MDB"), QStringList());
}

TEST(Import, GivesNoKeyOfADeletedServiceAgain)
{
    const NewPractice practice;
    ASSERT_EQ(practice.Import("Presta", "num;denom;prix;Ordre\n1;ECG;1 200,50;0\n").code, 0);
    ASSERT_EQ(practice.Import("Plani", "num,date,Num_Presta,HH\n1,17/06/2008,9,0\n").code, 0);
    ASSERT_EQ(practice.Import("Recettes", "num,Date,objet,montant\n7,17/06/2008,Coton,12.5\n").code, 0);
    EXPECT_EQ(practice.Ask("select MM from Recettes where num = 7").Double(), 6);
    const practice::PracticeData data(practice.Folder());
    for (const auto& [table, key] : {std::pair("Presta", 10), std::pair("Recettes", 8)}) {
        dao::Recordset rows = data.Database().OpenRecordset(table);
        rows.AddNew();
        rows.Update();
        EXPECT_EQ(rows.LastKey(), key) << table;
    }
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

TEST_F(SharedImport, LetsAnotherSettleUntilItWrites)
{
    practice::Import import(practice.Folder(), false);
    import.Read("Actes", practice.Write("lignes.csv", Acts + "1,17/06/2008,0,100,2\n2,17/06/2008,0,0,0\n"));
    EXPECT_EQ(other->Run("update Actes set montant = 55 where num = 1"), SQLITE_OK);
    import.Write();
    EXPECT_EQ(import.ProblemTexts(), QStringList()) << "the act that was passed over isn't the import's any more";
    EXPECT_EQ(other->Answer("select group_concat(montant) from (select montant from Actes order by num)"), "55.0,0.0");
}

TEST_F(SharedImport, GivesUpOnARowThatWasWrittenMeanwhile)
{
    const QByteArray rows = Acts + "1,17/06/2008,0,150,3\n2,17/06/2008,0,0,0\n";
    const struct {
        const char* meanwhile;
        const char* problem;
    } cases[] = {
        {"update Actes set montant = 120 where num = 1", "Ligne 2 : num : la ligne 1 de Actes vient d'être écrite"},
        {"delete from Actes where num = 1", "Ligne 2 : num : la ligne 1"},
        {"insert into Actes (num) values (2)", "Ligne 3 : num : la ligne 2 de Actes vient d'être écrite"},
    };
    for (const auto& each : cases) {
        other->Run("delete from Actes; insert into Actes (num, Date, MM, AA, HH, montant, flag_R) "
                   "values (1, '2008-06-17', 6, 2008, 0, 100, 2)");
        practice::Import import(practice.Folder(), true);
        import.Read("Actes", practice.Write("lignes.csv", rows));
        ASSERT_EQ(import.Sum().changed, 1);
        ASSERT_EQ(other->Run(each.meanwhile), SQLITE_OK);
        const QString before = other->Answer("select group_concat(num || ' ' || coalesce(montant, '-')) from Actes");
        import.Write();
        EXPECT_TRUE(import.ProblemTexts().join('\n').contains(each.problem))
            << import.ProblemTexts().join('\n').toStdString();
        EXPECT_EQ(other->Answer("select group_concat(num || ' ' || coalesce(montant, '-')) from Actes"), before);
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
