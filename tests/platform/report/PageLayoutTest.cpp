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
select Presta.denom, Actes.num, Actes.montant + 0.004 as montant from Prov
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
            EXPECT_EQ(texts.contains("Total"), page == layout.PageCount() - 1) << page;
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
    EXPECT_EQ(sumBehind("Total Consultation"), "71 262.70"); // of the amounts as stored
    EXPECT_EQ(sumBehind("Total Radiologie"), "138 775.20");
    EXPECT_EQ(sumBehind("Total Échographie abdominale"), "140 275.20");
    EXPECT_EQ(sumBehind("Total"), "350 313.10");
}

struct Ink {
    int first = 1000, last = -1, darkest = 255;
};

/// Paints a page with one text, from 200 to 700, at ten dots per millimetre.
Ink InkOf(const QString& text, Qt::Alignment alignment, bool isFaint = false)
{
    pages::Page page;
    page.paper = {100, 10};
    page.runs.push_back({{20, 2, 50, 6}, text, alignment, 9, false, false, isFaint});
    QImage sheet(1000, 100, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    paper::PagePainter().Paint(painter, page, 10);
    painter.end();
    Ink ink;
    for (int x = 0; x < sheet.width(); ++x)
        for (int y = 0; y < sheet.height(); ++y)
            if (const int grey = qGray(sheet.pixel(x, y)); grey < 128)
                ink = {std::min(ink.first, x), x, std::min(ink.darkest, grey)};
    return ink;
}

TEST(PagePainter, AlignsTextsInTheirBoxes)
{
    for (const QString& text : {QString("HIH"), QString("بن علي")}) { // set by letter, and shaped
        const Ink centre = InkOf(text, Qt::AlignHCenter);
        EXPECT_NEAR(InkOf(text, Qt::AlignLeft).first, 200, 6) << qPrintable(text);
        EXPECT_NEAR(InkOf(text, Qt::AlignRight).last, 700, 6) << qPrintable(text);
        EXPECT_NEAR((centre.first + centre.last) / 2.0, 450, 4) << qPrintable(text);
        EXPECT_LT(centre.darkest, 50);
        EXPECT_GT(InkOf(text, Qt::AlignLeft, true).darkest, 80) << "a faint text is grey";
    }
    for (const QString& wide : {QString(60, 'H'), QString(60, QChar(0x0639))}) { // stays within its box
        EXPECT_LE(InkOf(wide, Qt::AlignRight).last, 701);
        EXPECT_GE(InkOf(wide, Qt::AlignRight).first, 199);
    }
}

TEST(PageLayout, ReformatsAmountsOfTheScreen)
{
    const QStringList onScreen = {"-   883 348.15",
                                  "- 883 348.15",
                                  "  100.00 ",
                                  "    .50 ",
                                  "19999 999.98",
                                  " -1 234.50",
                                  "-.00",
                                  "12",
                                  "",
                                  "   ",
                                  "-",
                                  "Journée du 17/06/2008",
                                  "1,5"};
    QStringList plain, masked;
    for (const QString& text : onScreen) {
        plain << pages::AmountText(text);
        masked << pages::AmountText(text, "# ### ##0.00");
    }
    EXPECT_EQ(plain.join('|'),
              "-883 348.15|-883 348.15|100.00|.50|19999 999.98|-1 234.50|-.00|12||   |-|Journée du 17/06/2008|1,5");
    EXPECT_EQ(
        masked.join('|'),
        "-883 348.15|-883 348.15|100.00|0.50|19 999 999.98|-1 234.50|0.00|12.00||   |-|Journée du 17/06/2008|1,5");
}

TEST(PageLayout, PrintsValuesUnderMasksAndChoices)
{
    const auto texts = [](const pages::Column& column, const QList<dao::Value>& values) {
        QStringList printed;
        for (const dao::Value& value : values)
            printed << pages::CellText(column, value);
        return printed.join('|');
    };
    pages::Column money, date, code;
    money.mask = "# ### ##0.00";
    EXPECT_EQ(texts(money, {1234.5, -12.5, 2.675, 0, {}, "texte", std::numeric_limits<double>::infinity()}),
              "1 234.50|-12.50|2.68|0.00||texte|?");
    money.blankZero = true;
    EXPECT_EQ(texts(money, {0.0, -12.5}), "|-12.50");
    code.choices = {"NP", "R-"};
    EXPECT_EQ(texts(code, {1, 7, -1, 0.5}), "R-|7|-1|0.5"); // an unknown code is shown
    date.mask = "dd/mm/yyyy";
    EXPECT_EQ(texts(date, {"2008-06-17", "17/06/2008"}), "17/06/2008|17/06/2008");
}

TEST(PageLayout, HidesColumnsWithoutAValueUnlessAllAre)
{
    const QByteArray optional =
        QByteArray(GroupedTemplate).replace("width_mm = 60", "width_mm = 60\nhide_empty = true");
    ReportPractice practice;
    const auto widthOf = [&](const QString& text) {
        const pages::PageLayout layout = practice.LayOut(practice.WriteTemplate(optional));
        const std::vector<pages::Run> runs = layout.MakePage(0).runs;
        const auto found = std::ranges::find(runs, text, &pages::Run::text);
        return found == runs.end() ? 0 : found->box.width();
    };
    EXPECT_NEAR(widthOf("Aucune ligne"), 120, 0.01);
    for (const dao::Value& later : {dao::Value(800), dao::Value()}) {
        const dao::Key first = practice.Add("Actes", {{"num_presta", 1}, {"montant", dao::Value()}});
        const dao::Key second = practice.Add("Actes", {{"num_presta", 1}, {"montant", later}});
        practice.Database().Execute("delete from Prov");
        practice.Add("Prov", {{"num", first}});
        practice.Add("Prov", {{"num", second}});
        EXPECT_NEAR(widthOf("Montant"), later.IsNull() ? 0 : 58, 1);
        EXPECT_NEAR(widthOf("Acte"), later.IsNull() ? 118 : 58, 1);
    }
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
}

} // namespace
