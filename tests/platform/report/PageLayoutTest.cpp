#include "platform/pages/ValueText.h"
#include "platform/paper/PagePainter.h"
#include "platform/report/PageText.h"
#include "platform/report/ReportPractice.h"
#include "support/Printing.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace {

using tests::ReportPractice;
using tests::TextsOf;

constexpr double BodyBottom = 297 - 15 - 8 + 0.01; // of an A4 sheet, above margin and footer

const QByteArray GroupedTemplate = R"(
title = "Actes par unité"
[rows]
select = """
select Presta.denom, Actes.num, Actes.montant from Prov
  join Actes on Actes.num = Prov.num join Presta on Presta.num = Actes.num_presta order by Presta.Ordre, Prov.rowid
"""
[[column]]
heading = "Acte"
field = "num"
width_mm = 60
[[column]]
heading = "Montant"
field = "montant"
width_mm = 60
align = "right"
mask = "# ### ##0.00"
total = true
[group]
field = "denom"
heading = "Unité {denom}"
subtotal = "Total {denom}"
[totals]
label = "Total"
)";

TEST(PageLayout, RepeatsColumnHeadsAndKeepsTheTotalsUnderARow)
{
    for (const int rows : {1, 2, 38, 39, 40, 41, 42, 43, 44, 45, 400}) {
        ReportPractice practice;
        practice.AddActs(rows, false);
        const pages::PageLayout layout = practice.LayOut(practice.Template("ZEP_R2.RPT"));

        QStringList numbers;
        for (int page = 0; page < layout.PageCount(); ++page) {
            const QStringList texts = TextsOf(layout, page);
            const qsizetype head = texts.indexOf("N°");
            ASSERT_GE(head, 0) << "page " << page + 1;
            EXPECT_EQ(texts.contains("Cabinet du Docteur Mourad SAÏDI") && head > 4, page == 0);
            EXPECT_EQ(texts.last(), QString("Page %1 / %2").arg(page + 1).arg(layout.PageCount()));
            const qsizetype before = numbers.size();
            for (const pages::Run& run : layout.MakePage(page).runs) {
                EXPECT_LE(run.box.bottom(), run.faint ? BodyBottom + 8 : BodyBottom) << qPrintable(run.text);
                if (run.alignment == Qt::AlignRight && run.box.right() < 30 && run.text != "N°")
                    numbers << run.text;
            }
            EXPECT_GT(numbers.size(), before) << "a page without a row, of " << rows;
        }
        ASSERT_EQ(numbers.size(), rows);
        for (int row = 0; row < rows; ++row)
            EXPECT_EQ(numbers[row], QString::number(row + 1));
    }
}

TEST(PageLayout, GroupsHaveSubtotalsAndRepeatTheirName)
{
    ReportPractice practice;
    practice.AddActs(150, false);
    const pages::PageLayout layout = practice.LayOut(practice.WriteTemplate(GroupedTemplate));
    ASSERT_GT(layout.PageCount(), 2);

    QStringList all;
    for (int page = 0; page < layout.PageCount(); ++page) {
        const QStringList texts = TextsOf(layout, page);
        EXPECT_TRUE(page == 0 || texts[2].startsWith("Unité ")) << qPrintable(texts[2]); // behind the two column heads
        EXPECT_FALSE(texts.last().startsWith("Unité ")) << "a heading parted from its rows";
        for (const pages::Run& run : layout.MakePage(page).runs)
            EXPECT_LE(run.box.bottom(), BodyBottom) << qPrintable(run.text) << ", page " << page + 1;
        all << texts;
    }
    EXPECT_EQ(all.filter("Unité Radiologie").first(), "Unité Radiologie");
    EXPECT_TRUE(all.contains("Unité Radiologie (suite)"));
    const auto sumBehind = [&](const QString& label) { return all.value(all.indexOf(label) + 1); };
    EXPECT_EQ(sumBehind("Total Consultation"), "71 262.50");
    EXPECT_EQ(sumBehind("Total Radiologie"), "138 775.00");
    EXPECT_EQ(sumBehind("Total Échographie abdominale"), "140 275.00");
    EXPECT_EQ(sumBehind("Total"), "350 312.50");
}

/// Paints a page with one text at ten dots per millimetre; returns the first and last column with ink.
std::pair<int, int> InkOf(const QString& text, Qt::Alignment alignment)
{
    pages::Page page;
    page.paper = {100, 10};
    page.runs.push_back({{20, 2, 50, 6}, text, alignment, 9, false, false, false});
    QImage sheet(1000, 100, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    paper::PagePainter().Paint(painter, page, 10);
    painter.end();
    int first = sheet.width();
    int last = -1;
    for (int x = 0; x < sheet.width(); ++x)
        for (int y = 0; y < sheet.height(); ++y)
            if (qGray(sheet.pixel(x, y)) < 128) {
                first = std::min(first, x);
                last = x;
            }
    return {first, last};
}

TEST(PagePainter, AlignsTextsInTheirBoxes)
{
    for (const QString& text : {QString("HIH"), QString("بن علي")}) { // set by letter, and shaped
        const auto left = InkOf(text, Qt::AlignLeft);
        const auto right = InkOf(text, Qt::AlignRight);
        const auto centre = InkOf(text, Qt::AlignHCenter);
        EXPECT_NEAR(left.first, 200, 6) << qPrintable(text);
        EXPECT_NEAR(right.second, 700, 6) << qPrintable(text);
        EXPECT_NEAR((centre.first + centre.second) / 2.0, 450, 4) << qPrintable(text);
    }
    EXPECT_LE(InkOf(QString(60, 'H'), Qt::AlignRight).second, 701);
    EXPECT_GE(InkOf(QString(60, 'H'), Qt::AlignRight).first, 199);
}

TEST(PageLayout, ReformatsAmountsOfTheScreen)
{
    const QString mask = "# ### ##0.00";
    const struct {
        const char* onScreen;
        const char* plain;
        const char* masked;
    } cases[] = {
        {"-   883 348.15", "-883 348.15", "-883 348.15"},
        {"- 883 348.15", "-883 348.15", "-883 348.15"},
        {"  100.00 ", "100.00", "100.00"},
        {"    .50 ", ".50", "0.50"},
        {"19999 999.98", "19999 999.98", "19 999 999.98"},
        {" -1 234.50", "-1 234.50", "-1 234.50"},
        {"-.00", "-.00", "0.00"},
        {"12", "12", "12.00"},
        {"", "", ""},
        {"   ", "   ", "   "},
        {"-", "-", "-"},
        {"Journée du 17/06/2008", "Journée du 17/06/2008", "Journée du 17/06/2008"},
        {"1,5", "1,5", "1,5"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(pages::AmountText(each.onScreen), each.plain);
        EXPECT_EQ(pages::AmountText(each.onScreen, mask), each.masked);
    }
}

TEST(PageLayout, PrintsValuesUnderMasksAndChoices)
{
    const auto text = [](pages::Column column, const dao::Value& value) { return pages::CellText(column, value); };
    pages::Column money;
    money.mask = "# ### ##0.00";
    EXPECT_EQ(text(money, 1234.5), "1 234.50");
    EXPECT_EQ(text(money, -12.5), "-12.50");
    EXPECT_EQ(text(money, 2.675), "2.68");
    EXPECT_EQ(text(money, 0), "0.00");
    EXPECT_EQ(text(money, {}), "");
    EXPECT_EQ(text(money, "n'est pas un nombre"), "n'est pas un nombre");
    EXPECT_EQ(text(money, std::numeric_limits<double>::infinity()), "?");
    money.blankZero = true;
    EXPECT_EQ(text(money, 0.0), "");
    EXPECT_EQ(text(money, -12.5), "-12.50");

    pages::Column code;
    code.choices = {"NP", "R-"};
    EXPECT_EQ(text(code, 1), "R-");
    EXPECT_EQ(text(code, 7), "7"); // an unknown code is shown
    EXPECT_EQ(text(code, -1), "-1");
    EXPECT_EQ(text(code, 0.5), "0.5");

    pages::Column date;
    date.mask = "dd/mm/yyyy";
    EXPECT_EQ(text(date, "2008-06-17"), "17/06/2008");
    EXPECT_EQ(text(date, "17/06/2008"), "17/06/2008");
}

TEST(PageLayout, ASharedHeadingSpansItsColumns)
{
    const QByteArray above = QByteArray(GroupedTemplate).replace("width_mm = 60", "width_mm = 60\nabove = \"Groupe\"");
    const QByteArray two = QByteArray(above).replace("above = \"Groupe\"\nalign", "above = \"Somme\"\nalign");
    ReportPractice practice;
    practice.AddActs(200, false);
    const auto boxOf = [&](const QByteArray& text, const QString& heading) {
        const pages::PageLayout layout = practice.LayOut(practice.WriteTemplate(text));
        const std::vector<pages::Run> runs = layout.MakePage(1).runs;
        EXPECT_EQ(std::ranges::count(runs, heading, &pages::Run::text), 1);
        for (int page = 0; page < layout.PageCount(); ++page)
            for (const pages::Run& run : layout.MakePage(page).runs)
                EXPECT_LE(run.box.bottom(), BodyBottom) << qPrintable(run.text);
        const auto found = std::ranges::find(runs, heading, &pages::Run::text);
        return found == runs.end() ? QRectF() : found->box;
    };
    EXPECT_NEAR(boxOf(above, "Groupe").width(), 120, 3);
    EXPECT_NEAR(boxOf(two, "Groupe").width(), 60, 3);
    EXPECT_NEAR(boxOf(two, "Somme").left(), 75, 3);
    EXPECT_LE(boxOf(two, "Somme").bottom(), boxOf(two, "Montant").top() + 0.01);
}

TEST(PageLayout, KeepsTheColumnsIfAllCouldBeHidden)
{
    const QByteArray optional =
        QByteArray(GroupedTemplate).replace("width_mm = 60", "width_mm = 60\nhide_empty = true");
    ReportPractice practice;
    const pages::PageLayout layout = practice.LayOut(practice.WriteTemplate(optional));
    const std::vector<pages::Run> runs = layout.MakePage(0).runs;
    const auto noRows = std::ranges::find(runs, QString("Aucune ligne"), &pages::Run::text);
    ASSERT_NE(noRows, runs.end());
    EXPECT_NEAR(noRows->box.width(), 120, 0.01);
}

TEST(PageLayout, HostileTextsPrintAsOneLineOfText)
{
    const QStringList hostile = {QString("<b>gras</b> & \"guillemets\" d'O'Brien"),
                                 QString("{ch4} {page}"),
                                 QString("un\tdeux\r\ntrois\u2028quatre"),
                                 QString("\u202e\u200f\u2067renversé\u200e"),
                                 QString(10'000, 'W'),
                                 QString(5'000, QChar(0x0639)),
                                 QString::fromUtf8(QByteArray("\0x", 2)),
                                 QString(QChar(0xD800)),
                                 QString("e") + QString(300, QChar(0x0301))};
    ReportPractice practice;
    for (const QString& name : hostile) {
        const dao::Key patient = practice.Add("Patients", {{"nom", name}, {"Prenom", name}});
        const dao::Key act =
            practice.Add("Actes", {{"num_patient", patient}, {"num_presta", 1}, {"HH", 0}, {"flag_R", 2}});
        practice.Add("Prov", {{"num", act}});
    }
    practice.SetTexts({{"ch1", hostile[0]}, {"ch4", hostile[1]}});
    const pages::PageLayout layout = practice.LayOut(practice.Template("ZEP_R2.RPT"));
    const QStringList texts = TextsOf(layout, 0);
    EXPECT_EQ(texts[0], hostile[0]);
    EXPECT_EQ(texts.count("{ch4} {page}"), 3); // heading, name and first name: replaced once, not recursively
    EXPECT_TRUE(texts.contains("un deux  trois quatre"));
    for (const QString& text : texts)
        EXPECT_LE(text.size(), 400);

    // A painted name stays within its column: the gap to its right is white.
    QImage sheet(840, 1188, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    paper::PagePainter().Paint(painter, layout.MakePage(0), 4);
    painter.end();
    for (const pages::Run& run : layout.MakePage(0).runs) {
        if (!run.text.startsWith("WWW"))
            continue;
        for (int y = static_cast<int>(run.box.top() * 4) + 1; y < static_cast<int>(run.box.bottom() * 4) - 1; ++y)
            for (int x = static_cast<int>(std::ceil(run.box.right() * 4)) + 1;
                 x < static_cast<int>((run.box.right() + 2) * 4); ++x)
                ASSERT_EQ(sheet.pixelColor(x, y), QColor(Qt::white)) << "the name runs over its column";
    }
}

} // namespace
