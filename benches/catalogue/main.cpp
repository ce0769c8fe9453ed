// The services: reordering 300 of them, and searching a million acts for one.
//
//     bench_catalogue LARGE     a data folder; a service is added and taken away again

#include "catalogue/J_PROD.h"
#include "data/Practice.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Style.h"
#include "platform/host/Files.h"
#include "support/Floor.h"
#include "support/Measure.h"
#include "support/OpenPractice.h"
#include "support/QuietDesk.h"

#include <QApplication>
#include <QTemporaryDir>
#include <vector>

using namespace bench;
using catalogue::J_PROD;

namespace {

constexpr int Services = 300;
constexpr int Moves = 10;
constexpr int UnusedService = 99999;

/// Deletes no service: answers every question with No.
class RefusingDesk : public QuietDesk {
public:
    forms::Answer Message(const QString&, forms::Icon, const QString&, forms::Buttons buttons) override
    {
        return buttons == forms::Buttons::YesNo ? forms::Answer::No : forms::Answer::Ok;
    }
};

void FillServices(PlainDatabase& database)
{
    database.Run("BEGIN IMMEDIATE");
    PlainStatement service(database, "insert into Presta (denom, prix, Ordre) values (?1, 150.5, ?2)");
    for (int i = 0; i < Services; ++i)
        service.Bind(1, QString("Prestation %1").arg(i)).Bind(2, i).Run();
    database.Run("COMMIT");
}

std::vector<qint64> ListPlainly(PlainStatement& services)
{
    std::vector<qint64> keys;
    std::vector<QStringList> rows;
    while (services.Step()) {
        rows.push_back({QString::number(rows.size() + 1), " " + services.Text(1).trimmed(),
                        basic::PlainText(services.Real(2)) + " "});
        keys.push_back(services.Number(0));
    }
    services.Reset();
    return keys;
}

void MeasureOrder(Figures& figures)
{
    const QTemporaryDir folder;
    data::CreatePractice(folder.path(), {.accessCode = 6, .letterhead = {"Cabinet"}});
    PlainDatabase database(host::PathIn(folder.path(), data::DatabaseFile));
    FillServices(database);
    const OpenPractice practice(folder.path());
    PlainStatement services(database, "select num, denom, prix from Presta order by Ordre");
    PlainStatement place(database, "update Presta set Ordre = ? where num = ?");
    qint64 moved = 0;
    figures.Compare(
        "300 services listed, their order written", {.measured = 15},
        [&] {
            std::vector<qint64> keys = ListPlainly(services);
            database.Run("BEGIN IMMEDIATE");
            for (int i = 0; i < Services; ++i)
                place.Bind(1, i).Bind(2, keys[static_cast<std::size_t>(i)]).Run();
            database.Run("COMMIT");
        },
        [&] {
            J_PROD screen;
            screen.Load();
            screen.show();
            QApplication::processEvents();
            screen.Grid1.SetRow(Services - 1);
            screen.Grid1_Click();
            for (int step = 0; step < Moves; ++step)
                screen.MoveService(J_PROD::MoveUp);
            screen.Crecettes_Click(J_PROD::Quit);
            ++moved;
        },
        {.milliseconds = 150});
    PlainStatement last(database, "select num from Presta order by Ordre desc limit 1");
    last.Step();
    Require(moved > 0 && last.Number(0) != Services, "the order wasn't written");
}

void MeasureUse(Figures& figures, const QString& folder)
{
    PlainDatabase database(host::PathIn(folder, data::DatabaseFile));
    database.Run(
        QString("insert or replace into Presta (num, denom, Ordre) values (%1, 'Mesure', 999)").arg(UnusedService));
    {
        const OpenPractice practice(folder);
        const RefusingDesk desk;
        PlainStatement act(database, "select num from Actes where num_presta = ? limit 1");
        J_PROD screen;
        screen.Load();
        const auto measure = [&](const char* path, int row, qint64 service) {
            screen.Grid1.SetRow(row);
            screen.Grid1_Click();
            figures.Compare(
                path, {.measured = 51}, [&] { act.Bind(1, service).Run(); }, [&] { screen.DeleteService(); },
                {.milliseconds = 5});
        };
        measure("a service that acts include, asked to be deleted", 1, 2);
        measure("one that none of a million acts includes", screen.Grid1.Rows() - 1, UnusedService);
        screen.Unload();
    }
    database.Run(QString("delete from Presta where num = %1").arg(UnusedService));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Require(argc == 2, "usage: bench_catalogue LARGE");
    forms::ApplyStyle(application);
    const QuietDesk desk;
    Figures figures;
    MeasureOrder(figures);
    MeasureUse(figures, QString::fromLocal8Bit(argv[1]));
    return figures.ExitCode();
}
