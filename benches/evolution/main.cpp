// "Évolution" on a large practice: two years of it.
//
//     bench_evolution LARGE     a data folder, left as it is

#include "core/globals.h"
#include "data/Practice.h"
#include "evolution/Evolution.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Style.h"
#include "platform/host/Files.h"
#include "platform/host/Host.h"
#include "support/Floor.h"
#include "support/Measure.h"
#include "support/OpenPractice.h"
#include "support/QuietDesk.h"

#include <QApplication>
#include <QDate>
#include <cstdio>

using namespace bench;
using evolution::Evolution;
using evolution::Month;

namespace {

constexpr int TwoYears = 24; // months
constexpr int OneYear = 12;

/// The sums of two years and of the year before by prepared statements, formatted as for the table.
class PlainYears {
public:
    explicit PlainYears(const PlainDatabase& database)
        : services(database, "select num from Presta order by Ordre"),
          acts(database,
               "select count(num), sum(montant) from Actes where date >= ?1 and date <= ?2 and num_presta = ?3"),
          expenses(database, "select sum(montant) from Recettes where date >= ?1 and date <= ?2")
    {
    }

    void Sum(const QDate& last)
    {
        receipts = 0;
        std::vector<qint64> keys;
        for (; services.Step();)
            keys.push_back(services.Number(0));
        services.Reset();
        for (int index = 0; index < TwoYears + OneYear; ++index) {
            const QDate month = QDate(last.year(), last.month(), 1).addMonths(-index);
            const double received = SumMonth(keys, month);
            receipts += index < TwoYears ? received : 0;
            texts += basic::Format(received, "# ### ##0.00").size();
        }
    }

    double receipts = 0; ///< of the two years

private:
    double SumMonth(const std::vector<qint64>& keys, const QDate& month)
    {
        const QString first = month.toString(Qt::ISODate);
        const QString end = month.addMonths(1).addDays(-1).toString(Qt::ISODate);
        double received = 0;
        for (const qint64 key : keys) {
            acts.Bind(1, first).Bind(2, end).Bind(3, key).Step();
            received += acts.Real(1);
            acts.Reset();
        }
        expenses.Bind(1, first).Bind(2, end).Step();
        texts += basic::Format(expenses.Real(0), "# ### ##0.00").size();
        expenses.Reset();
        return received;
    }

    PlainStatement services, acts, expenses;
    qint64 texts = 0;
};

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Require(argc == 2, "usage: bench_evolution LARGE");
    const QString folder = QString::fromLocal8Bit(argv[1]);
    forms::ApplyStyle(application);
    const QuietDesk desk;
    const OpenPractice practice(folder);
    const PlainDatabase database(host::PathIn(folder, data::DatabaseFile));
    const QDate last = basic::DateValue(OpenPractice::LastDay());
    host::FixToday(last);
    Figures figures;

    const auto paint = [](QWidget& screen) {
        QApplication::processEvents();
        screen.grab(); // the offscreen platform paints only on demand
    };
    constexpr int openings = 9;
    figures.Print("first page, opening to painted",
                  MedianTime(openings,
                             [&] {
                                 Evolution opened;
                                 opened.Load();
                                 opened.show();
                                 paint(opened);
                             }),
                  "ms", 150);

    Evolution screen;
    screen.Load();
    screen.show();
    PlainYears plain(database);
    bool isBefore = false;
    const auto next = [&] { return isBefore = !isBefore, last.addMonths(isBefore ? -1 : 0); };
    constexpr Rounds backAndForth{.measured = 15, .repeats = 2};
    figures.Compare(
        "two years, months", backAndForth, [&] { plain.Sum(next()); },
        [&] { screen.ShowMonths(Month(next()), TwoYears); }, {.ratio = 1.5, .milliseconds = 150});
    screen.SSTab1.setCurrentIndex(Evolution::ServicesPage);
    figures.Compare(
        "two years, services", backAndForth, [&] { plain.Sum(next()); },
        [&] { screen.ShowMonths(Month(next()), TwoYears); }, {.ratio = 1.5, .milliseconds = 150});
    screen.SSTab1.setCurrentIndex(Evolution::MonthsPage);
    figures.Compare(
        "two years, months, painted", backAndForth, [&] { plain.Sum(next()); },
        [&] {
            screen.ShowMonths(Month(next()), TwoYears);
            paint(screen);
        },
        {.milliseconds = 150});
    plain.Sum(last);
    screen.ShowMonths(Month(last), TwoYears);
    Require(screen.Label3[Evolution::Receipts].text() == basic::Format(plain.receipts, "# ### ### ##0.00").trimmed(),
            "the screen sums other acts");
    std::printf("    (%d services, receipts %s)\n", screen.Grid2.Rows(),
                qPrintable(screen.Label3[Evolution::Receipts].text()));
    return figures.ExitCode();
}
