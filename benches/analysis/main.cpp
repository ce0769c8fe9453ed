// "Situation mensuelle" and "Résultat" on a large practice.
//
//     bench_analysis LARGE     a data folder, left as it is

#include "analysis/Mens_Act.h"
#include "analysis/Result.h"
#include "core/globals.h"
#include "data/Practice.h"
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
using analysis::Mens_Act;
using analysis::Result;
using core::PeriodChooser;

namespace {

constexpr int MostActs = 32767; // limit of the screen's counters

/// The counts of a month by prepared statements, formatted as for the screen.
class PlainMonth {
public:
    explicit PlainMonth(const PlainDatabase& database)
        : services(database, "select num, denom from Presta order by Ordre"),
          all(database, "select count(num) from Actes where MM = ?1 and AA = ?2 and num_presta = ?3"),
          recent(database, "select count(num) from Actes where MM = ?1 and AA = ?2 and flag_H = 0 and num_presta = ?3")
    {
    }

    void Count(int month, int year)
    {
        acts = 0;
        for (; services.Step(); all.Reset(), recent.Reset()) {
            for (PlainStatement* count : {&all, &recent})
                count->Bind(1, month).Bind(2, year).Bind(3, services.Number(0)).Step();
            texts += (" " + services.Text(1)).size() + basic::PlainText(static_cast<double>(recent.Number(0))).size();
            acts += all.Number(0);
        }
        services.Reset();
    }

    qint64 acts = 0;

private:
    PlainStatement services, all, recent;
    qint64 texts = 0;
};

void MeasureMonth(Figures& figures, const PlainDatabase& database)
{
    host::FixToday(basic::DateValue(OpenPractice::LastDay()).addMonths(-1)); // a whole month
    const QDate month = host::Today();
    const QDate before = month.addMonths(-1);
    Mens_Act screen;
    screen.Load();
    screen.show();
    QApplication::processEvents();
    PlainMonth plain(database);
    bool isBefore = false;
    const auto stepPlainly = [&] {
        isBefore = !isBefore;
        const QDate& shown = isBefore ? before : month;
        plain.Count(shown.month(), shown.year());
    };
    const auto step = [&] {
        screen.Image3_Click(screen.Combo1.currentIndex() + 1 == month.month() ? Mens_Act::Previous : Mens_Act::Next);
    };
    constexpr Rounds backAndForth{.measured = 15, .repeats = 2};
    figures.Compare("a month stepped", backAndForth, stepPlainly, step, {.ratio = 2, .milliseconds = 15});
    figures.Compare("a month stepped and painted", backAndForth, stepPlainly,
                    [&] {
                        step();
                        QApplication::processEvents();
                    },
                    {.milliseconds = 15});
    Require(screen.Label4[Mens_Act::All].text() == QString::number(plain.acts), "the screen counts other acts");
    std::printf("    (%lld acts, %d services)\n", plain.acts, screen.Grid1.Rows());
}

/// Counts and sums of each service between two days by prepared statements.
class PlainResult {
public:
    explicit PlainResult(const PlainDatabase& database)
        : services(database, "select num, denom from Presta order by Ordre"),
          totals(database, "select count(num), sum(montant) from Actes where date >= ?1 and date <= ?2 "
                           "and num_presta = ?3")
    {
    }

    void Count(const QDate& first, const QDate& last)
    {
        acts = 0;
        for (; services.Step(); totals.Reset()) {
            totals.Bind(1, first.toString(Qt::ISODate)).Bind(2, last.toString(Qt::ISODate));
            totals.Bind(3, services.Number(0)).Step();
            texts += (" " + services.Text(1)).size() + basic::PlainText(totals.Real(1)).size();
            acts += totals.Number(0);
        }
        services.Reset();
    }

    qint64 acts = 0;

private:
    PlainStatement services, totals;
    qint64 texts = 0;
};

/// The result of the longest period that the screen can count.
void MeasureScreen(Figures& figures, PlainResult& plain, const QDate& last)
{
    int days = 366;
    for (plain.Count(last.addDays(-days), last); plain.acts > MostActs; plain.Count(last.addDays(-days), last))
        days -= 10;
    Result screen;
    screen.Load();
    screen.show();
    screen.Dates.SSTab2.setCurrentIndex(PeriodChooser::PeriodPage);
    screen.Dates.Text1[PeriodChooser::First].setText(basic::DateText(last.addDays(-days)));
    screen.Dates.Text1[PeriodChooser::Last].setText(basic::DateText(last));
    QApplication::processEvents();
    const auto countPlainly = [&] { plain.Count(last.addDays(-days), last); };
    const auto show = [&] { screen.Image2_Click(PeriodChooser::AcceptPeriod); };
    figures.Compare("the result of a period", {.measured = 15}, countPlainly, show, {.ratio = 1.3, .milliseconds = 60});
    figures.Compare("the result of a period, painted", {.measured = 15}, countPlainly,
                    [&] {
                        show();
                        QApplication::processEvents();
                    },
                    {.milliseconds = 60});
    Require(screen.ActsSum.text() == QString::number(plain.acts), "the screen counts other acts");
    std::printf("    (%lld acts of %d days, %d services)\n", plain.acts, days + 1, screen.Grid1.Rows());
}

/// The statements of the screen over more acts than it can count.
void MeasureStatements(Figures& figures, PlainResult& plain, const char* path, const QDate& first, const QDate& last,
                       const Limits& limits)
{
    const QString period = "select count(num) as S1, sum(montant) as S2 from Actes where date >=#" +
                           basic::QueryDate(basic::DateText(first)) + "# and date <=#" +
                           basic::QueryDate(basic::DateText(last)) + "# and num_presta = ";
    qint64 acts = 0;
    qint64 texts = 0;
    figures.Compare(
        path, {.measured = 9}, [&] { plain.Count(first, last); },
        [&] {
            acts = 0;
            dao::Recordset units = core::TheDatabase.OpenRecordset("Select * from Presta order by ordre");
            for (; !units.IsEOF(); units.MoveNext()) {
                const dao::Recordset totals =
                    core::TheDatabase.OpenRecordset(period + QString::number(units["num"].Key()));
                acts += totals["S1"].Long();
                texts += (" " + units["denom"].Text()).size() + basic::PlainText(totals["S2"].Double()).size();
            }
        },
        limits);
    Require(acts == plain.acts, "the statements count other acts");
    std::printf("    (%lld acts)\n", acts);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Require(argc == 2, "usage: bench_analysis LARGE");
    const QString folder = QString::fromLocal8Bit(argv[1]);
    forms::ApplyStyle(application);
    const QuietDesk desk;
    const OpenPractice practice(folder);
    const PlainDatabase database(host::PathIn(folder, data::DatabaseFile));
    const QDate last = basic::DateValue(OpenPractice::LastDay());
    Figures figures;
    MeasureMonth(figures, database);
    PlainResult plain(database);
    MeasureScreen(figures, plain, last);
    MeasureStatements(figures, plain, "counts and sums of a year", last.addYears(-1), last,
                      {.ratio = 1.3, .milliseconds = 60});
    MeasureStatements(figures, plain, "counts and sums of sixteen years", last.addYears(-16), last, {.ratio = 1.3});
    return figures.ExitCode();
}
