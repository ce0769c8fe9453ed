// Each report of the program, page by page, against a text that was looked at. The run never writes these texts.
#include "platform/report/PageText.h"
#include "platform/report/ReportPractice.h"
#include "support/Printing.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

using tests::ReportPractice;

/// Fails with the first line that differs. What was printed is left in the build folder, to be looked at and copied
/// by hand.
void ExpectGolden(const pages::PageLayout& layout, const QString& name)
{
    QDir().mkpath(ZEP_PRINTED);
    QFile copy(QStringLiteral(ZEP_PRINTED "/") + name + ".txt");
    ASSERT_TRUE(copy.open(QIODevice::WriteOnly));
    copy.write(tests::PagesAsText(layout).toUtf8());
    copy.close();
    QFile file(QStringLiteral(ZEP_GOLDEN "/") + name + ".txt");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "there is no golden text " << qPrintable(file.fileName());
    const QStringList expected = QString::fromUtf8(file.readAll()).split('\n');
    const QStringList printed = tests::PagesAsText(layout).split('\n');
    for (qsizetype line = 0; line < std::min(expected.size(), printed.size()); ++line)
        ASSERT_EQ(printed[line], expected[line]) << qPrintable(name) << ".txt, line " << line + 1;
    EXPECT_EQ(printed.size(), expected.size());
}

TEST(GoldenPages, CashOfTheDay)
{
    ReportPractice practice;
    practice.SetTexts({{"ch5", "Mouvements de fonds du  Mar 17/06/2008"},
                       {"ch6", "5"},
                       {"ch7", "- 883 348.15"},
                       {"ch8", "   550.50 "},
                       {"ch9", "  100.00"},
                       {"ch10", "- 882 897.65"}});
    practice.Add("Prov", {{"unite", "Consultation"}, {"Page", 3}, {"Mt", 450.25}});
    practice.Add("Prov", {{"unite", "Radiologie"}, {"Page", 2}, {"Mt", 100.25}});
    practice.Add("Prov", {{"unite", "Échographie"}, {"Page", 0}, {"Mt", 0.0}});
    ExpectGolden(practice.LayOut(practice.Template("ZEP_R1.RPT")), "ZEP_R1");
}

TEST(GoldenPages, CashOfADayWithoutActs)
{
    ReportPractice practice;
    practice.SetTexts({{"ch30", "()"}, {"ch5", "Mouvements de fonds du  Mar 17/06/2008"}});
    practice.Add("Prov", {{"unite", ""}, {"Page", 0}, {"Mt", 0.0}});
    ExpectGolden(practice.LayOut(practice.Template("ZEP_R1.RPT")), "ZEP_R1_sans_acte");
}

TEST(GoldenPages, SettledAndPendingActs)
{
    ReportPractice practice;
    practice.AddActs(7, false);
    practice.Add("Prov", {{"num", 999}}); // deleted between the screen and the report
    ExpectGolden(practice.LayOut(practice.Template("ZEP_R2.RPT")), "ZEP_R2");
    ExpectGolden(practice.LayOut(practice.Template("ZEP_R3.RPT")), "ZEP_R3");
}

TEST(GoldenPages, Expenses)
{
    ReportPractice practice;
    practice.AddExpenses(3);
    ExpectGolden(practice.LayOut(practice.Template("ZEP_R4.RPT")), "ZEP_R4");
}

TEST(GoldenPages, DetailOfTheJournalHasReferenceValues)
{
    ReportPractice practice;
    practice.AddActs(4, true);
    practice.SetTexts(
        {{"ch4", "Journal d'activité de la"}, {"ch5", "Journée du Mar  17/06/2008"}, {"ch6", "4"}, {"ch7", "   451 "}});
    ExpectGolden(practice.LayOut(practice.Template("ZEP_DTAL.RPT")), "ZEP_DTAL_journal");
}

TEST(GoldenPages, DetailOfPendingActsHasNoEmptyColumn)
{
    ReportPractice practice;
    practice.AddActs(4, false);
    practice.SetTexts(
        {{"ch4", "Règlements en instance"}, {"ch5", "Journée du Mar  17/06/2008"}, {"ch6", ""}, {"ch7", ""}});
    ExpectGolden(practice.LayOut(practice.Template("ZEP_DTAL.RPT")), "ZEP_DTAL_instance");
}

TEST(GoldenPages, ListWithoutRows)
{
    ReportPractice practice;
    ExpectGolden(practice.LayOut(practice.Template("ZEP_R2.RPT")), "ZEP_R2_vide");
}

} // namespace
