#include "analysis/Result.h"
#include "core/globals.h"
#include "data/ConfigurationFile.h"
#include "menu.h"
#include "platform/pages/PageLayout.h"
#include "support/Dates.h"
#include "support/MainWindow.h"
#include "support/Reports.h"

#include <QFile>
#include <QPainter>

using analysis::Result;
using core::PeriodChooser;
using forms::Icon;

namespace {

class ResultPrinting : public testing::Test {
protected:
    ResultPrinting()
    {
        practice.Write("Update textes set ch1 = 'vieux', ch4 = 'titre 4', ch5 = 'titre 5', ch9 = 'titre 9'");
        practice.Write("Insert into Prov (num, unite) values (7, 'ancienne ligne')");
        practice.Write("Update Permn set Charge9 = 100");
    }

    void PutTemplate()
    {
        QFile file(practice.File("ZEP_Rstt.RPT"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("title = \"Résultat net\"\n"
                   "[[heading]]\ntext = \"{ch5}\"\nalign = \"centre\"\npoints = 14\n"
                   "[rows]\nselect = \"select unite, Page, Mt from Prov order by Prov.rowid\"\n"
                   "[[column]]\nheading = \"Unité\"\nfield = \"unite\"\nwidth_mm = 100\n"
                   "[[ending]]\nlabel = \"{ch6}\"\nvalue = \"{ch7}\"\n"
                   "[[ending]]\nlabel = \"Résultat net\"\nvalue = \"{ch8}\"\n");
    }

    QStringList Headings() { return tests::RowsOf(practice, "select ch1, ch4, ch5, ch6, ch7, ch8, ch9 from textes"); }
    QStringList Scratch() { return tests::RowsOf(practice, "select num, unite, Page, Mt from Prov"); }

    tests::Practice practice;
    ScriptedDesk desk;
};

} // namespace

TEST_F(ResultPrinting, PrintsTheResultAsShown)
{
    practice.Act({.montant = 40.5});
    practice.Act({.montant = 2});
    PutTemplate();
    practice.Open();
    auto& screen = desk.Open<Result>();
    Click(screen.Dates.Image2[PeriodChooser::AcceptDay]);

    tests::ExpectPreview(desk, "Resultat de l'activité du 17-06-2008");
    Press(screen.Grid1, Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(core::ReportName, "ZEP_Rstt.RPT");
    EXPECT_EQ(Headings(), QStringList("Cabinet d'Été|titre 4|Resultat de l'activité du  17/06/2008|"
                                      "Charges pour une journée|  100.00| - 57.50|titre 9"));
    EXPECT_EQ(Scratch(), QStringList({"-|Consultation|2|42.5", "-|ECG|0|0"}));

    core::TheDatabase.Execute("Delete * from Presta"); // a practice without services prints one empty row
    Click(screen.Image1[Result::OtherDate]);
    Click(screen.Dates.Image2[PeriodChooser::AcceptDay]);
    tests::ExpectPreview(desk, "Resultat de l'activité du 17-06-2008");
    Click(screen.Image1[Result::Print]);
    EXPECT_EQ(Scratch(), QStringList("-||0|0"));
}

namespace {

/// The horizontal extent of a label's ink, in pixels from its left.
std::pair<int, int> InkOf(QLabel& label)
{
    const QImage picture = label.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
    const int ground = qGray(picture.pixel(0, 0));
    std::pair<int, int> ink{picture.width(), 0};
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            if (qAbs(qGray(picture.pixel(x, y)) - ground) < 64)
                continue;
            ink = {qMin(ink.first, x), x};
            break;
        }
    }
    return ink;
}

} // namespace

TEST_F(ResultPrinting, SpeaksArabicFromTheMenuToThePaper)
{
    QFile configuration(practice.File("ZEP_CFIG.CFG"));
    ASSERT_TRUE(configuration.open(QIODevice::WriteOnly));
    configuration.write(data::EncodeConfiguration({.language = 1, .accessValue = 3, .letterhead = {}}));
    configuration.close();
    practice.Act({.montant = 40.5});
    PutTemplate();
    auto& main = desk.Open<core::Form1>(MenuScreens());
    tests::TypeCode(desk, main, practice.Folder(), "6");

    const QString periodTitle = " نـتـيجة الـنشاط مـن 2008/06/16 إلى 2008/06/17";
    QStringList printed;
    desk.WhenModal<Result>([&](Result& screen) {
        EXPECT_EQ(screen.ActsSum.text(), " الـبضاعـة");
        EXPECT_EQ(screen.ChargesCaption.text(), "الــتــكـالــيـف");
        EXPECT_EQ(screen.NetCaption.text(), "الـنـاتـج  الـصـافـي");
        EXPECT_EQ(screen.Dates.DayLabel.text(), "الـتاريـخ");
        EXPECT_EQ(screen.Dates.FirstLabel.text(), "مـن");
        EXPECT_EQ(screen.Dates.LastLabel.text(), "إلـى");
        EXPECT_EQ(screen.Dates.SSTab2.tabText(0), "في يـوم");
        EXPECT_EQ(screen.Dates.SSTab2.tabText(1), "في مـدة");
        Click(screen.Dates.Image2[PeriodChooser::AcceptDay]);
        EXPECT_EQ(screen.SSPanel1.Caption(), " نـتـيـجـة  الـنـشاط  الـمـسـجلة  لـيـوم 2008/06/17");
        EXPECT_EQ(screen.ChargesCaption.text(), "تـكالـيف  يـوم  واحـد");
        EXPECT_EQ(screen.ActsSum.text(), "1");
        const char* const tips[] = {"تغيير الـمدة", "طـباعـة", "مـغادرة"};
        for (int action = Result::OtherDate; action <= Result::Quit; ++action) {
            screen.Image1[action].setFocus(Qt::TabFocusReason);
            EXPECT_EQ(screen.Bulle.text(), tips[action]);
            EXPECT_TRUE(screen.Bulle.isVisible());
        }

        Click(screen.Image1[Result::OtherDate]);
        tests::AcceptPeriod(screen.Dates, "16/06/2008", "17/06/2008");
        EXPECT_EQ(screen.SSPanel1.Caption(), periodTitle);
        EXPECT_EQ(screen.ChargesCaption.text(), " تـكالـيف 2  يــومـا ");
        auto& title = *screen.SSPanel1.findChild<QLabel*>();
        const auto [left, right] = InkOf(title);
        EXPECT_GT(left, title.width() / 8) << "the title begins at the right";
        EXPECT_GT(right, title.width() - 16);

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
    EXPECT_EQ(Headings(), QStringList("||" + periodTitle + "| تـكالـيف 2  يــومـا |  200.00| - 159.50|titre 9")
                              .replaceInStrings("||" + periodTitle, "|titre 4|" + periodTitle));
}
