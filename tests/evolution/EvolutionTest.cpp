#include "evolution/Evolution.h"
#include "analysis/Mens_Act.h"
#include "analysis/Result.h"
#include "core/NetResult.h"
#include "core/screens.h"
#include "menu.h"
#include "platform/pages/Chart.h"
#include "platform/pages/PageLayout.h"
#include "support/Reports.h"
#include "support/ScreenTest.h"

#include <QTest>

using analysis::Result;
using evolution::Evolution;

namespace {

class EvolutionScreen : public tests::ScreenTest<Evolution> {
protected:
    EvolutionScreen()
    {
        MenuScreens();
        practice.Service("Radio", -1);
        practice.Act({.day = "30/04/2008", .montant = 300});
        practice.Act({.day = "01/05/2008", .montant = 1200});
        practice.Act({.day = "17/06/2008", .montant = 500, .num_presta = 3});
        practice.Act({.day = "15/06/2007", .montant = 99});
        practice.Expense({.day = "31/05/2008", .montant = 40});
        practice.Write("Update Permn set Charge9 = 10");
        core::ProgramFolder = QStringLiteral(REPORTS_FOLDER);
    }

    static void ClickOn(report::ChartView& chart, int label)
    {
        QTest::mouseClick(&chart, Qt::LeftButton, {}, chart.AreaOf(label).center().toPoint());
    }

    QStringList Scratch() { return tests::RowsOf(practice, "select denom, C1, C2, C3, C4, C5, C6, C7 from RCP2"); }
    QStringList Headings() { return tests::RowsOf(practice, "select ch4, ch5, ch6 from textes"); }
};

} // namespace

TEST_F(EvolutionScreen, ShowsTheYearUpToTodayAndStepsThroughIt)
{
    auto& screen = OpenScreen();
    EXPECT_EQ(AccessibilityFaults(screen), QStringList());
    EXPECT_EQ(screen.SSPanel1.Caption(), "Évolution, juillet 2007 à juin 2008");
    EXPECT_EQ(tests::RowOf(screen.Grid1, 10),
              QStringList({" Mai 2008", "1 200.00", "310.00", "890.00", "40.00", "-310.00"}));
    EXPECT_EQ(tests::RowOf(screen.Grid1, 11), QStringList({" Juin 2008", "500.00", "300.00", "200.00", "", "-201.00"}));
    EXPECT_EQ(screen.Label3[Evolution::Receipts].text(), "2 000.00");
    EXPECT_EQ(screen.Chart1.Chart().series[4].values[10], std::nullopt); // nothing was recorded in May 2007
    EXPECT_EQ(screen.Chart1.Chart().series[4].values[11], -201);

    Press(screen.Chart1, Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(screen.SSPanel1.Caption(), "Évolution, juin 2007 à mai 2008");
    Click(screen.Option1[Evolution::TwoYears]);
    EXPECT_EQ(screen.SSPanel1.Caption(), "Évolution, juin 2006 à mai 2008");
    Press(screen.Grid1, Qt::Key_F4);
    EXPECT_TRUE(screen.Combo1.hasFocus());
    Press(screen.Combo1, Qt::Key_Up);
    EXPECT_EQ(screen.SSPanel1.Caption(), "Évolution, mai 2006 à avril 2008");

    for (const char* year : {"", "1899", "9999", "2008.5"}) {
        screen.Text1.setText(year);
        ExpectRefusal("Année incorrecte");
        Press(screen.Text1, Qt::Key_Return);
        EXPECT_TRUE(screen.Text1.hasFocus());
    }
    Press(screen.Text1, Qt::Key_Escape);
    EXPECT_EQ(screen.Text1.text(), "2008");
    screen.Text1.setText("2009");
    Press(screen.Text1, Qt::Key_Return);
    EXPECT_EQ(screen.SSPanel1.Caption(), "Évolution, mai 2007 à avril 2009");
    Press(screen.Grid1, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(screen.isVisible());
}

TEST_F(EvolutionScreen, SaysWhatAMonthHoldsAndOpensItsResult)
{
    auto& screen = OpenScreen();
    const QString june =
        "Juin 2008\u00A0: recettes 500.00 DA, charges 300.00 DA, net 200.00 DA (un an plus tôt -201.00 DA)\u00A0; "
        "dépenses 0.00 DA";
    const QString may =
        "Mai 2008\u00A0: recettes 1 200.00 DA, charges 310.00 DA, net 890.00 DA\u00A0; dépenses 40.00 DA";
    EXPECT_TRUE(screen.Chart1.hasFocus());
    EXPECT_EQ(screen.Label2.text(), june);
    QTest::mouseMove(&screen.Chart1, screen.Chart1.AreaOf(10).center().toPoint());
    EXPECT_EQ(screen.Label2.text(), may);
    QTest::mouseMove(&screen.Chart1, QPoint(2, 2));
    EXPECT_EQ(screen.Label2.text(), june);

    const struct {
        Qt::Key key;
        int month;
    } moves[] = {{Qt::Key_Right, 11}, {Qt::Key_Left, 10}, {Qt::Key_Home, 0}, {Qt::Key_Up, 0},
                 {Qt::Key_Down, 1},   {Qt::Key_End, 11},  {Qt::Key_Left, 10}};
    for (const auto& [key, month] : moves) {
        Press(screen.Chart1, key);
        EXPECT_EQ(tests::HighlightedRow(screen.Grid1), month);
    }
    EXPECT_EQ(screen.Chart1.accessibleName(), "Graphique des mois\u00A0: " + may);
    Click(screen.Grid1, 11);
    EXPECT_EQ(screen.Label2.text(), june);
    ClickOn(screen.Chart1, 10);

    const auto expectMay = [this] {
        desk.WhenModal<Result>([](Result& result) {
            EXPECT_EQ(result.SSPanel1.Caption(), "Resultat de l'activité du  01/05/2008 au 31/05/2008");
            EXPECT_EQ(result.Net.text(), "  890.00");
            EXPECT_FALSE(result.Image3.isVisible());
            result.Unload();
        });
    };
    expectMay();
    Press(screen.Chart1, Qt::Key_Return);
    expectMay();
    Press(screen.Grid1, Qt::Key_Return);
    expectMay();
    DoubleClick(screen.Grid1, 10);
    desk.Verify();
}

TEST_F(EvolutionScreen, OpensTheMonthsOfAServiceByAClickAndLeavesThemByEscape)
{
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.Grid2.Text(0, Evolution::ServiceName), ""); // filled when it is first shown
    Press(screen.Chart1, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(tests::RowOf(screen.Grid2, 0), QStringList({" Radio", "1", "33.3", "500.00", "25.0"}));
    EXPECT_EQ(tests::RowOf(screen.Grid2, 1), QStringList({" Consultation", "2", "66.7", "1 500.00", "75.0"}));
    EXPECT_EQ(tests::RowOf(screen.Grid2, 2), QStringList({" ECG", "", "", "", ""}));
    EXPECT_EQ(screen.Label5.text(), "Total\u00A0: 3 actes, recettes 2 000.00 DA");
    EXPECT_EQ(screen.Label4.text(), "Radio\u00A0: recettes 500.00 DA (25.0 %), 1 acte (33.3 %)");

    ClickOn(screen.Chart2, 1);
    EXPECT_EQ(screen.SSPanel2.Caption(), "Consultation");
    EXPECT_FALSE(screen.Grid2.isVisible());
    EXPECT_EQ(tests::RowOf(screen.Grid3, 10), QStringList({" Mai 2008", "1", "1 200.00"}));
    Press(screen.Chart2, Qt::Key_Left);
    EXPECT_EQ(screen.Label4.text(), "Consultation, mai 2008\u00A0: recettes 1 200.00 DA, 1 acte");
    Press(screen.Chart2, Qt::Key_Left, Qt::AltModifier); // stays with the service
    EXPECT_EQ(tests::RowOf(screen.Grid3, 11), QStringList({" Mai 2008", "1", "1 200.00"}));
    Press(screen.Chart2, Qt::Key_Escape);
    EXPECT_TRUE(screen.Grid2.isVisible());
    EXPECT_EQ(tests::HighlightedRow(screen.Grid2), 1);
    Press(screen.Grid2, Qt::Key_Return);
    EXPECT_EQ(screen.SSPanel2.Caption(), "Consultation");
    practice.Write("delete from Presta where num = 2");
    practice.Write("delete from Presta where num = 3");
    Click(screen.Image3[Evolution::Next]); // the list has become shorter
    EXPECT_EQ(tests::ColumnOf(screen.Grid2, 0), QStringList("Consultation"));
}

TEST_F(EvolutionScreen, PrintsThePageShown)
{
    auto& screen = OpenScreen();
    tests::ExpectPreview(desk, "Évolution, juillet 2007 à juin 2008");
    Press(screen.Chart1, Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(core::ReportName, "ZEP_EVO1.RPT");
    EXPECT_EQ(Scratch().mid(9), QStringList({"avr. 2008|300|300|0|0|-300|-|1", "mai 2008|1200|310|890|40|-310|-|1",
                                             "juin 2008|500|300|200|0|-201|-|2"}));
    EXPECT_EQ(Headings(),
              QStringList(
                  "Évolution, juillet 2007 à juin 2008|Charges\u00A0: la charge par jour d'aujourd'hui, 10.00 DA, pour "
                  "chaque jour de tous les mois. Les dépenses n'entrent pas dans le net. Les mois avant juin 2007, où "
                  "rien n'est enregistré, ne sont pas dessinés.|Aucune recette et aucune dépense, juillet 2007 à juin "
                  "2008"));

    screen.SSTab1.setCurrentIndex(Evolution::ServicesPage);
    tests::ExpectPreview(desk, "Évolution, juillet 2007 à juin 2008, par unité");
    Click(screen.Image1[Evolution::Print]);
    EXPECT_EQ(core::ReportName, "ZEP_EVO2.RPT");
    EXPECT_EQ(Scratch().mid(1), QStringList({"Consultation|2|66.6666666666667|1500|75|-|-|-", "ECG|0|0|0|0|-|-|-"}));

    screen.ShowService(1);
    desk.WhenModal<report::PreviewWindow>([](report::PreviewWindow& preview) {
        const pages::Page page = preview.Pages().MakePage(0);
        const auto printed = [&page](const char* text) {
            return std::ranges::count(page.runs, QString(text), &pages::Run::text);
        };
        EXPECT_EQ(printed("Recettes"), 2); // of the chart and of the table
        EXPECT_EQ(printed("Charges") + printed("Net"), 0);
        EXPECT_EQ(printed("1 500.00"), 1);
        preview.Unload();
    });
    Click(screen.Image1[Evolution::Print]);
    EXPECT_EQ(core::ReportName, "ZEP_EVO1.RPT");
    EXPECT_EQ(Scratch().last(), "juin 2008|0|-|-|-|-|0|1");
}

TEST_F(EvolutionScreen, SaysThatNothingWasRecorded)
{
    for (const char* table : {"Actes", "Recettes", "Presta"})
        practice.Write(QString("delete from ") + table);
    auto& screen = OpenScreen();
    EXPECT_EQ(screen.Chart1.accessibleName(),
              "Graphique des mois\u00A0: Aucune recette et aucune dépense, juillet 2007 à juin 2008");
    EXPECT_TRUE(screen.Chart1.AreaOf(0).isEmpty());
    EXPECT_EQ(screen.Grid1.Text(11, Evolution::Charges), "300.00");
    Press(screen.Chart1, Qt::Key_Left);
    screen.SSTab1.setCurrentIndex(Evolution::ServicesPage);
    Press(screen.Chart2, Qt::Key_Return);
    Press(screen.Grid2, Qt::Key_Return);
    desk.WhenModal<report::PreviewWindow>([](report::PreviewWindow& preview) { preview.Unload(); });
    screen.PrintPage();
    EXPECT_FALSE(screen.SSPanel2.isVisible());
}

TEST_F(EvolutionScreen, OpensFromTheScreensOfTheMonthAndTheResult)
{
    practice.Open();
    const auto expect = [this] { desk.WhenModal<Evolution>([](Evolution& screen) { screen.Unload(); }); };
    expect();
    Click(desk.Open<analysis::Mens_Act>().Image4);
    expect();
    Click(desk.Open<Result>().Image3);
    desk.Verify();
}
