// "Dépenses" over a year of a large practice, compared with a plain prepared statement.
//
//     bench_expenses LARGE     a data folder, left as it is

#include "data/Practice.h"
#include "expenses/F_Dep.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Style.h"
#include "platform/host/Files.h"
#include "support/Floor.h"
#include "support/Measure.h"
#include "support/OpenPractice.h"
#include "support/QuietDesk.h"

#include <QApplication>
#include <QDate>
#include <array>
#include <cstdio>
#include <vector>

using namespace bench;
using core::PeriodChooser;
using expenses::F_Dep;

namespace {

constexpr std::size_t FewestExpenses = 3000;

using PlainRow = std::array<QString, 4>;

/// The rows of the year before the last day, formatted as on the screen.
std::vector<PlainRow> ListPlainly(PlainStatement& year, double& total)
{
    std::vector<PlainRow> rows;
    std::vector<qint64> keys;
    total = 0;
    for (; year.Step(); keys.push_back(year.Number(0))) {
        const double amount = year.Real(3);
        total += amount;
        rows.push_back({QString::number(rows.size() + 1), year.Text(1), " " + year.Text(2).trimmed(),
                        basic::PlainText(amount) + " "});
    }
    year.Reset();
    return rows;
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Require(argc == 2, "usage: bench_expenses LARGE");
    const QString folder = QString::fromLocal8Bit(argv[1]);
    forms::ApplyStyle(application);
    const QuietDesk desk;
    const OpenPractice practice(folder);
    PlainDatabase plain(host::PathIn(folder, data::DatabaseFile));
    const QDate last = basic::DateValue(OpenPractice::LastDay());
    const QDate first = last.addYears(-1);

    PlainStatement year(plain, "select num, strftime('%d/%m/%Y', Date), objet, montant from Recettes "
                               "where date >= ? and date <= ? order by date, num");
    year.Bind(1, first.toString(Qt::ISODate)).Bind(2, last.toString(Qt::ISODate));
    F_Dep screen;
    screen.Load();
    screen.show();
    QApplication::processEvents();
    screen.Dates.Text1[PeriodChooser::First].setText(basic::DateText(first));
    screen.Dates.Text1[PeriodChooser::Last].setText(basic::DateText(last));

    Figures figures;
    std::vector<PlainRow> rows;
    double total = 0;
    const auto floor = [&] { rows = ListPlainly(year, total); };
    const auto list = [&screen] { screen.Image2_Click(PeriodChooser::AcceptPeriod); };
    figures.Compare("a year of expenses, listed", {.measured = 31}, floor, list, {.ratio = 2});
    figures.Compare("a year of expenses, listed and painted", {.measured = 31}, floor,
                    [&] {
                        list();
                        QApplication::processEvents();
                    },
                    {.milliseconds = 50});
    Require(static_cast<std::size_t>(screen.Grid1.Rows()) == rows.size(), "the two lists differ");
    Require(rows.size() >= FewestExpenses, "too few expenses");
    Require(screen.Label5.text() == " " + basic::Format(total, "### ### ###.00"), "the two totals differ");
    std::printf("    (%zu expenses)\n", rows.size());
    return figures.ExitCode();
}
