// "Caisse du Jour" on the last day of a large practice, and a grid of the maximum length.
//
//     bench_cash LARGE     a data folder, left as it is

#include "cash/J_CAISSE.h"
#include "core/globals.h"
#include "data/Practice.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Grid.h"
#include "platform/forms/Style.h"
#include "platform/host/Files.h"
#include "support/Floor.h"
#include "support/Measure.h"
#include "support/OpenPractice.h"
#include "support/QuietDesk.h"

#include <QApplication>
#include <QDate>
#include <cstdio>

using namespace bench;

namespace {

constexpr int GridRows = 16352;
constexpr int GridColumns = 10;

/// The data of a day's statement by prepared statements: counts and sums of each service, both balances, the acts with
/// their patient and service, the expenses. Texts are formatted as for the screen.
class PlainStatementOfDay {
public:
    PlainStatementOfDay(const PlainDatabase& database, const QString& isoDay)
        : services(database, "select num, denom from Presta order by Ordre"),
          totals(database, "select count(num), sum(montant) from Actes where date = ?1 and num_presta = ?2"),
          received(database, "select sum(montant) from Actes where date < ?1"),
          spent(database, "select sum(montant) from Recettes where date < ?1"),
          settled(database, "select * from Actes where date = ?1 and flag_R > 1 order by num"),
          pending(database, "select * from Actes where date = ?1 and flag_R < 2 order by num"),
          patient(database, "select nom, Prenom from Patients where num = ?"),
          service(database, "select denom from Presta where num = ?"),
          expenses(database, "select num, objet, montant from Recettes where date = ?1 order by num")
    {
        for (PlainStatement* statement : {&totals, &received, &spent, &settled, &pending, &expenses})
            statement->Bind(1, isoDay);
    }

    void Read()
    {
        texts = 0;
        acts = 0;
        ReadActs(settled);
        ReadActs(pending);
        for (; expenses.Step(); ++acts)
            texts += (" " + expenses.Text(1)).size() + basic::PlainText(expenses.Real(2)).size();
        expenses.Reset();
        for (; services.Step(); totals.Reset()) {
            totals.Bind(2, services.Number(0)).Step();
            texts += (" " + services.Text(1)).size() + basic::PlainText(totals.Real(1)).size();
        }
        services.Reset();
        received.Run();
        spent.Run();
    }

    int acts = 0;

private:
    void ReadActs(PlainStatement& list)
    {
        for (; list.Step(); ++acts) {
            if (patient.Bind(1, list.Number(7)).Step())
                texts += (" " + patient.Text(0)).size() + (" " + patient.Text(1)).size();
            patient.Reset();
            if (service.Bind(1, list.Number(8)).Step())
                texts += (" " + service.Text(0)).size();
            service.Reset();
            texts += basic::PlainText(list.Real(9)).size() + list.Number(5) + list.Number(11);
        }
        list.Reset();
    }

    PlainStatement services, totals, received, spent, settled, pending, patient, service, expenses;
    qint64 texts = 0;
};

void MeasureCashDay(Figures& figures, const QString& folder)
{
    const OpenPractice practice(folder);
    const PlainDatabase database(host::PathIn(folder, data::DatabaseFile));
    core::PickedDate = OpenPractice::LastDay();
    PlainStatementOfDay plain(database, basic::DateValue(core::PickedDate).toString(Qt::ISODate));
    int rows = 0;
    const auto show = [&] {
        cash::J_CAISSE screen;
        screen.Load();
        screen.show();
        QApplication::processEvents(); // until it is painted
        rows = screen.Grid2.Rows() + screen.Grid3.Rows() + screen.Grid4.Rows();
    };
    show(); // the first window also loads fonts and icons
    figures.Compare("Caisse du Jour, opened and painted", {.measured = 15}, [&] { plain.Read(); }, show,
                    {.ratio = 1.3, .milliseconds = 150});
    Require(rows == plain.acts, "the screen lists other rows");
    std::printf("    (%d acts and expenses)\n", rows);
}

void MeasureGrid(Figures& figures)
{
    QList<forms::Grid::Column> columns;
    for (int column = 0; column < GridColumns; ++column)
        columns << forms::Grid::Column{QString("Colonne %1").arg(column), 1000};
    const auto cell = [](int row, int column) { return QString::number(row * GridColumns + column); };
    const auto fillPlainly = [&] {
        QList<QStringList> rows;
        for (int row = 0; row < GridRows; ++row) {
            QStringList& texts = rows.emplace_back(GridColumns);
            for (int column = 0; column < GridColumns; ++column)
                texts[column] = cell(row, column);
        }
    };
    const auto fillAndShow = [&] {
        forms::Grid grid("Grid1", columns);
        grid.resize(900, 600);
        for (int row = 0; row < GridRows; ++row) {
            if (row > 0)
                grid.AppendRow();
            for (int column = 0; column < GridColumns; ++column)
                grid.SetText(row, column, cell(row, column));
        }
        grid.show();
        QApplication::processEvents();
    };
    figures.Compare("a grid of 16,352 rows by 10, filled and shown", {}, fillPlainly, fillAndShow,
                    {.milliseconds = 100});
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Require(argc == 2, "usage: bench_cash LARGE");
    forms::ApplyStyle(application);
    const QuietDesk desk;
    Figures figures;
    MeasureCashDay(figures, QString::fromLocal8Bit(argv[1]));
    MeasureGrid(figures);
    return figures.ExitCode();
}
