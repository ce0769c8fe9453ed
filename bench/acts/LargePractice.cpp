#include "LargePractice.h"

#include "core/configuration.h"
#include "core/globals.h"
#include "core/opening.h"
#include "data/Practice.h"

#include <QDate>
#include <QFile>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace bench {

namespace {

constexpr int Patients = 5000;

void Check(int result, sqlite3* database)
{
    if (result == SQLITE_OK || result == SQLITE_DONE || result == SQLITE_ROW)
        return;
    std::fprintf(stderr, "%s\n", sqlite3_errmsg(database));
    std::exit(1);
}

double ProcessorTime()
{
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

double Median(std::vector<double>& times)
{
    const auto middle = times.begin() + static_cast<qsizetype>(times.size() / 2);
    std::ranges::nth_element(times, middle);
    return *middle;
}

class ActFiller {
public:
    explicit ActFiller(Plain& database)
        : insert(
              database.Prepare("insert into Actes(Date,MM,AA,date_Presta,HH,Heure,num_patient,num_presta,montant,Type,"
                               "flag_R,Flag_H) values(?1,?2,?3,?1,?4,'08:30',?5,?6,?7,'C',?8,0)"))
    {
    }
    ~ActFiller() { sqlite3_finalize(insert); }
    ActFiller(const ActFiller&) = delete;
    ActFiller& operator=(const ActFiller&) = delete;

    void Day(const QDate& day, int acts)
    {
        const QByteArray date = day.toString(Qt::ISODate).toLatin1();
        for (int act = 0; act < acts; ++act, ++filled) {
            sqlite3_bind_text(insert, 1, date.constData(), -1, SQLITE_TRANSIENT);
            sqlite3_bind_int(insert, 2, day.month());
            sqlite3_bind_int(insert, 3, day.year());
            sqlite3_bind_int(insert, 4, act % 10);
            sqlite3_bind_int(insert, 5, filled * 7919 % Patients + 1);
            sqlite3_bind_int(insert, 6, act % Services + 1);
            sqlite3_bind_double(insert, 7, act % 9 * 150.0);
            sqlite3_bind_int(insert, 8, act % 6);
            Plain::RunOnce(insert);
        }
    }

    int filled = 0;

private:
    sqlite3_stmt* insert;
};

} // namespace

Plain::Plain(const QString& file)
{
    Check(sqlite3_open(file.toUtf8().constData(), &database), database);
    Run("pragma journal_mode=wal");
    Run("pragma synchronous=full");
}

Plain::~Plain()
{
    sqlite3_close_v2(database);
}

sqlite3_stmt* Plain::Prepare(const char* statement)
{
    sqlite3_stmt* prepared = nullptr;
    Check(sqlite3_prepare_v2(database, statement, -1, &prepared, nullptr), database);
    return prepared;
}

void Plain::Run(const char* statement)
{
    Check(sqlite3_exec(database, statement, nullptr, nullptr, nullptr), database);
}

void Plain::RunOnce(sqlite3_stmt* statement)
{
    Check(sqlite3_step(statement), sqlite3_db_handle(statement));
    sqlite3_reset(statement);
}

LargePractice::LargePractice(int acts)
{
    data::PracticeSetup setup;
    setup.accessCode = 6;
    data::CreatePractice(folder.path(), setup);
    const QString file = folder.filePath(data::databaseFile);
    {
        Plain database(file);
        Fill(database, acts);
    }
    QFile::copy(file, PlainFile());

    core::ResetGlobals();
    core::FillCalendarNames();
    core::DataFolder = folder.path();
    core::LoadConfiguration();
    core::CreateTheWorkspace();
    core::OpenDataFiles();
}

LargePractice::~LargePractice()
{
    core::ResetGlobals();
}

QString LargePractice::PlainFile() const
{
    return folder.filePath("plain.db");
}

void LargePractice::Fill(Plain& database, int acts)
{
    database.Run("begin");
    for (int service = 0; service < Services; ++service)
        database.Run(QString("insert into Presta(denom,prix,Ordre) values('Service %1',800,%1)")
                         .arg(service)
                         .toLatin1()
                         .constData());
    for (int patient = 0; patient < Patients; ++patient)
        database.Run(
            QString("insert into Patients(nom,Prenom) values('Nom%1','Prenom%1')").arg(patient).toLatin1().constData());
    ActFiller filler(database);
    for (int day = 0; day < YearDays; ++day)
        filler.Day(QDate(2007, 1, 1).addDays(day), ActsOfYearDay);
    filler.Day(QDate::fromString(SheetDay, "dd/MM/yyyy"), 250);
    filler.Day(QDate::fromString(FullDay, "dd/MM/yyyy"), 5000);
    for (QDate day(2006, 12, 31); filler.filled < acts; day = day.addDays(-1))
        filler.Day(day, std::min(ActsOfYearDay, acts - filler.filled));
    database.Run("commit");
}

Time MedianTime(int runs, const std::function<void()>& work)
{
    std::vector<double> clock, processor;
    for (int run = 0; run < runs; ++run) {
        const auto started = std::chrono::steady_clock::now();
        const double used = ProcessorTime();
        work();
        processor.push_back(ProcessorTime() - used);
        clock.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count());
    }
    return {Median(clock), Median(processor)};
}

} // namespace bench
