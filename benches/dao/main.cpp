// Record sets and the archive copy on a large practice and on a tenth of it.
//
//     bench_dao LARGE TENTH     two data folders, whose acts are edited

#include "archives/Archives.h"
#include "core/globals.h"
#include "core/opening.h"
#include "data/Practice.h"
#include "platform/basic/Dates.h"
#include "platform/host/Files.h"
#include "support/Floor.h"
#include "support/Measure.h"
#include "support/OpenPractice.h"
#include "support/QuietDesk.h"

#include <QApplication>
#include <QDate>
#include <QFile>
#include <cstdio>
#include <random>
#include <vector>

using namespace bench;
using core::TheDatabase;

namespace {

constexpr int Searches = 1000;
constexpr int GrowthLimit = 2; // of an opening on ten times the rows: allows for noise, far from ten

QString FileOf(const QString& folder)
{
    return host::PathIn(folder, data::DatabaseFile);
}

/// Returns the time of one opening, in milliseconds.
double MeasureOpening(Figures& figures, const char* path, const QString& folder)
{
    const OpenPractice practice(folder);
    const PlainDatabase plain(FileOf(folder));
    PlainStatement first(plain, "select * from Actes");
    qint64 seen = 0;
    const Times times = figures.Compare(
        path, {.measured = 21, .repeats = 200},
        [&] {
            seen += first.Step();
            first.Reset();
        },
        [&] { seen += !TheDatabase.OpenRecordset("Select * from Actes").IsEOF(); }, {.ratio = 5});
    Require(seen == 2 * 21 * 200, "an opening found no act");
    return times.ours;
}

void MeasureSearch(Figures& figures, const PlainDatabase& plain)
{
    std::mt19937 random(20080617);
    const auto last = static_cast<int>(TheDatabase.OpenRecordset("select max(num) as S1 from Actes")["S1"].Long());
    std::vector<int> keys;
    keys.reserve(Searches);
    for (int search = 0; search < Searches; ++search)
        keys.push_back(1 + static_cast<int>(random() % static_cast<unsigned>(last)));

    PlainStatement select(plain, "select * from Actes where num = ?");
    dao::Recordset acts = TheDatabase.OpenRecordset("Actes");
    qint64 found = 0;
    figures.Compare(
        "1000 x FindFirst by key", {},
        [&] {
            for (const int key : keys) {
                found += select.Bind(1, key).Step() && select.Number(0) == key;
                select.Reset();
            }
        },
        [&] {
            for (const int key : keys) {
                acts.FindFirst(dao::Key(key));
                found += !acts.NoMatch() && acts["num"].Key() == key;
            }
        },
        {.ratio = 3});
    Require(found == 2 * 9 * Searches, "the searches found different rows");
}

/// Eight fields of every act of the busy day, formatted as by the program.
void MeasureDay(Figures& figures, const PlainDatabase& plain, const QString& day)
{
    PlainStatement select(plain, "select * from Actes where date = ? order by num");
    const QString statement = "Select * from Actes where date =#" + basic::QueryDate(day) + "# order by num";
    const QString isoDay = basic::DateValue(day).toString(Qt::ISODate);
    double floorSum = 0, ourSum = 0;
    qsizetype floorTexts = 0, ourTexts = 0;
    int acts = 0;
    figures.Compare(
        "a day's acts, 8 fields by name", {.measured = 51},
        [&] {
            acts = 0;
            select.Bind(1, isoDay);
            for (; select.Step(); ++acts) {
                for (const int column : {0, 5, 7, 8, 11})
                    floorSum += static_cast<double>(select.Number(column));
                floorSum += select.Real(9);
                floorTexts += select.Text(6).size() + select.Text(10).size();
            }
            select.Reset();
        },
        [&] {
            dao::Recordset rows = TheDatabase.OpenRecordset(statement);
            for (; !rows.IsEOF(); rows.MoveNext()) {
                for (const char* number : {"num", "HH", "num_patient", "num_presta", "flag_R"})
                    ourSum += rows[number].Long();
                ourSum += rows["montant"].Double();
                for (const char* text : {"Heure", "Type"})
                    if (const dao::Field field = rows[text]; !field.IsNull())
                        ourTexts += field.Text().size();
            }
        },
        {.ratio = 2});
    Require(floorSum == ourSum && floorTexts == ourTexts, "the day's acts were read differently");
    std::printf("    (%d acts)\n", acts);
}

void MeasureEdit(Figures& figures, const PlainDatabase& plain)
{
    PlainStatement update(plain, "update Actes set flag_R = ?, montant = ? where num = 500");
    dao::Recordset acts = TheDatabase.OpenRecordset("Actes");
    acts.FindFirst(501);
    int round = 0;
    figures.Compare(
        "Edit, two fields, Update, Idle", {.measured = 201},
        [&] {
            ++round;
            update.Bind(1, round % 2).Bind(2, 10.5 * (round % 7)).Run();
        },
        [&] {
            ++round;
            acts.LockEdits(true);
            acts.Edit();
            acts["flag_R"] = round % 2;
            acts["montant"] = 10.5 * (round % 7);
            acts.Update();
            dao::DBEngine.Idle(dao::RefreshCache);
        },
        {.ratio = 1.5});
}

/// The hours of a month's planning for one service.
void MeasureCounts(Figures& figures, const PlainDatabase& plain, const QString& day)
{
    PlainStatement count(plain, "select count(num) as S1 from Plani where date = ? and Num_Presta = ? and HH = ?");
    const QDate last = basic::DateValue(day);
    qint64 floorCount = 0, ourCount = 0;
    figures.Compare(
        "310 counts that differ in literals", {.measured = 21},
        [&] {
            for (int cell = 0; cell < 310; ++cell) {
                count.Bind(1, last.addDays(cell / 10 - 15).toString(Qt::ISODate)).Bind(2, 2).Bind(3, cell % 10).Step();
                floorCount += count.Number(0);
                count.Reset();
            }
        },
        [&] {
            for (int cell = 0; cell < 310; ++cell) {
                const QString date = basic::QueryDate(basic::DateText(last.addDays(cell / 10 - 15)));
                ourCount += TheDatabase
                                .OpenRecordset("select count(num) as S1 from Plani where date =#" + date +
                                               "# and Num_Presta = 2 and HH = " + QString::number(cell % 10))["S1"]
                                .Long();
            }
        },
        {.ratio = 1.5});
    Require(floorCount == ourCount && ourCount > 0, "the counts differ");
}

void MeasureBalance(Figures& figures, const PlainDatabase& plain, const QString& day)
{
    PlainStatement sum(plain, "select sum(montant) from Actes where date < ?");
    sum.Bind(1, basic::DateValue(day).toString(Qt::ISODate));
    const QString statement = "select sum(montant) as S1 from Actes where date <#" + basic::QueryDate(day) + "#";
    double floorSum = 0, ourSum = 0;
    figures.Compare(
        "sum of montant before the last day", {},
        [&] {
            sum.Step();
            floorSum = sum.Real(0);
            sum.Reset();
        },
        [&] { ourSum = TheDatabase.OpenRecordset(statement)["S1"].Double(); }, {});
    Require(floorSum == ourSum, "the sums differ");
}

/// As at the end of the program, the database is closed first.
void MeasureArchive(Figures& figures, const QString& folder)
{
    const OpenPractice practice(folder);
    core::CloseDataFiles();
    PlainDatabase plain(FileOf(folder));
    const QString target = folder + "/ARCHIVES/plain.db";
    figures.Compare(
        "archive copy, checked", {.measured = 7}, [&] { plain.CopyChecked(target); },
        [] { archives::CopyToArchives(core::DataFolder); }, {.ratio = 1.6});
    QFile::remove(target);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    Require(argc == 3, "usage: bench_dao LARGE TENTH");
    const QString large = QString::fromLocal8Bit(argv[1]), tenth = QString::fromLocal8Bit(argv[2]);
    const QuietDesk desk;
    Figures figures;

    const double onTenth = MeasureOpening(figures, "open all acts, on a tenth of them", tenth);
    const double onLarge = MeasureOpening(figures, "open all acts and test for rows", large);
    figures.Print("    growth on ten times the acts", onLarge / onTenth, "x", GrowthLimit);
    {
        const OpenPractice practice(large);
        const PlainDatabase plain(FileOf(large));
        const QString day = OpenPractice::LastDay();
        MeasureSearch(figures, plain);
        MeasureDay(figures, plain, day);
        MeasureEdit(figures, plain);
        MeasureCounts(figures, plain, day);
        MeasureBalance(figures, plain, day);
    }
    MeasureArchive(figures, large);
    return figures.ExitCode();
}
