// Every figure of the charts and tables is that of "Résultat", on random practices.
#include "analysis/Result.h"
#include "evolution/Evolution.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/pages/Chart.h"
#include "support/ScreenTest.h"

#include <random>

using analysis::Result;
using basic::Val;
using evolution::Evolution;

namespace {

constexpr int Months = 24;
const QDate Last(2008, 2, 1); // of a leap year

class EvolutionFigures : public tests::ScreenTest<Evolution> {
protected:
    int Random(int bound) { return std::uniform_int_distribution(0, bound - 1)(random); }

    QString RandomDay()
    {
        const QDate month = Last.addMonths(-Random(Months + 10));
        const int days[] = {1, month.daysInMonth(), 1 + Random(month.daysInMonth())}; // often an end of the month
        return basic::DateText(month.addDays(days[Random(3)] - 1));
    }

    /// Acts of four services, of a deleted one and of none; expenses on days of their own; charges in thousandths.
    void Fill()
    {
        practice.Service("Radio", -1);
        practice.Service("Soins", 0);
        const dao::Key deleted = practice.Service("Autre", 1);
        const double amounts[] = {1000, 234.56, 0.005, 2.675, -75.1, -4000};
        for (int act = 0; act < 90; ++act) {
            const double amount = Random(9) == 0 ? amounts[4 + Random(2)] : amounts[Random(4)] * (1 + Random(5));
            practice.Act({.day = RandomDay(),
                          .montant = Random(12) == 0 ? dao::Value() : dao::Value(amount),
                          .num_presta = act % 9 == 0 ? 98 : 1 + Random(static_cast<int>(deleted)),
                          .Flag_H = act % 2});
        }
        for (int expense = 0; expense < 30; ++expense)
            practice.Expense({.day = RandomDay(), .montant = 50.005 * Random(9)});
        practice.Remove("Presta", deleted);
        practice.Write(QString("Update Permn set Charge9 = %1").arg(Random(40000) / 1000.0));
    }

    /// Receipts, charges and net of a month on the screen that they are held against.
    static QList<double> ResultOf(Result& result, const QDate& month)
    {
        tests::AcceptPeriod(result.Dates, basic::DateText(month), basic::DateText(month.addMonths(1).addDays(-1)));
        return {Val(result.AmountSum.text()), Val(result.Charges.text()), Val(result.Net.text())};
    }

    double ExpensesOf(const QDate& month)
    {
        const dao::Value sum =
            practice.Ask(QString("select sum(montant) from Recettes where date >= #%1# and date < #%2#")
                             .arg(month.toString("MM/dd/yyyy"), month.addMonths(1).toString("MM/dd/yyyy")));
        return sum.IsNull() ? 0 : Val(basic::Format(sum.Double(), "0.00"));
    }

    QDate FirstDayOf(const char* table)
    {
        return basic::DateValue(practice.Ask(QString("select min(date) from ") + table).Text());
    }

    static double Cell(const forms::Grid& grid, int row, int column) { return Val(grid.Text(row, column)); }

    std::mt19937 random;
};

} // namespace

TEST_F(EvolutionFigures, AreThoseOfTheResultOfEachMonthToTheCentime)
{
    for (const unsigned seed : {1U, 2U}) {
        SCOPED_TRACE(seed);
        random.seed(seed);
        Fill();
        auto& result = [this]() -> Result& {
            practice.Open();
            return desk.Open<Result>();
        }();
        auto& screen = desk.Open<Evolution>();
        screen.ShowMonths(evolution::Month(Last), Months);
        ASSERT_EQ(screen.Grid1.Rows(), Months);
        const pages::Chart& chart = screen.Chart1.Chart();
        enum Series { Receipts, Charges, Expenses, Net, NetYearBefore };
        const QDate first = std::min(FirstDayOf("Actes"), FirstDayOf("Recettes"));
        QList<double> totals(Evolution::NetYearBefore + 1, 0.0);
        for (int row = 0; row < Months; ++row) {
            const QDate month = Last.addMonths(row - Months + 1);
            SCOPED_TRACE(month.toString().toStdString());
            const QList<double> shown = ResultOf(result, month);
            const QList<double> figures{shown[0], shown[1], shown[2], ExpensesOf(month),
                                        ResultOf(result, month.addYears(-1))[2]};
            const int seriesOf[] = {Receipts, Charges, Net, Expenses, NetYearBefore};
            for (int figure = 0; figure < figures.size(); ++figure) {
                EXPECT_DOUBLE_EQ(Cell(screen.Grid1, row, 1 + figure), figures[figure]) << figure;
                totals[1 + figure] += figures[figure];
                const auto drawn = chart.series[seriesOf[figure]].values.at(row);
                const QDate about = seriesOf[figure] == NetYearBefore ? month.addYears(-1) : month;
                EXPECT_EQ(drawn.has_value(), about.addMonths(1) > first) << figure;
                EXPECT_TRUE(!drawn || *drawn == figures[figure]) << figure;
            }
        }
        for (int column = Evolution::Receipts; column <= Evolution::NetYearBefore; ++column)
            EXPECT_NEAR(Val(screen.Label3[column].text()), totals[column], 1e-6) << column;
    }
}

TEST_F(EvolutionFigures, OfTheServicesAreThoseOfTheResultOfAllMonths)
{
    random.seed(3);
    Fill();
    practice.Open();
    auto& result = desk.Open<Result>();
    auto& screen = desk.Open<Evolution>();
    screen.SSTab1.setCurrentIndex(Evolution::ServicesPage);
    screen.ShowMonths(evolution::Month(Last), Months);
    const QDate first = Last.addMonths(1 - Months);
    tests::AcceptPeriod(result.Dates, basic::DateText(first), basic::DateText(Last.addMonths(1).addDays(-1)));

    ASSERT_EQ(screen.Grid2.Rows(), result.Grid1.Rows());
    double acts = 0;
    double receipts = 0;
    for (int row = 0; row < screen.Grid2.Rows(); ++row) {
        EXPECT_EQ(screen.Grid2.Text(row, Evolution::ServiceName), result.Grid1.Text(row, Result::Unit));
        EXPECT_EQ(Cell(screen.Grid2, row, Evolution::Acts), Cell(result.Grid1, row, Result::Acts));
        const double amount = std::max(0.0, Cell(screen.Grid2, row, Evolution::Amount));
        EXPECT_NEAR(amount, Cell(result.Grid1, row, Result::Amount), 0.0051) << row;
        acts += Cell(screen.Grid2, row, Evolution::Acts);
        receipts += Cell(screen.Grid2, row, Evolution::Amount);
    }
    EXPECT_EQ(acts, Val(result.ActsSum.text()));
    EXPECT_NEAR(receipts, Val(result.AmountSum.text()), 0.011);
    const pages::Chart shares = screen.Chart2.Chart();
    for (int row = 0; row < screen.Grid2.Rows(); ++row) {
        EXPECT_NEAR(*shares.series[0].values[row], 100 * Cell(screen.Grid2, row, Evolution::Amount) / receipts, 0.01);
        EXPECT_NEAR(*shares.series[1].values[row], 100 * Cell(screen.Grid2, row, Evolution::Acts) / acts, 0.01);
        EXPECT_NEAR(*shares.series[1].values[row], Cell(screen.Grid2, row, Evolution::ShareOfActs), 0.051);

        screen.ShowService(row); // its months
        double months = 0;
        double monthActs = 0;
        for (int month = 0; month < Months; ++month) {
            months += Cell(screen.Grid3, month, Evolution::MonthAmount);
            monthActs += Cell(screen.Grid3, month, Evolution::MonthActs);
        }
        EXPECT_NEAR(months, Cell(screen.Grid2, row, Evolution::Amount), 0.1);
        EXPECT_EQ(monthActs, Cell(screen.Grid2, row, Evolution::Acts));
    }
}
