#include "platform/pages/Content.h"
#include "platform/pages/SelectionFormula.h"
#include "platform/report/ReportPractice.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace {

using tests::ReportPractice;

constexpr int SelectLine = 4;

pages::Template PatientsTemplate(const QString& select)
{
    pages::Template design;
    design.select = select;
    design.selectLine = SelectLine;
    pages::Column name;
    name.field = "nom";
    design.columns = {name};
    return design;
}

TEST(SelectionFormula, ReadsComparisonsAndNothingElse)
{
    const pages::Selection day = pages::ReadSelection("{Plani.date} = date(2008,06,17) and {Plani.Num_Presta} = 3");
    EXPECT_EQ(day.condition, R"("Plani"."date" = ?1 and "Plani"."Num_Presta" = ?2)");
    EXPECT_EQ(day.values.at(0).Text(), "2008-06-17");
    EXPECT_EQ(day.values.at(1).Double(), 3);
    for (const char* bad : {"", "{Plani.date}", "{Plani.date} = date(2008,06)", "{Plani.num} = 1 or 1",
                            "{Plani.num} = 1; drop table Plani", "{Plani.num\"} = 1", "{Plani.num} = 1 and"})
        EXPECT_EQ(ErrorOf([&] { pages::ReadSelection(bad); }), Error::SyntaxError) << bad;
}

TEST(Content, SelectsRowsByFormula)
{
    ReportPractice practice;
    const pages::Template without = PatientsTemplate("select num, nom from Patients");
    EXPECT_EQ(pages::ReadContent(without, practice.Source("{Patients.num} = 2")).faults.at(0).line, SelectLine);
    EXPECT_EQ(pages::ReadContent(without, practice.Source(" ")).content.rows.RowCount(), 3);

    const pages::Template with = PatientsTemplate("select num, nom from Patients where {selection}");
    EXPECT_EQ(pages::ReadContent(with, practice.Source()).content.rows.RowCount(), 3);
    const pages::ReadContentResult chosen = pages::ReadContent(with, practice.Source("{Patients.num} = 2"));
    ASSERT_EQ(chosen.content.rows.RowCount(), 1);
    EXPECT_EQ(chosen.content.rows.Cell(0, 1).Text(), "O'BRIEN-MARTIN");
    EXPECT_EQ(pages::ReadContent(with, practice.Source("{Patients.num}")).faults.at(0).line, 0);
}

TEST(Content, ReportsAnUnreadableDatabaseAsAFaultOfTheFile)
{
    ReportPractice practice;
    const pages::Template design = PatientsTemplate("select num, nom from Patients");
    for (const QString& path :
         {practice.Folder() + "/RIEN.MDB", practice.WriteTemplate(QByteArray(5'000, 'x'), "FAUX.MDB")}) {
        pages::Source source = practice.Source();
        source.database = path;
        const QList<pages::Fault> faults = pages::ReadContent(design, source).faults;
        ASSERT_EQ(faults.size(), 1) << qPrintable(path);
        EXPECT_EQ(faults[0].line, 0);
    }
}

TEST(ReadOnlyQuery, ReadsOneSnapshotWhileAnotherConnectionWrites)
{
    ReportPractice practice;
    const dao::ReadOnlyQuery query(practice.Path());
    practice.Add("Patients", {{"nom", "NOUVEAU"}});
    practice.SetTexts({{"ch4", "plus tard"}});
    EXPECT_EQ(query.Read("select num from Patients", {}, {.rows = 100}).RowCount(), 3);
    EXPECT_EQ(query.Read("select ch4 from textes", {}, {.rows = 1}).Cell(0, 0).Text(),
              "Mouvements de fonds du  Mar 17/06/2008");
    EXPECT_EQ(dao::ReadOnlyQuery(practice.Path()).Read("select num from Patients", {}, {.rows = 100}).RowCount(), 4);
}

TEST(ReadOnlyQuery, StopsAtItsLimits)
{
    ReportPractice practice;
    const dao::ReadOnlyQuery query(practice.Path());
    const QString endless = "with recursive n(i) as (select 1 union all select i + 1 from n) select %1 from n";
    const auto refusal = [&](const QString& select, const dao::QueryLimits& limits) {
        return Raised([&] { query.Read(select, {}, limits); });
    };
    const QString three = "with n(i) as (values (1), (2), (3)) select i from n";
    EXPECT_EQ(refusal(three, {.rows = 3}), "");
    EXPECT_EQ(refusal(three, {.rows = 2}), "3035: plus de 2 lignes");
    EXPECT_EQ(refusal(endless.arg("i"), {.rows = 1000}), "3035: plus de 1000 lignes");
    EXPECT_EQ(refusal(endless.arg("'un texte'"), {.rows = 1'000'000, .bytes = 1 << 20}),
              "3035: plus de 1 Mo de données");
    const QString tooLarge = "3035: une ligne a plus d'un mégaoctet";
    EXPECT_EQ(refusal("select hex(zeroblob(600000))", {.rows = 1}), tooLarge);
    EXPECT_EQ(refusal("select length(hex(zeroblob(600000)))", {.rows = 1}), tooLarge);
    EXPECT_EQ(refusal("select hex(zeroblob(500000))", {.rows = 1}), "");
    EXPECT_EQ(refusal("select hex(zeroblob(300000)), hex(zeroblob(300000))", {.rows = 1}), tooLarge);
    int asked = 0;
    EXPECT_TRUE(
        refusal(endless.arg("count(*)"), {.rows = 1, .isGivenUp = [&] { return ++asked == 3; }}).startsWith("3059"));
    EXPECT_EQ(ErrorOf([&] { query.FieldsOf("select load_extension('x')"); }), Error::ReadOnly);
    EXPECT_EQ(query.Read("select 1", {}, {.rows = 1}).RowCount(), 1); // still usable after each refusal
}

TEST(ReadOnlyQuery, GivesItsReasonsInFrench)
{
    ReportPractice practice;
    const dao::ReadOnlyQuery query(practice.Path());
    const struct {
        const char* select;
        const char* reason;
    } cases[] = {
        {"select substr(nom) from Patients", "nombre d'arguments incorrect pour la fonction « substr »"},
        {"select nom from Patients where count(*) > 1", "la fonction « count » ne peut pas être employée ici"},
        {"select nom from Patients where sum(num) > 1", "la fonction « sum » ne peut pas être employée ici"},
        {"select row_number() over w from Patients", "fenêtre inconnue « w »"},
        {"select nom from Patients order by 2", "« order by » nomme un champ que « select » ne donne pas"},
        {"select nom from Patients union select num, nom from Patients",
         "les « select » réunis n'ont pas le même nombre de champs"},
        {"select (select num, nom from Patients)", "une valeur est attendue et non plusieurs"},
        {"select *", "« select * » sans table"},
        {"with a as (select * from a) select * from a", "« a » est défini par lui-même"},
        {"select nom from Patients indexed by x", "SQLite refuse cette interrogation"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(Raised([&] { query.FieldsOf(each.select); }).section(": ", 1), each.reason) << each.select;
    }
}

} // namespace
