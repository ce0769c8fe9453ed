#include "acts/SheetPractice.h"

#include "data/Practice.h"

#include <QDate>
#include <QFile>
#include <algorithm>

namespace bench {

namespace {

constexpr int Patients = 5000;

class ActFiller {
public:
    explicit ActFiller(const PlainDatabase& database)
        : insert(database,
                 "insert into Actes(Date,MM,AA,date_Presta,HH,Heure,num_patient,num_presta,montant,Type,flag_R,Flag_H) "
                 "values(?1,?2,?3,?1,?4,'08:30',?5,?6,?7,'C',?8,0)")
    {
    }

    void Day(const QDate& day, int acts)
    {
        insert.Bind(1, day.toString(Qt::ISODate)).Bind(2, day.month()).Bind(3, day.year());
        for (int act = 0; act < acts; ++act, ++filled) {
            insert.Bind(4, act % 10).Bind(5, filled * 7919LL % Patients + 1).Bind(6, act % Services + 1);
            insert.Bind(7, act % 9 * 150.0).Bind(8, act % 6).Run();
        }
    }

    int filled = 0;

private:
    PlainStatement insert;
};

} // namespace

SheetPractice::SheetPractice(int acts)
{
    data::PracticeSetup setup;
    setup.accessCode = 6;
    data::CreatePractice(folder.path(), setup);
    const QString file = folder.filePath(data::DatabaseFile);
    {
        PlainDatabase database(file);
        Fill(database, acts);
    }
    QFile::copy(file, PlainFile());
    practice.emplace(folder.path());
}

QString SheetPractice::PlainFile() const
{
    return folder.filePath("plain.db");
}

void SheetPractice::Fill(PlainDatabase& database, int acts)
{
    database.Run("begin");
    PlainStatement service(database, "insert into Presta(denom,prix,Ordre) values(?,800,?)");
    for (int i = 0; i < Services; ++i)
        service.Bind(1, QString("Service %1").arg(i)).Bind(2, i).Run();
    PlainStatement patient(database, "insert into Patients(nom,Prenom) values(?,?)");
    for (int i = 0; i < Patients; ++i)
        patient.Bind(1, QString("Nom%1").arg(i)).Bind(2, QString("Prenom%1").arg(i)).Run();
    ActFiller filler(database);
    for (int day = 0; day < YearDays; ++day)
        filler.Day(QDate(2007, 1, 1).addDays(day), ActsOfYearDay);
    filler.Day(QDate::fromString(SheetDay, "dd/MM/yyyy"), 250);
    filler.Day(QDate::fromString(FullDay, "dd/MM/yyyy"), 5000);
    for (QDate day(2006, 12, 31); filler.filled < acts; day = day.addDays(-1))
        filler.Day(day, std::min(ActsOfYearDay, acts - filler.filled));
    database.Run("commit");
}

} // namespace bench
