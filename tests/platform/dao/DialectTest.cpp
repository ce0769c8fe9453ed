#include "SmallPractice.h"

namespace dao::test {
namespace {

class Dialect : public SmallPractice {};

TEST_F(Dialect, FindsRowsByDatesWrittenMonthFirst)
{
    EXPECT_EQ(Keys("Select * from Actes where date =#03/02/2008#"), "2 3 4");
    EXPECT_EQ(Keys("Select * from Actes  where date >=#03/02/2008# and date <=#3/3/2008# order by date"), "2 3 4 5");
    EXPECT_EQ(Keys("select * from Actes where Date <#2008/3/2#"), "1");
    EXPECT_EQ(Keys("select * from Actes where date >=#02/29/2100#"), "");
}

TEST_F(Dialect, TakesADateThatCanBeNoneAsEqualToNothing)
{
    for (const char* const date :
         {"#/..//..#", "##", "#//#", "#1/2#", "#99999999999/1/2008#", "#13/45/2008#", "#é/é/é#"}) {
        EXPECT_EQ(Keys(QString("select * from Actes where date =") + date), "") << date;
        EXPECT_EQ(Open(QString("select count(num) as S1 from Actes where date =") + date)["S1"].Long(), 0) << date;
    }
    EXPECT_EQ(Keys("select * from Actes where date <#..../.../...#"), "");
}

TEST_F(Dialect, ComparesTextWithoutCaseButWithAccents)
{
    EXPECT_EQ(Keys("select * from Patients where nom = 'évrard'"), "1 4");
    EXPECT_EQ(Keys("select * from Patients where nom = 'EVRARD'"), "2");
    EXPECT_EQ(Keys("select * from Patients where nom <> 'evrard' and nom < 'F'"), "1 3 4");
    EXPECT_EQ(Keys("select * from Patients where nom in ('ZIDANE', 'évrard')"), "1 4 5");
    EXPECT_EQ(Keys("select * from Patients where nom between 'e' and 'évrard'"), "1 2 4");
    EXPECT_EQ(Keys("select * from Patients order by nom, Prenom"), "3 2 4 1 5");
    EXPECT_EQ(Keys("select * from Patients order by nom desc, num desc"), "5 4 1 2 3");
    EXPECT_EQ(Keys("select * from Patients where N_Carte = '12'"), "2");
    EXPECT_EQ(Keys("select * from Patients where n_carte = 'a1'"), "3");
}

TEST_F(Dialect, KnowsTextColumnsWhereverTheirTableStands)
{
    EXPECT_EQ(Keys("select Patients.num from (Patients) where nom = 'EVRARD'"), "2");
    EXPECT_EQ(Keys("select Patients.num from (Actes join Presta on Actes.num = 1), Patients where nom = 'EVRARD' and "
                   "Ordre = 0"),
              "2");
}

TEST_F(Dialect, TellsANameWithABlankFromTwoNames)
{
    EXPECT_EQ(ErrorOf([&] { Open("select num, [nom Prenom] from Patients"); }), Error::UnknownColumn);
    EXPECT_EQ(Open("select num, [nom] Prenom from Patients")["Prenom"].Text(), "Évrard");
}

TEST_F(Dialect, SearchesByPatternsWithoutCase)
{
    EXPECT_EQ(Keys("select * from Patients where nom like 'év*'"), "1 4");
    EXPECT_EQ(Keys("select * from Patients where nom like '[éE]VRAR?' order by num"), "1 2 4");
    EXPECT_EQ(Keys("select * from Patients where nom like 'd*' and prenom like '*C'"), "3");
    EXPECT_EQ(Keys("select * from Patients where not nom like '*a*'"), "");
    EXPECT_EQ(Keys("select * from Patients where N_carte like '##'"), "2");
    EXPECT_EQ(Keys("select * from Patients where tel like '*'"), "1 4 5") << "Null is like nothing";
}

TEST_F(Dialect, ReadsQuotesBracketsAndNamesInAnyCase)
{
    EXPECT_EQ(Keys("SELECT * FROM patients WHERE NOM = 'd''artagnan'"), "3");
    EXPECT_EQ(Keys("select * from [Patients] where [nom] = \"D'Artagnan\";"), "3");
    EXPECT_EQ(Keys("select * from Actes where Actes.num_presta = 8 or (MONTANT > 100 and montant < 1E+3)"), "1 3");
    EXPECT_EQ(Keys("select * from Actes where num = -1 or num = .5 or num = 2"), "2");
    EXPECT_EQ(Open("select nom & ' ' & Prenom as whole from Patients where num = 2")["whole"].Text(), "evrard Ali");
}

TEST_F(Dialect, GivesCountsAndSumsByTheirNames)
{
    Recordset totals = Open("select count(num) as S1, sum(montant) as S2 from Actes where date =#03/02/2008#");
    EXPECT_EQ(totals["S1"].Long(), 3);
    EXPECT_EQ(totals["s2"].Double(), 85);
    EXPECT_TRUE(Open("select sum(montant) as S1 from Actes where num_presta = 99")["S1"].IsNull());
    EXPECT_EQ(Open("select min(date) as D from Actes")["D"].Text(), "01/03/2008");
    EXPECT_EQ(Open("select Type from Actes group by Type order by Type")["Type"].IsNull(), true);
    EXPECT_EQ(Open("select count(num) as S1 from Actes where num_presta in (select num from Presta)")["S1"].Long(), 0);
}

TEST_F(Dialect, ChangesRows)
{
    EXPECT_EQ(database.Execute("Update Actes set Flag_H = 1 where date =#03/02/2008#"), 3);
    EXPECT_EQ(database.Execute("Update Actes set date = #12/31/2009# where num = 6"), 1);
    EXPECT_EQ(Keys("select * from Actes where Flag_H = 1 or date > #12/30/2009#"), "2 3 4 6");
    EXPECT_EQ(database.Execute("insert into Prov (num, unite, Mt) values (5, 'L''Écho', 1.5)"), 1);
    EXPECT_EQ(Open("Prov")["unite"].Text(), "L'Écho");
    EXPECT_EQ(database.Execute("Delete * from Prov"), 1);
    EXPECT_EQ(database.Execute("delete from Prov"), 0);
}

TEST_F(Dialect, PassesOverRowsThatCantBeChangedUnlessToldToFail)
{
    const QString taken = "insert into Presta (num, denom, Ordre) values (13, 'Laser', 0)";
    EXPECT_EQ(database.Execute(taken), 0);
    EXPECT_EQ(ErrorOf([&] { database.Execute(taken, FailOnError); }), Error::DuplicateKey);
    EXPECT_EQ(ErrorOf([&] { database.Execute("update Presta set denom = null", FailOnError); }), Error::NullNotAllowed);
    EXPECT_EQ(ErrorOf([&] { database.Execute("update Presta set num = 'deux' where num = 10", FailOnError); }),
              Error::ConversionFailed);
    EXPECT_EQ(Open("select count(*) as S1 from Presta")["S1"].Long(), 3);
}

TEST_F(Dialect, RefusesWhatIsNoSingleStatementOfItsOwn)
{
    const struct {
        const char* statement;
        Error error;
    } cases[] = {
        {"", Error::SyntaxError},
        {";", Error::SyntaxError},
        {"select * from Patients; delete from Patients", Error::SyntaxError},
        {"select * from Patients where nom like 'D'Artagnan*'", Error::SyntaxError},
        {"select * from Patients where nom = 'open", Error::SyntaxError},
        {"select * from Patients where date = #03/02", Error::SyntaxError},
        {"select * from Patients where (num = 1", Error::SyntaxError},
        {"select * from Patients where num = 1) or (1 = 1", Error::SyntaxError},
        {"select * from Patients where num = 12abc", Error::SyntaxError},
        {"select * from Patients where num < 1e999", Error::SyntaxError},
        {"select * from Patients where num = 1 -- all", Error::SyntaxError},
        {"select * from Patients /* all */", Error::SyntaxError},
        {"select * from Patients order", Error::SyntaxError},
        {"select * from Patients order by 1", Error::SyntaxError},
        {"select * from Patients where", Error::SyntaxError},
        {"select * from", Error::SyntaxError},
        {"drop table Patients", Error::SyntaxError},
        {"create table T (a)", Error::SyntaxError},
        {"pragma journal_mode = off", Error::SyntaxError},
        {"attach 'x' as y", Error::SyntaxError},
        {"begin", Error::UnknownTable},
        {"vacuum", Error::UnknownTable},
        {"explain select * from Patients", Error::SyntaxError},
        {"with T as (select 1) select * from T", Error::SyntaxError},
        {"select * from Nulle", Error::UnknownTable},
        {"Nulle", Error::UnknownTable},
        {"select * from sqlite_schema", Error::UnknownTable},
        {"select * from pragma_table_info where 1 = 1", Error::UnknownTable},
        {"select name from (sqlite_schema)", Error::UnknownTable},
        {"select num from Patients, (Prov, sqlite_schema)", Error::UnknownTable},
        {"select num from (Prov join Presta on 1 = 1), sqlite_schema", Error::UnknownTable},
        {"select * from Patients where nom in sqlite_schema", Error::UnknownTable},
        {"delete * from Nulle", Error::UnknownTable},
        {"select num from Patients, Nulle", Error::UnknownTable},
        {"select * from Patients where Nul = 3", Error::UnknownColumn},
        {"select * from Patients where nom = \"x\" and nul = \"nom\"", Error::UnknownColumn},
        {"select count(nul) as S1 from Patients", Error::UnknownColumn},
        {"insert into Patients (nul) values (1)", Error::UnknownColumn},
        {"select load_extension('x') as S1 from Patients", Error::UnknownFunction},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(ErrorOf([&] { Open(each.statement); }), each.error) << each.statement;
        EXPECT_NE(ErrorOf([&] { database.Execute(each.statement); }), std::nullopt) << each.statement;
    }
    EXPECT_EQ(ErrorOf([&] { Open("delete * from Prov"); }), Error::InvalidOperation);
    EXPECT_EQ(ErrorOf([&] { database.Execute("select * from Prov"); }), Error::NotAnAction);
    EXPECT_EQ(Open("select count(*) as S1 from Patients")["S1"].Long(), 5);
}

TEST_F(Dialect, TellsWhatItCouldntRead)
{
    try {
        Open("select * from Patients where nom like 'D'Artagnan*'");
        FAIL();
    } catch (const basic::RuntimeError& error) {
        EXPECT_TRUE(error.Description().contains("'*''") || error.Description().contains("'"))
            << error.Description().toStdString();
    }
    try {
        Open("select * from Nulle");
        FAIL();
    } catch (const basic::RuntimeError& error) {
        EXPECT_TRUE(error.Description().contains("'Nulle'")) << error.Description().toStdString();
    }
}

TEST_F(Dialect, KeepsHostileTextApartFromTheStatement)
{
    const QString hostile = "L'Hôpital \"d'O'Brien\" 100 %_*?[#];--\n\x01\u200F";
    Recordset rows = Open("Patients");
    rows.AddNew();
    rows["nom"] = hostile;
    rows.Update();
    QString doubled = hostile;
    const QString statement = "select * from Patients where nom = '" + doubled.replace("'", "''") + "'";
    EXPECT_EQ(Open(statement)["nom"].Text(), hostile);
    EXPECT_EQ(Keys(statement), QString::number(rows.LastKey()));
}

TEST_F(Dialect, ReadsOrRefusesWhateverIsPutTogether)
{
    const QStringList pieces = {
        "select", "*",     "from",     "Patients", "Actes",   "where",   "nom",
        "num",    "[",     "]",        "=",        "<",       ">",       "'",
        "\"",     "#",     "(",        ")",        "like",    "order",   "by",
        ",",      ".",     ";",        "12",       "-",       "'a'",     "#1/2/2003#",
        "in",     "union", "as",       "count",    "is null", "and",     "or",
        "not",    "é",     "\xC2\xA0", "?",        "case",    "end",     "delete",
        "update", "set",   "insert",   "into",     "values",  "between", "9999999999999999999999"};
    quint32 state = 20080302;
    const auto pick = [&](int count) {
        state = state * 1664525 + 1013904223;
        return int((state >> 8) % quint32(count));
    };
    for (int i = 0; i < 3000; ++i) {
        QString statement = pick(2) ? "select * from Patients where " : "";
        for (int length = pick(12); length >= 0; --length)
            statement += pieces[pick(int(pieces.size()))] + (pick(4) ? " " : "");
        const auto refusal = ErrorOf([&] { Walk(Open(statement)); });
        const bool isOfTheEngine = !refusal || int(*refusal) > 3000 || refusal == Error::InvalidNull;
        EXPECT_TRUE(isOfTheEngine) << statement.toStdString() << ": " << int(*refusal);
        ErrorOf([&] { Open("Patients").FindFirst(statement); });
    }
    EXPECT_EQ(Open("select count(*) as S1 from Patients")["S1"].Long(), 5);
}

} // namespace
} // namespace dao::test
