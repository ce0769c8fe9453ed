// Compares each report of the program, page by page, with a reviewed text.
#include "support/Golden.h"
#include "platform/report/PageText.h"
#include "platform/report/ReportPractice.h"
#include "support/Printing.h"

namespace {

using tests::ReportPractice;

void ExpectGolden(const pages::PageLayout& layout, const QString& name)
{
    const QString file = QString("/%1.txt").arg(name);
    tests::ExpectGolden(tests::PagesAsText(layout), ZEP_GOLDEN + file, ZEP_PRINTED + file);
}

TEST(GoldenPages, CashOfTheDay)
{
    ReportPractice practice;
    practice.SetTexts({{"ch5", "Mouvements de fonds du  Mar 17/06/2008"},
                       {"ch6", "5"},
                       {"ch7", "- 883 348.15"},
                       {"ch8", "1234 567.50 "},
                       {"ch9", "  100.00"},
                       {"ch10", "  351 119.35"}});
    practice.Add("Prov", {{"unite", "Consultation"}, {"Page", 3}, {"Mt", 1234467.25}});
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
    practice.Add("Prov", {{"num", 999}, {"Mt", 0.0}}); // an act that was deleted since
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

TEST(GoldenPages, RecapOfTheJournal)
{
    ReportPractice practice;
    practice.SetTexts({{"ch4", "Journal d'activité de la"},
                       {"ch5", "Journée du Mar  17/06/2008"},
                       {"ch6", "6"},
                       {"ch7", "  1 051 "}});
    practice.Add("Prov", {{"unite", "Consultation"}, {"Page", 3}, {"Mt", 450.25}, {"Mt2", 1200.0}});
    practice.Add("Prov", {{"unite", "Radiologie"}, {"Page", 2}, {"Mt", 1100.25}, {"Mt2", -99.5}});
    practice.Add("Prov",
                 {{"unite", "Échographie"}, {"Page", 1}, {"Mt", 0.0}, {"Mt2", 0.0}}); // -500.00 on the screen's total
    ExpectGolden(practice.LayOut(practice.Template("ZEP_RCAP.RPT")), "ZEP_RCAP");
}

TEST(GoldenPages, CodesOfTheJournalOnOnePageWithTheirTotals)
{
    ReportPractice practice;
    practice.SetTexts({{"ch4", "Journée du Mar  17/06/2008"}});
    for (int code = 0; code < 32; ++code) {
        const double count = code % 5 == 0 ? code + 1 : 0;
        practice.Add("RCP2", {{"denom", code == 0 ? "C" : "K" + QString::number(code - 1)},
                              {"C1", count},
                              {"C3", 2 * count},
                              {"C2", 0.0},
                              {"C4", 0.0},
                              {"C5", 0.0},
                              {"C6", code == 31 ? 1.0 : 0.0},
                              {"C7", 3 * count + (code == 31 ? 1 : 0)}});
    }
    ExpectGolden(practice.LayOut(practice.Template("ZEP_RCP2.RPT")), "ZEP_RCP2");
}

TEST(GoldenPages, NetResultAsALossAndWithArabicTitles)
{
    ReportPractice practice;
    practice.SetTexts({{"ch5", "Resultat de l'activité du  17/06/2008"},
                       {"ch6", "Charges pour une journée"},
                       {"ch7", "  551.00"},
                       {"ch8", " - .50"}});
    practice.Add("Prov", {{"unite", "Consultation"}, {"Page", 3}, {"Mt", 450.25}});
    practice.Add("Prov", {{"unite", "Radiologie"}, {"Page", 2}, {"Mt", 100.25}});
    practice.Add("Prov", {{"unite", "Échographie"}, {"Page", 0}, {"Mt", 0.0}});
    ExpectGolden(practice.LayOut(practice.Template("ZEP_Rstt.RPT")), "ZEP_Rstt");
    practice.SetTexts({{"ch5", " نـتـيجة الـنشاط مـن 2008/06/01 إلى 2008/06/30"},
                       {"ch6", " تـكالـيف 30  يــومـا "},
                       {"ch7", ""},
                       {"ch8", "  540.50"}}); // the unit with -10.00 isn't printed but counts
    ExpectGolden(practice.LayOut(practice.Template("ZEP_Rstt.RPT")), "ZEP_Rstt_arabe");
}

TEST(GoldenPages, MonthsAsChartAndTableWithALoss)
{
    ReportPractice practice;
    practice.SetTexts(
        {{"ch4", "Évolution, novembre 2007 à février 2008"},
         {"ch5", "Charges : la charge par jour d'aujourd'hui, 1 000.00 DA, pour chaque jour de tous les mois. "
                 "Les dépenses n'entrent pas dans le net. Rien n'est enregistré avant décembre 2006."},
         {"ch6", "Aucune recette"}});
    const auto month = [&](const char* name, double receipts, double charges, double expenses, double before,
                           int mark) {
        practice.Add("RCP2", {{"denom", name},
                              {"C1", receipts},
                              {"C2", charges},
                              {"C3", receipts - charges},
                              {"C4", expenses},
                              {"C5", before},
                              {"C7", mark}});
    };
    month("nov. 2007", 0, 30000, 0, -30000, 0);
    month("déc. 2007", 54321.5, 31000, 12000, 15500.25, 1);
    month("janv. 2008", 18000, 31000, 0, 9000, 2);
    month("févr. 2008", 61000, 29000, 4000.75, -12000, 2);
    ExpectGolden(practice.LayOut(practice.Template("ZEP_EVO1.RPT")), "ZEP_EVO1");

    practice.Database().Execute("delete from RCP2"); // the months of a service: fewer columns and series
    practice.Add("RCP2", {{"denom", "janv. 2008"}, {"C1", 18000.0}, {"C6", 12}, {"C7", 1}});
    practice.SetTexts({{"ch4", "Consultation, janvier 2008"}, {"ch5", ""}});
    ExpectGolden(practice.LayOut(practice.Template("ZEP_EVO1.RPT")), "ZEP_EVO1_unite");
}

TEST(GoldenPages, SharesOfServicesAsChartAndTable)
{
    ReportPractice practice;
    practice.SetTexts({{"ch4", "Évolution, par unité"}, {"ch6", "Aucun acte"}});
    practice.Add("RCP2", {{"denom", "Radiologie"}, {"C1", 1500}, {"C2", 75.0}, {"C3", 1250000.5}, {"C4", 62.5}});
    practice.Add("RCP2", {{"denom", "Écho"}, {"C1", 500}, {"C2", 25.0}, {"C3", 750000.3}, {"C4", 37.5}});
    practice.Add("RCP2", {{"denom", "Soins"}, {"C1", 0}, {"C2", 0}, {"C3", 0}, {"C4", 0}});
    ExpectGolden(practice.LayOut(practice.Template("ZEP_EVO2.RPT")), "ZEP_EVO2");
}

TEST(GoldenPages, DeletedActs)
{
    ReportPractice practice;
    practice.SetTexts({{"ch4", "Actes supprimés le 17/06/2008"}});
    const auto deleted = [&](int patient, int service, int code) {
        const dao::Key key = practice.Add("Actes_suppr", {{"Date", "16/06/2008"},
                                                          {"Heure", "08:30"},
                                                          {"num_patient", patient},
                                                          {"num_presta", service},
                                                          {"Type", "K10"},
                                                          {"flag_R", code},
                                                          {"Date_Suppr", "17/06/2008"},
                                                          {"H_Suppr", "11:05"}});
        practice.Add("Prov", {{"num", key}});
    };
    deleted(1, 1, 0);
    deleted(99, 2, 5);
    deleted(2, 99, 6);
    deleted(3, 3, -1);
    practice.Add("Prov", {{"num", 999}});
    ExpectGolden(practice.LayOut(practice.Template("ZEP_Supp.RPT")), "ZEP_Supp");
}

TEST(GoldenPages, AppointmentsOfADay)
{
    ReportPractice practice;
    practice.SetTexts({{"ch4", "Planning de la Journée du Mar  17/06/2008"}});
    practice.Database().Execute("Update Patients set tel = '021 00 00 00', N_carte = '12/345' where num = 1");
    practice.Database().Execute("Update Presta set Ordre = 5 where num = 1"); // Consultation comes last
    const auto appointment = [&](const char* day, int service, int slot, int patient) {
        practice.Add("Plani", {{"date", day}, {"Num_Presta", service}, {"HH", slot}, {"num_patient", patient}});
    };
    appointment("17/06/2008", 1, 9, 1);
    appointment("17/06/2008", 1, 0, 2);
    appointment("17/06/2008", 1, 0, 99);
    appointment("17/06/2008", 2, 10, 3);
    appointment("17/06/2008", 2, -1, 1);
    appointment("17/06/2008", 98, 4, 1);
    appointment("18/06/2008", 2, 4, 1);
    const QString day = "{Plani.date} = date(2008,06,17)";
    ExpectGolden(practice.LayOut(practice.Template("Planning.RPT"), day), "Planning");
    ExpectGolden(practice.LayOut(practice.Template("Planning.RPT"), day + " and {Plani.Num_Presta} = 1"),
                 "Planning_unite");
}

TEST(GoldenPages, ListWithoutRows)
{
    ReportPractice practice;
    ExpectGolden(practice.LayOut(practice.Template("ZEP_R2.RPT")), "ZEP_R2_vide");
}

} // namespace
