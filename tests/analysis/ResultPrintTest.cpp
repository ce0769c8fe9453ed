#include "analysis/Result.h"
#include "data/ConfigurationFile.h"
#include "menu.h"
#include "platform/pages/PageLayout.h"
#include "support/Files.h"
#include "support/MainWindow.h"
#include "support/Reports.h"
#include "support/ScreenTest.h"

using analysis::Result;
using core::PeriodChooser;

namespace {

class ResultPrinting : public tests::ScreenTest<Result> {
protected:
    ResultPrinting()
    {
        practice.Write("Update textes set ch1 = 'vieux', ch4 = 'titre 4', ch5 = 'titre 5', ch9 = 'titre 9'");
        practice.Write("Insert into Prov (num, unite) values (7, 'ancienne ligne')");
        practice.Write("Update Permn set Charge9 = 100");
        practice.Service("Radio", -1);
        practice.Act({.montant = 40.5});
        practice.Act({.montant = 2});
        tests::PutTemplate(practice, "ZEP_Rstt.RPT");
    }

    QStringList Headings() { return tests::RowsOf(practice, "select ch1, ch4, ch5, ch6, ch7, ch8, ch9 from textes"); }
    QStringList Scratch() { return tests::RowsOf(practice, "select num, unite, Page, Mt from Prov"); }
};

} // namespace

TEST_F(ResultPrinting, PrintsTheResultAsShown)
{
    auto& screen = OpenScreen();
    tests::AcceptDay(screen.Dates, "17/06/2008");
    tests::ExpectPreview(desk, "Resultat de l'activité du 17-06-2008");
    Press(screen.Grid1, Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(core::ReportName, "ZEP_Rstt.RPT");
    EXPECT_EQ(Headings(), QStringList("Cabinet d'Été|titre 4|Resultat de l'activité du  17/06/2008|"
                                      "Charges pour une journée|  100.00| - 57.50|titre 9"));
    EXPECT_EQ(Scratch(), QStringList({"-|Radio|0|0", "-|Consultation|2|42.5", "-|ECG|0|0"}));

    practice.Write("delete from Presta"); // a practice without services prints one empty row
    tests::AcceptDay(screen.Dates, "17/06/2008");
    tests::ExpectPreview(desk, "Resultat de l'activité du 17-06-2008");
    Click(screen.Image1[Result::Print]);
    EXPECT_EQ(Scratch(), QStringList("-||0|0"));
}

TEST_F(ResultPrinting, SpeaksArabicFromTheMenuToThePaper)
{
    tests::WriteFile(practice.File("ZEP_CFIG.CFG"),
                     data::EncodeConfiguration({.language = 1, .accessValue = 3, .letterhead = {}}));
    auto& main = desk.Open<core::Form1>(MenuScreens());
    tests::TypeCode(desk, main, practice.Folder(), "6");

    const QString periodTitle = " نـتـيجة الـنشاط مـن 2008/06/16 إلى 2008/06/17";
    QStringList printed;
    desk.WhenModal<Result>([&](Result& screen) {
        EXPECT_EQ(QStringList({screen.ActsSum.text(), screen.ChargesCaption.text(), screen.NetCaption.text()}),
                  QStringList({" الـبضاعـة", "الــتــكـالــيـف", "الـنـاتـج  الـصـافـي"}));
        EXPECT_EQ(
            QStringList({screen.Dates.DayLabel.text(), screen.Dates.FirstLabel.text(), screen.Dates.LastLabel.text(),
                         screen.Dates.SSTab2.tabText(0), screen.Dates.SSTab2.tabText(1)}),
            QStringList({"الـتاريـخ", "مـن", "إلـى", "في يـوم", "في مـدة"}));
        tests::AcceptDay(screen.Dates, "17/06/2008");
        EXPECT_EQ(screen.SSPanel1.Caption(), " نـتـيـجـة  الـنـشاط  الـمـسـجلة  لـيـوم 2008/06/17");
        EXPECT_EQ(screen.ChargesCaption.text(), "تـكالـيف  يـوم  واحـد");
        EXPECT_EQ(screen.ActsSum.text(), "2");
        const char* const tips[] = {"تغيير الـمدة", "طـباعـة", "مـغادرة"};
        for (int action = Result::OtherDate; action <= Result::Quit; ++action) {
            screen.Image1[action].setFocus(Qt::TabFocusReason);
            EXPECT_EQ(screen.Bulle.text(), tips[action]);
            EXPECT_TRUE(screen.Bulle.isVisible());
        }
        tests::AcceptPeriod(screen.Dates, "16/06/2008", "17/06/2008");
        EXPECT_EQ(screen.SSPanel1.Caption(), periodTitle);
        desk.WhenModal<report::PreviewWindow>([&](report::PreviewWindow& preview) {
            for (const pages::Run& run : preview.Pages().MakePage(0).runs)
                printed << run.text;
            preview.Unload();
        });
        Click(screen.Image1[Result::Print]);
        screen.Unload();
    });
    main.Entry("mnu_resultat")->trigger();

    EXPECT_TRUE(printed.join('\n').contains(periodTitle.trimmed()));
    EXPECT_EQ(Headings(), QStringList("|titre 4|" + periodTitle + "| تـكالـيف 2  يــومـا |  200.00| - 157.50|titre 9"));
}
