#include "SmallPractice.h"

#include <QRegularExpression>

namespace dao::test {
namespace {

class Dialect : public SmallPractice {};

TEST_F(Dialect, FindsRowsByDatesWrittenMonthFirst)
{
    EXPECT_EQ(Keys("Select * from Actes where date =#03/02/2008#"), "2 3 4");
    EXPECT_EQ(Keys("Select * from Actes  where date >=#03/02/2008# and date <=#3/3/2008# order by date"), "2 3 4 5");
    EXPECT_EQ(Keys("select * from Actes where Date <#3/2/2008#"), "1");
    EXPECT_EQ(Keys("select * from Actes where date >=#02/29/2100#"), "");
}

TEST_F(Dialect, MatchesNothingWithAnInvalidDate)
{
    for (const char* const date : {"#/..//..#", "##", "#//#", "#1/2#", "#2008/3/2#", "#3/1/2008/1#",
                                   "#99999999999/1/2008#", "#13/45/2008#", "#é/é/é#"}) {
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
    EXPECT_EQ(Keys("select * from Patients where nom >= 'e' and nom <= 'évrard'"), "1 2 4");
    EXPECT_EQ(Keys("select * from Patients order by nom, Prenom"), "3 2 4 1 5");
    EXPECT_EQ(Keys("select * from Patients order by nom desc, num desc"), "5 4 1 2 3");
    EXPECT_EQ(Keys("select * from Patients where N_Carte = '12'"), "2");
    EXPECT_EQ(Keys("select * from Patients where n_carte = 'a1'"), "3");
}

TEST_F(Dialect, SearchesByPatternsWithoutCase)
{
    EXPECT_EQ(Keys("select * from Patients where nom like 'év*'"), "1 4");
    EXPECT_EQ(Keys("select * from Patients where nom like '[éE]VRAR?' order by num"), "1 2 4");
    EXPECT_EQ(Keys("select * from Patients where nom like 'd*' and prenom like '*C'"), "3");
    EXPECT_EQ(Keys("select * from Patients where N_carte like '##'"), "2");
    EXPECT_EQ(Keys("select * from Patients where tel like '*'"), "1 4 5") << "Null is like nothing";
}

TEST_F(Dialect, ReadsQuotesSignsAndNamesInAnyCase)
{
    EXPECT_EQ(Keys("SELECT * FROM patients WHERE NOM = 'd''artagnan';"), "3");
    EXPECT_EQ(Keys("select * from Patients where nom <> '' and nom <> '''' and num = 3"), "3");
    EXPECT_EQ(Keys("select * from Actes where num_presta=7 and MONTANT>1.5 and montant < 999.5 and num<=2"), "1 2");
    EXPECT_EQ(Keys("select * from Actes where num > -1 and num >= .5 and num < 3"), "1 2");
    EXPECT_EQ(Keys("select * from Actes where num = -1"), "");
}

TEST_F(Dialect, GivesFieldsCountsAndSumsByTheirNames)
{
    Recordset totals = Open("select count(num) as S1, sum(montant) as S2 from Actes where date =#03/02/2008#");
    EXPECT_EQ(totals["S1"].Long(), 3);
    EXPECT_EQ(totals["s2"].Double(), 85);
    EXPECT_TRUE(Open("select sum(montant) as S1 from Actes where num_presta = 99")["S1"].IsNull());
    EXPECT_EQ(Open("select min(date) as D from Actes")["D"].Text(), "01/03/2008");
    EXPECT_EQ(Open("select count(*) as S1 from Actes")["S1"].Long(), 6);

    Recordset fields = Open("select num, nom as N, Prenom from Patients where num < 4 order by nom desc");
    EXPECT_EQ(Walk(fields), "1 2 3");
    fields.MoveFirst();
    EXPECT_EQ(fields["N"].Text(), "Évrard");
    EXPECT_EQ(ErrorOf([&] { fields.FindFirst(2); }), Error::InvalidOperation);
}

TEST_F(Dialect, ChangesRows)
{
    EXPECT_EQ(database.Execute("Update Actes set Flag_H = 1 where date =#03/02/2008#"), 3);
    EXPECT_EQ(database.Execute("Update Actes set date = #12/31/2009# where num = 6"), 1);
    EXPECT_EQ(Keys("select * from Actes where Flag_H = 1"), "2 3 4");
    EXPECT_EQ(Keys("select * from Actes where date > #12/30/2009#"), "6");
    EXPECT_EQ(database.Execute("update Patients set nom = 'L''Écho', tel = '12' where num = 1"), 1);
    EXPECT_EQ(Open("Patients")["nom"].Text(), "L'Écho");
    EXPECT_EQ(Open("Patients")["tel"].Text(), "12");
    EXPECT_EQ(database.Execute("delete from Patients where num > 3"), 2);
    EXPECT_EQ(database.Execute("Delete * from Patients"), 3);
    EXPECT_EQ(database.Execute("Delete * from Patients"), 0);
}

TEST_F(Dialect, SkipsRowsThatCantBeChangedUnlessFailOnError)
{
    const QString taken = "update Presta set num = 12 where num = 10";
    EXPECT_EQ(database.Execute(taken), 0);
    EXPECT_EQ(ErrorOf([&] { database.Execute(taken, FailOnError); }), Error::DuplicateKey);
    EXPECT_EQ(ErrorOf([&] { database.Execute("update Presta set num = 'deux' where num = 10", FailOnError); }),
              Error::ConversionFailed);
    EXPECT_EQ(Keys("Presta"), "10 11 12");
}

TEST_F(Dialect, RefusesAnythingButASingleStatement)
{
    // Statements, separated by "|"; "..." for the beginning that many have.
    const std::pair<Error, QString> cases[] = {
        {Error::SyntaxError,
         R"(...; delete from Patients|... where nom like 'D'Artagnan*'|... where nom = 'open|... where date = #03/02
... where (num = 1|... where num = 1) or (1 = 1|... where num = 12abc|... where num < 1e9
... where num = 1 -- all|... /* all */|... order|... order by 1|... where|... where num|... where 1 = 1
... where nom like Prenom|... where num in (select num from Actes)|..., Actes
... where num = 1 union select * from Patients|... where nom = "x"|... where num = 1 or num = 2
... where num = nom|... where tel is null|... where num in (1, 2)||;|select * from|select num, from Patients
select [num] from Patients|select sum(montant) + 1 as S1 from Actes|drop table Patients|create table T (a)
insert into Prov (num) values (1)|pragma journal_mode = off|attach 'x' as y|explain select * from Patients
with T as (select 1) select * from T)"},
        {Error::UnknownTable, R"(begin|vacuum|select * from Nulle|Nulle|sqlite_schema|select * from sqlite_sequence
select name from pragma_table_info|delete * from Nulle)"},
        {Error::UnknownColumn, R"(select * from Patients where Nul = 3|select * from Patients order by nul
select count(nul) as S1 from Patients|select nul from Patients)"},
        {Error::UnknownFunction, R"(select nulle(nom) as S1 from Patients)"},
    };
    for (const auto& [error, list] : cases) {
        for (QString statement : list.split(QRegularExpression("[|\n]"))) {
            statement.replace("...", "select * from Patients");
            EXPECT_EQ(ErrorOf([&] { Open(statement); }), error) << statement.toStdString();
            EXPECT_EQ(ErrorOf([&] { database.Execute(statement); }), error) << statement.toStdString();
        }
    }
    for (const char* const change : {"update Patients set nul = 1", "delete from Patients where nul = 1"})
        EXPECT_EQ(ErrorOf([&] { database.Execute(change); }), Error::UnknownColumn) << change;
    EXPECT_EQ(ErrorOf([&] { Open("select load_extension(nom) as S1 from Patients"); }), Error::SyntaxError);
    EXPECT_EQ(ErrorOf([&] { Open("delete * from Prov"); }), Error::InvalidOperation);
    EXPECT_EQ(ErrorOf([&] { database.Execute("select * from Prov"); }), Error::NotAnAction);
    EXPECT_EQ(Open("select count(*) as S1 from Patients")["S1"].Long(), 5);
}

TEST_F(Dialect, QuotesTheSyntaxError)
{
    const std::pair<const char*, const char*> cases[] = {
        {"select * from Patients where nom like 'D'Artagnan*'", "'"},
        {"select * from Patients where num = 1 -- all", "-- all"},
        {"select * from Patients; delete * from Patients", "delete * from Patients"},
        {"select * from Nulle", "Nulle"},
        {"select * from Patients where Nul = 3", "Nul"},
    };
    for (const auto& [statement, part] : cases) {
        const QString refusal = Raised([&, text = statement] { Open(text); });
        EXPECT_TRUE(refusal.contains("'" + QString(part) + "'")) << refusal.toStdString();
    }
}

} // namespace
} // namespace dao::test
