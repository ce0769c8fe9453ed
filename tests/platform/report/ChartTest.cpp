#include "platform/pages/TemplateCheck.h"
#include "platform/report/PageText.h"
#include "platform/report/ReportPractice.h"
#include "support/Printing.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using pages::Chart;
using pages::ChartSeries;
using Kind = ChartSeries::Kind;
using pages::Tint;

const QRectF Box(10, 20, 180, 80);

pages::Page Draw(const Chart& chart)
{
    pages::Page page;
    pages::AddChart(page, chart, Box);
    return page;
}

const pages::Run* FindRun(const pages::Page& page, const QString& text)
{
    const auto found = std::ranges::find(page.runs, text, &pages::Run::text);
    return found == page.runs.end() ? nullptr : &*found;
}

/// The outlines of bars in a colour, without the sample in the legend, from the left.
std::vector<QRectF> Bars(const pages::Page& page, Tint tint)
{
    std::vector<QRectF> bars;
    for (const pages::Shape& shape : page.shapes)
        if (shape.line == tint && shape.points.size() == 5)
            bars.emplace_back(shape.points[0], shape.points[2]);
    if (!bars.empty())
        bars.pop_back();
    return bars;
}

/// The height of a figure's line on the axis.
double LineOf(const pages::Page& page, const QString& figure)
{
    const pages::Run* run = FindRun(page, figure);
    return run != nullptr ? run->box.center().y() : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

TEST(ChartAxis, HasRoundStepsAroundAllFiguresAndZero)
{
    const struct {
        double lowest, highest;
        int mostSteps;
        double from, to, step;
    } rows[] = {
        {0, 0, 5, 0, 1, 1},
        {0, 0.4, 5, 0, 1, 1},
        {0, 5, 5, 0, 5, 1},
        {0, 5.01, 5, 0, 6, 2},
        {0, 11, 5, 0, 15, 5},
        {0, 26, 5, 0, 30, 10},
        {900000, 1234567, 6, 0, 1500000, 500000},
        {100, 1234567, 7, 0, 1400000, 200000},
        {-1, 1000000, 6, -200000, 1000000, 200000},
        {-206408.85, -5, 4, -300000, 0, 100000},
        {-30, 70, 2, -100, 100, 100},
    };
    for (const auto& row : rows) {
        const pages::ChartAxis axis = pages::RoundAxis(row.lowest, row.highest, row.mostSteps);
        EXPECT_DOUBLE_EQ(axis.lowest, row.from) << row.highest;
        EXPECT_DOUBLE_EQ(axis.highest, row.to) << row.highest;
        EXPECT_DOUBLE_EQ(axis.step, row.step) << row.highest;
        EXPECT_EQ(axis.Steps(), std::lround((row.to - row.from) / row.step));
    }
}

TEST(Chart, DrawsEachFigureAtItsHeightAndLossesBelowTheAxis)
{
    const double none = std::numeric_limits<double>::infinity(); // can't be drawn
    const pages::Page page = Draw({.labels = {"nov. 2007", "déc. 2007", "janv. 2008"},
                                   .series = {{"Recettes", Kind::Bar, {100, 40, none}},
                                              {"Charges", Kind::Bar, {50, 50, std::nullopt}},
                                              {"Dépenses", Kind::Bar, {-10, 0, 100}},
                                              {"Net", Kind::Line, {50, -10, std::nullopt}},
                                              {"Avant", Kind::ThinLine, {std::nullopt, 20, std::nullopt}},
                                              {"Rien", Kind::Bar, {std::nullopt, std::nullopt, std::nullopt}}},
                                   .unit = "DA"});
    const double zero = LineOf(page, "0");
    const double step = zero - LineOf(page, "20");
    const auto heightOf = [&](double figure) { return figure / 20 * step; };
    EXPECT_NEAR(LineOf(page, "-20"), zero + step, 1e-6);
    EXPECT_NEAR(LineOf(page, "100"), zero - 5 * step, 1e-6);

    const auto receipts = Bars(page, Tint::First);
    const auto charges = Bars(page, Tint::Second);
    const auto expenses = Bars(page, Tint::Third);
    ASSERT_EQ(receipts.size(), 2);
    ASSERT_EQ(charges.size(), 2);
    ASSERT_EQ(expenses.size(), 2); // a bar of 0 isn't drawn
    EXPECT_NEAR(receipts[1].bottom(), zero, 1e-6);
    EXPECT_NEAR(receipts[1].height(), heightOf(40), 1e-6);
    EXPECT_NEAR(expenses[0].top(), zero, 1e-6);
    EXPECT_NEAR(expenses[0].height(), heightOf(10), 1e-6);
    EXPECT_LT(receipts[0].right(), charges[0].left());
    EXPECT_LT(charges[0].right(), expenses[0].left());
    EXPECT_LT(expenses[0].right(), receipts[1].left());

    // Told apart without colour: filled, hatched, hollow; a line with diamonds, a dashed one.
    const auto count = [&page](const auto& condition) { return std::ranges::count_if(page.shapes, condition); };
    const auto isFilled = [](Tint tint) { return [tint](const pages::Shape& shape) { return shape.fill == tint; }; };
    EXPECT_EQ(count(isFilled(Tint::First)), 3); // with the sample
    EXPECT_EQ(count(isFilled(Tint::Second)) + count(isFilled(Tint::Third)), 0);
    for (const pages::Shape& shape : page.shapes) {
        if (shape.line != Tint::Second || shape.points.size() != 2)
            continue;
        const bool isWithin = std::ranges::any_of(charges, [&](const QRectF& bar) {
            return bar.adjusted(-0.01, -0.01, 0.01, 0.01).contains(shape.points[0]) &&
                   bar.adjusted(-0.01, -0.01, 0.01, 0.01).contains(shape.points[1]);
        });
        EXPECT_TRUE(isWithin || shape.points[0].y() < Box.top() + 6);
    }
    EXPECT_EQ(count([](const pages::Shape& shape) { return shape.dashed; }), 2); // a lone figure and the sample
    const auto lone = std::ranges::find(page.shapes, true, &pages::Shape::dashed);
    EXPECT_EQ(lone->points[0].y(), lone->points[1].y());
    EXPECT_NEAR((lone->points[0].x() + lone->points[1].x()) / 2, Box.center().x(), 10) << "in the middle group";
    ASSERT_EQ(count(isFilled(Tint::Loss)), 1);
    const auto loss = std::ranges::find(page.shapes, Tint::Loss, &pages::Shape::fill);
    EXPECT_NEAR((loss->points[0].y() + loss->points[2].y()) / 2, zero + heightOf(10), 1e-6);

    EXPECT_EQ(FindRun(page, "Rien"), nullptr);
    EXPECT_EQ(std::ranges::count(page.runs, QString("2007"), &pages::Run::text), 1); // where the year changes
    EXPECT_NE(FindRun(page, "2008"), nullptr);
}

TEST(Chart, StaysInItsBoxAndDrawsNoLabelsOverEachOther)
{
    for (const int count : {1, 2, 12, 24, 60}) {
        for (const bool across : {false, true}) {
            Chart chart{.series = {{"Recettes"}, {"Charges"}},
                        .unit = "DA",
                        .note = QString("mot ").repeated(60),
                        .across = across};
            for (int label = 0; label < count; ++label) {
                chart.labels << QString("sept. %1").arg(2000 + label / 12);
                chart.series[0].values.emplace_back(999'999'999.0 - label);
                chart.series[1].values.emplace_back(label % 2 == 0 ? -1e11 : 5);
            }
            pages::Page page;
            const auto areas = pages::AddChart(page, chart, Box);
            ASSERT_EQ(areas.size(), count);
            double labelEnd = 0;
            for (const pages::Run& run : page.runs) {
                EXPECT_TRUE(Box.adjusted(-0.01, -3, 2.01, 0.01).contains(run.box)) << run.text.toStdString() << count;
                if (run.text != "sept." || across)
                    continue;
                EXPECT_GE(run.box.left(), labelEnd - 0.01) << count;
                EXPECT_GE(run.box.width(), 6);
                labelEnd = run.box.right();
            }
            for (const pages::Shape& shape : page.shapes)
                for (const QPointF& point : shape.points)
                    EXPECT_TRUE(Box.contains(point)) << count;
        }
    }
}

TEST(Chart, OfATemplateLeavesRoomForTheRowsOnTheSamePage)
{
    for (const int services : {2, 12, 20, 28}) {
        tests::ReportPractice practice;
        for (int service = 0; service < services; ++service)
            practice.Add(
                "RCP2",
                {{"denom", QString("Unité %1").arg(service)}, {"C1", 3}, {"C2", 4.0}, {"C3", 5.0}, {"C4", 9.0}});
        EXPECT_EQ(practice.LayOut(practice.Template("ZEP_EVO2.RPT")).PageCount(), 1) << services;
    }
    tests::ReportPractice practice; // without rows there is no chart
    EXPECT_EQ(tests::TextsOf(practice.LayOut(practice.Template("ZEP_EVO2.RPT")), 0).count("Part des actes"), 0);
}

TEST(Chart, OfATemplateIsChecked)
{
    const QByteArray body = "\n[rows]\nselect = \"select num from Prov\"\n[[column]]\nfield = \"num\"\nwidth_mm = 50\n";
    const struct {
        const char* chart;
        int line;
        const char* reason;
    } rows[] = {
        {"[chart]\nlabel = \"num\"", 1, "graphique sans série"},
        {"[chart]\nlabel = \"nom\"\n[[chart.series]]\nfield = \"num\"", 1, "champ inconnu « nom »"},
        {"[chart]\nlabel = \"num\"\n[[chart.series]]\nfield = \"Mt\"", 3, "champ inconnu « Mt »"},
        {"[chart]\nlabel = \"num\"\n[[chart.series]]\nfield = \"num\"\nkind = \"pie\"", 5, "genre inconnu « pie »"},
        {"[chart]\nlabel = \"num\"\nheight_mm = 230\n[[chart.series]]\nfield = \"num\"", 0,
         "les marges, l'en-tête et le graphique"},
        {"[chart]\nlabel = \"num\"\nnote = \"{ch99}\"\n[[chart.series]]\nfield = \"num\"", 3, "repère inconnu"},
    };
    tests::ReportPractice practice;
    for (const auto& row : rows) {
        const auto faults = pages::CheckTemplate(practice.WriteTemplate(row.chart + body), practice.Source());
        ASSERT_EQ(faults.size(), 1) << row.chart;
        EXPECT_TRUE(faults[0].reason.startsWith(QString::fromUtf8(row.reason))) << qPrintable(faults[0].reason);
        EXPECT_TRUE(row.line == 0 || faults[0].line == row.line) << row.chart << faults[0].line;
    }
}
