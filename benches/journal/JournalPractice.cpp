#include "JournalPractice.h"

#include "data/Practice.h"
#include "platform/host/Files.h"
#include "support/Floor.h"

#include <QDir>
#include <vector>

namespace bench {

const Period JournalPractice::Month{{2040, 1, 1}, {2040, 1, 31}};
const Period JournalPractice::Most{{2040, 2, 1}, {2040, 2, 29}};
const Period JournalPractice::TooMany{{2041, 1, 1}, {2041, 12, 31}};

namespace {

class ActFiller {
public:
    explicit ActFiller(PlainDatabase& database)
        : insert(database,
                 "insert into Actes(Date,MM,AA,date_Presta,HH,Heure,num_patient,num_presta,montant,Type,flag_R,Flag_H) "
                 "values(?1,?2,?3,?1,?4,'08:30',?5,?6,?7,?8,?9,0)")
    {
        PlainStatement service(database, "select num from Presta order by Ordre");
        while (service.Step())
            services.push_back(service.Number(0));
        PlainStatement most(database, "select max(num) from Patients");
        most.Step();
        patients = most.Number(0);
    }

    /// Spreads acts over the days of a period and the services.
    void Fill(const Period& period, int acts)
    {
        const qint64 days = period.first.daysTo(period.last) + 1;
        for (int act = 0; act < acts; ++act, ++filled) {
            const QDate day = period.first.addDays(act * days / acts);
            insert.Bind(1, day.toString(Qt::ISODate)).Bind(2, day.month()).Bind(3, day.year()).Bind(4, act % 10);
            insert.Bind(5, filled * 7919 % patients + 1)
                .Bind(6, services[static_cast<std::size_t>(act) % services.size()]);
            insert.Bind(7, act % 9 * 150.0).Bind(8, act % 32 == 0 ? QString("C") : QString("K%1").arg(act % 32 - 1));
            insert.Bind(9, act % 6).Run();
        }
    }
    int Services() const { return static_cast<int>(services.size()); }

private:
    PlainStatement insert;
    std::vector<qint64> services;
    qint64 patients = 0;
    qint64 filled = 0;
};

} // namespace

JournalPractice::JournalPractice(const QString& large)
{
    const QDir source(large);
    for (const QString& name : source.entryList(QDir::Files))
        Require(QFile::copy(source.filePath(name), folder.filePath(name)), "no copy of " + name);
    PlainDatabase database(Database());
    database.Run("begin");
    ActFiller filler(database);
    filler.Fill(Month, 5000);
    filler.Fill(Most, MostListed);
    filler.Fill(TooMany, filler.Services() * (MostListed + 1));
    database.Run("commit");
    database.Run("pragma wal_checkpoint(truncate)");
}

QString JournalPractice::Database() const
{
    return host::PathIn(folder.path(), data::DatabaseFile);
}

} // namespace bench
