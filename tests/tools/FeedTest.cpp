#include "support/FolderInMemory.h"
#include "support/OldDatabases.h"
#include "support/OtherProgram.h"
#include "support/Statements.h"
#include "tools/PracticeCommand.h"

#include <QRegularExpression>

namespace {

/// Plays a case, a script of steps separated by "|":
///
///   acts 1a NP 0, 2b P 500     Actes.csv: key, a letter for the five naming fields, settlement
///   lines 50a NP               Actes_suppr.csv: key, the letter of the acts that it names, flag_R
///   csv TABLE ROW / ROW        any file; "csv TABLE" takes it away
///   import TABLE               brings the file in with import --update
///   feed CODE OPTIONS          the exit code that is expected
///   here 1 P 500               settles as the program does
///   older                      forgets what was kept, as a practice of an older version
///   run SQL                    of another program
///   meanwhile SQL              by another program, each time before the next feed takes the lock
///   says TEXT / silent TEXT    the last run
///   is 1 P 500, 2 NP 0         the acts here, all of them
///   has ANSWER = SELECT
class FeedCase {
public:
    void Play(const char* script)
    {
        SCOPED_TRACE(script);
        practice.Write("source/Patients.csv", "num;nom;Prenom\n1;Benali;Zoé\n");
        for (const QString& step : QString::fromUtf8(script).split(" | "))
            Step(step.trimmed().section(' ', 0, 0), step.trimmed().section(' ', 1));
    }

private:
    void Step(const QString& verb, const QString& rest)
    {
        if (verb == "acts" || verb == "lines")
            Write(verb == "acts", rest.split(", ", Qt::SkipEmptyParts));
        else if (verb == "csv" && rest.contains(' '))
            practice.Write("source/" + rest.section(' ', 0, 0) + ".csv",
                           rest.section(' ', 1).split(" / ").join('\n').toUtf8());
        else if (verb == "csv")
            QFile::remove(practice.File("source/" + rest + ".csv"));
        else if (verb == "import")
            EXPECT_EQ(CommandRun({"import", practice.Folder(), rest, Source() + "/" + rest + ".csv", "--update"}).code,
                      0);
        else if (verb == "feed")
            Feed(rest);
        else if (verb == "here")
            Settle(rest.split(' '));
        else if (verb == "older")
            Run("delete from \"ZEP settlements\"");
        else if (verb == "run")
            Run(rest);
        else if (verb == "meanwhile")
            meanwhile = rest;
        else if (verb == "says" || verb == "silent")
            EXPECT_EQ(said.contains(rest), verb == "says") << rest.toStdString() << "\n" << said.toStdString();
        else if (verb == "is")
            EXPECT_EQ(Answer("select group_concat(num || ' ' || substr('NPR-P R+GrAB', 1 + 2 * flag_R, 2) || ' ' || "
                             "cast(montant as int), ', ') from (select * from Actes order by num)"),
                      QString(rest).replace("P ", "P  ").replace("NP  ", "NP "));
        else if (verb == "has")
            EXPECT_EQ(Answer(rest.section(" = ", 1)), rest.section(" = ", 0, 0)) << rest.toStdString();
        else
            ADD_FAILURE() << verb.toStdString();
    }

    void Write(bool areActs, const QStringList& rows) const
    {
        QString text = areActs ? "num;Date;HH;Heure;num_patient;num_presta;Type;flag_R;montant\n"
                               : "num;Date;Heure;num_patient;num_presta;Type;flag_R\n";
        for (const QString& row : rows) {
            static const QRegularExpression parts("^(\\d+)(\\w) (\\S+) ?(\\S*)$");
            const QRegularExpressionMatch part = parts.match(row);
            EXPECT_TRUE(part.hasMatch()) << row.toStdString();
            const QString time = "08:0" + QString::number(part.captured(2)[0].unicode() - 'a');
            text += part.captured(1) + ";17/06/2008;" + (areActs ? "0;" : "") + time + ";1;1;C;" +
                    QString::number(Code(part.captured(3))) + (areActs ? ";" + part.captured(4) : "") + "\n";
        }
        practice.Write(areActs ? "source/Actes.csv" : "source/Actes_suppr.csv", text.toUtf8());
    }

    static qsizetype Code(const QString& name) { return QStringList{"NP", "R-", "P", "R+", "Gr", "AB"}.indexOf(name); }

    void Feed(const QString& rest)
    {
        const QStringList words = rest.split(' ');
        QStringList arguments{"feed", practice.Folder(), Source()};
        for (const QString& option : words.mid(1))
            option.startsWith("--") ? arguments.append(option) : void(arguments[2] += "/" + option);
        const tests::BeforeStatements watch([this](const QString& statement) {
            if (statement == "begin immediate" && !meanwhile.isEmpty())
                Run(meanwhile);
        });
        const CommandRun run(arguments);
        meanwhile.clear();
        said = run.output + run.errors;
        EXPECT_EQ(run.code, words[0].toInt()) << said.toStdString();
    }

    void Settle(const QStringList& words)
    {
        Run(QString("update Actes set flag_R = %1, montant = %2 where num = %3")
                .arg(Code(words[1]))
                .arg(words[2], words[0]));
    }

    QString Source() const { return practice.File("source"); }
    QString Database() const { return practice.Folder() + "/ZEP_ONE.MDB"; }
    void Run(const QString& sql) const
    {
        EXPECT_EQ(tests::OtherProgram(Database()).Run(qPrintable(sql)), SQLITE_OK) << sql.toStdString();
    }
    QString Answer(const QString& select) const
    {
        return tests::OtherProgram(Database()).Answer(select.toUtf8().constData());
    }

    const tests::FolderInMemory memory;
    const NewPractice practice;
    QString meanwhile;
    QString said;
};

} // namespace

TEST(Feed, TakesRowsAndMergesSettlements)
{
    const char* const cases[] = {
        // rows
        "csv Patients num;nom;tel;Flag_H / 1;A;5;1 | feed 0 | has A51 = select nom || tel || Flag_H from Patients | "
        "run update Patients set Flag_H = 0, tel = ' 5 ', ville = 'X' | feed 0 | says 0 modifiée, 1 inchangée | "
        "csv Patients num;nom;Flag_H / 1;B;1 | feed 0 | says 0 nouvelle, 1 modifiée, 0 inchangée, 0 gardée | "
        "has B 5 0X = select nom || tel || Flag_H || ville from Patients | csv Patients num;tel / 1; | feed 0 | "
        "has (null) = select tel from Patients | has 1 = select nom is 'B' and ville is 'X' from Patients",
        "acts 1a NP 0 | feed 0 | run update Actes set Flag_H = 1 | csv Actes num;Date;Type / 1;18/07/2009;K5 | feed 0 "
        "| "
        "has 2009-07-18 72009K51 0 = select Date || ' ' || MM || AA || Type || Flag_H || ' ' || HH from Actes",
        "acts 1a P 500 | feed 0 | here 1 P 600 | csv Actes num;flag_R;Type / 1;0;K5 | feed 0 | is 1 P 600 | "
        "csv Actes num;montant / 1;7 | feed 0 | is 1 P 600 | has K5 = select Type from Actes | acts 1a P 500 | feed 0 "
        "| "
        "is 1 P 600",
        "csv Actes num;Date;HH;flag_R / 1;17/06/2008;0;2 | feed 0 | is 1 NP 0 | acts 1a P 5 | feed 0 | is 1 P 5",
        "csv Actes num;Date / 7;17/06/2008 | feed 2 | says Actes, num 7 : HH : une valeur est obligatoire | has 0 = "
        "select count(*) from Patients",
        "csv Actes num;Date;HH;flag_R;montant / 7;17/06/2008;10;0;0 / x;17/06/2008;0;0;0 / 8;17/06/2008;0;0;0 / "
        "8;17/06/2008;0;0;0 | feed 2 | says Actes, num 7 : HH : 10 | says Actes, ligne 3 : num : « x » | says Actes, "
        "num 8 : num : une autre ligne | has 0 = select count(*) from Actes",
        "csv Actes num;MM / 7;6 | feed 2 | says le champ Date manque",
        "csv Presta num;denom / 1;Radio | csv Textes x | feed 0 | says Presta, Textes | has 0 = select count(*) from "
        "Presta",
        // settlements
        "acts 1a NP 0, 2b P 5 | feed 0 | acts 1a P 500, 2b P 6 | feed 0 --dry-run | says 2 modifiées | is 1 NP 0, 2 P "
        "5 | "
        "feed 0 | says 0 nouvelle, 2 modifiées, 0 inchangée, 0 gardée | is 1 P 500, 2 P 6 | feed 0 | says Rien de "
        "nouveau",
        "acts 1a P 5 | feed 0 | acts 1a Gr 5 | feed 0 | is 1 Gr 5",
        "acts 1a NP 0 | feed 0 | here 1 P 500 | feed 0 | says 0 inchangée, 1 gardée | is 1 P 500 | feed 0 | is 1 P 500",
        "acts 1a P 5 | feed 0 | here 1 P 6 | feed 0 | is 1 P 6 | here 1 Gr 5 | feed 0 | is 1 Gr 5",
        "acts 1a NP 0 | feed 0 | here 1 P 500 | acts 1a P 500 | feed 0 | says 1 inchangée | acts 1a P 600 | feed 0 | "
        "is 1 P 600",
        "acts 1a NP 0 | feed 0 | here 1 P 500 | acts 1a R+ 700 | feed 1 --dry-run | feed 1 | says acte 1 du "
        "17/06/2008, "
        "Benali Zoé : ici P 500.00, à la source R+ 700.00 | is 1 P 500 | feed 0 | silent acte 1 | says 1 gardée | "
        "acts 1a R+ 710 | feed 1 | acts 1a Gr 710 | feed 1 | feed 0 | here 1 P 510 | feed 1 | here 1 AB 510 | feed 1 | "
        "feed 0 | here 1 Gr 710 | feed 0 | acts 1a P 900 | feed 0 | is 1 P 900",
        "acts 1a NP 0 | feed 0 | here 1 P 5 | acts 1a P 6 | feed 1 | here 1 NP 0 | feed 0 | is 1 P 6 | here 1 P 7 | "
        "acts 1a P 8 | feed 1 | acts 1a P 6 | feed 0 | is 1 P 7 | acts 1a P 8 | feed 1",
        "acts 1a NP 0 | feed 0 | here 1 P 5 | acts 1a P 6 | feed 1 | here 1 NP 0 | acts 1a NP 0 | feed 0 | "
        "here 1 P 5 | acts 1a P 6 | feed 1",
        "acts 1a NP 0, 2b R- 0, 3c R- 1 | feed 0 | older | acts 1a P 5, 2b P 6, 3c P 7 | feed 1 | says acte 3 | "
        "silent acte 2 | is 1 P 5, 2 P 6, 3 R- 1 | feed 0 | acts 1a P 8, 2b P 6, 3c P 7 | feed 0 | is 1 P 8, 2 P 6, 3 "
        "R- 1",
        "acts 1a NP 0 | feed 0 | acts 1a P 500, 2b P 5 | meanwhile update Actes set flag_R = 2, montant = montant + 10 "
        "| "
        "feed 1 | says ici P 50.00 | is 1 P 50, 2 P 5 | feed 0",
        "acts 1a R- 2, 2b NP 0 | feed 0 | here 1 P 9 | here 2 P 9 | older | feed 0 | is 1 P 9, 2 P 9 | acts 1a P 8, 2b "
        "NP 0 | "
        "feed 1 | is 1 P 9, 2 P 9",
        "acts 1a P 2 | import Actes | acts 1a P 3 | feed 0 | is 1 P 3 | acts 1a P 4 | import Actes | older | acts 1a P "
        "4 | "
        "import Actes | acts 1a P 5 | feed 0 | is 1 P 5",
    };
    for (const char* const script : cases)
        FeedCase().Play(script);
}

TEST(Feed, DeletesOnlyWhatTheSourceNames)
{
    const char* const cases[] = {
        "acts 1a P 5, 2b NP 0 | lines | feed 0 | acts 2b NP 0 | lines 50a P | feed 0 --yes --dry-run | feed 0 --yes | "
        "says 1 supprimée | is 2 NP 0 | has 1 = select count(*) from Actes_suppr | feed 0 | says Rien de nouveau",
        "acts 1a P 5, 2b NP 0 | lines 50c NP | feed 0 | acts 2b NP 0 | feed 0 --yes | says acte 1 du 17/06/2008, "
        "Benali Zoé : "
        "aucune ligne | is 1 P 5, 2 NP 0 | feed 0 --yes | silent acte 1 | acts 1a P 6, 2b NP 0 | feed 0 | is 1 P 6, 2 "
        "NP 0 | "
        "acts 2b NP 0 | feed 0 --yes | says acte 1 | lines 50c NP, 51a P | feed 0 --yes | is 2 NP 0",
        "acts 1a NP 0, 2b NP 0, 3c P 5 | feed 0 | here 1 P 5 | here 3 P 6 | acts 2b NP 0 | lines 50a P, 51c P | "
        "feed 0 --yes | says son règlement | is 1 P 5, 2 NP 0, 3 P 6 | feed 0 --yes | silent acte 1",
        "acts 1a NP 0, 2b R- 1, 3c P 5, 4d P 5, 5e NP 0 | feed 0 | older | acts 5e NP 0 | lines 50a P, 51b NP, 52c NP, "
        "53d P | feed 0 --yes | is 2 R- 1, 3 P 5, 5 NP 0",
        "acts 1a P 5, 2a P 5 | feed 0 | older | acts 3b NP 0 | lines 50a P, 51a NP | feed 0 --yes | "
        "is 1 P 5, 2 P 5, 3 NP 0",
        // as many lines as candidates
        "acts 1a P 5, 2a NP 0, 3b NP 0 | feed 0 | acts 3b NP 0 | lines 50a P | feed 0 --yes | says acte 1 | says acte "
        "2 | "
        "says moins de lignes | lines 50a P, 51a P | feed 0 --yes | is 3 NP 0",
        "acts 1a P 5, 3b NP 0 | feed 0 | acts 3b NP 0 | lines 50a P, 51a P | feed 0 --yes | is 3 NP 0 | "
        "acts 3b NP 0, 4a P 5 | feed 0 | acts 3b NP 0 | feed 0 --yes | is 3 NP 0, 4 P 5",
        "acts 1a P 5, 2a P 5, 3b NP 0 | feed 0 | acts 2a P 5, 3b NP 0 | lines 50a P | feed 0 --yes | is 2 P 5, 3 NP 0 "
        "| "
        "acts 3b NP 0 | feed 0 --yes | is 2 P 5, 3 NP 0",
        // a line is used up by a feed of all acts in which its act is gone
        "acts 1a P 5, 2b NP 0 | lines 50a P | feed 0 | acts 2b NP 0 | feed 0 --yes | is 2 NP 0 | acts 1a P 5, 2b NP 0 "
        "| "
        "feed 0 | acts 2b NP 0 | feed 0 --yes | is 1 P 5, 2 NP 0",
        "acts 1a P 5, 2b NP 0 | feed 0 | acts 2b NP 0 | lines 50a P | feed 0 --part | is 1 P 5, 2 NP 0 | "
        "run delete from Actes_suppr | feed 0 --yes | is 2 NP 0 | has 0 = select count(*) from Actes_suppr",
        "acts 1a P 5, 2b NP 0 | feed 0 | lines 50a P | feed 0 Actes_suppr.csv | acts 2b NP 0 | feed 0 Actes.csv --yes "
        "| "
        "is 2 NP 0",
        // lines that were here are not new, and those taken away don't come back
        "acts 1a P 5, 2b NP 0 | lines 50a P, 60c P | import Actes_suppr | feed 0 | acts 2b NP 0 | "
        "run delete from Actes_suppr | lines 50a P, 59a P, 60c P | feed 0 --yes | says Actes_suppr : 0 nouvelle, 0 "
        "modifiée, "
        "0 inchangée, 3 gardées | is 1 P 5, 2 NP 0 | has 0 = select count(*) from Actes_suppr",
        // nothing else goes
        "acts 1a P 5 | lines 50b P | feed 0 | csv Patients num;nom / 2;B | lines | feed 0 | has 2 1 = select count(*) "
        "|| ' ' "
        "|| (select count(*) from Actes_suppr) from Patients",
        "csv Plani num;date;Num_Presta;HH / 1;16/06/2008;1;0 / 2;17/06/2008;1;0 / 3;18/06/2008;1;0 / 4;19/06/2008;1;0 "
        "| "
        "feed 0 | csv Plani num;date;Num_Presta;HH / 3;17/06/2008;1;0 | feed 0 --part | says 0 supprimée | feed 0 | "
        "says Plani : 0 nouvelle, 0 modifiée, 1 inchangée, 0 gardée, 2 supprimées | has 1,3 = select group_concat(num) "
        "from "
        "Plani | csv Plani num;date;Num_Presta;HH | feed 0 | has 2 = select count(*) from Plani",
        "acts 1a P 1, 2a P 1, 3a P 1, 4a P 1, 5a P 1, 6a P 1, 7a P 1, 8a P 1, 9a P 1, 10a P 1 | feed 0 | acts 1a P 2, "
        "2a P "
        "2, 3a P 2, 4a P 2, 5a P 2, 6a P 2, 7a P 2, 8a P 2, 11a P 1, 12a P 1 | feed 2 | says que 8 des 10 actes | feed "
        "0 "
        "--part | acts 1a P 2, 2a P 2, 3a P 2, 4a P 2, 5a P 2, 6a P 2, 7a P 2, 8a P 2, 9a P 1, 10a P 1, 11a P 1 | feed "
        "0 | "
        "acts 1a P 9 | feed 2 --dry-run | feed 0 --yes | has 9.0 = select montant from Actes where num = 1",
    };
    for (const char* const script : cases)
        FeedCase().Play(script);
}

TEST(Feed, ComparesEachNamingFieldOfALine)
{
    const std::pair<const char*, bool> lines[] = {
        {"50;17/06/2008;;1;1;;0", true},  {"50;18/06/2008;;1;1;;0", false}, {"50;17/06/2008;08:00;1;1;;0", false},
        {"50;17/06/2008;;;1;;0", false},  {"50;17/06/2008;;1;2;;0", false}, {"50;17/06/2008;;1;1;C;0", false},
        {"50;17/06/2008;;1;1; ;0", true},
    };
    for (const auto& [line, goes] : lines)
        FeedCase().Play(qPrintable(
            QString("csv Actes num;Date;HH;Heure;num_patient;num_presta;Type;flag_R;montant / "
                    "1;17/06/2008;0;;1;1;;0;0 | feed 0 | csv Actes num;Date;HH;flag_R;montant / 2;18/06/2008;0;0;0 | "
                    "csv Actes_suppr num;Date;Heure;num_patient;num_presta;Type;flag_R / %1 | feed 0 --yes | is %2")
                .arg(line, goes ? "2 NP 0" : "1 NP 0, 2 NP 0")));
}

TEST(Feed, RefusesNamesThatAreNearlyThoseOfATable)
{
    const std::pair<const char*, bool> names[] = {
        {"Acte.csv", true},       {"Actes (1).csv", true}, {"patient.CSV", true},   {"Actes.csv.part", true},
        {"Actes_supp.csv", true}, {"Plannig.csv", true},   {"PLANI.xlsx", true},    {"Copie de Actes.csv", true},
        {"actés.csv", true},      {"ACTES.CSV", true},     {"LISEZMOI.txt", false}, {"Medecins.csv", false},
        {"PRESTA.csv", false},
    };
    for (const auto& [name, isRefused] : names) {
        const NewPractice practice;
        practice.Write("source/Actes.csv", "num;Date;HH\n1;17/06/2008;0\n");
        QDir().mkpath(practice.File("source/Anciens actes")); // a folder may have any name
        if (QFile::exists(practice.File(QString("source/") + name)))
            continue; // the system doesn't distinguish case
        practice.Write(QString("source/") + name, "num\n");
        const CommandRun run({"feed", practice.Folder(), practice.File("source")});
        EXPECT_EQ(run.code, isRefused ? 2 : 0) << name << run.errors.toStdString();
        EXPECT_EQ(practice.Count("Actes"), isRefused ? 0 : 1);
    }
    const NewPractice practice;
    practice.Write("rien/x.txt", "");
    for (const QString& source : {practice.Write("Presta.csv", "num\n"), practice.File("absent"), practice.File("rien"),
                                  practice.Write("x.MDB", "Standard Jet DB")})
        EXPECT_EQ(CommandRun({"feed", practice.Folder(), source}).code, 2) << source.toStdString();
}

TEST(Feed, NamesDatesThatAnOldDatabaseDoesNotGive)
{
    QByteArray database = BytesOf(tests::OldFile("odd.mdb"));
    for (const auto& [name, other] : {std::pair("A\0c\0t\0e\0s", "X\0c\0t\0e\0s"), {"P\0l\0a\0n\0i", "X\0l\0a\0n\0i"}})
        database.replace(QByteArray(name, 9), QByteArray(other, 9)); // tables with odd rows
    const NewPractice practice;
    const CommandRun run({"feed", practice.Folder(), practice.Write("ZEP_ONE.MDB", database)});
    EXPECT_EQ(run.code, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.contains(" : Xctes, ") && run.output.contains("\n  Patients, ligne 7 : Naiss\n"))
        << run.output.toStdString();
    EXPECT_TRUE(practice.Ask("select Naiss from Patients where num = 7").IsNull());
}
