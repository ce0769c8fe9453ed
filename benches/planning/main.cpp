// The planning on the last day of a large practice, and a day's appointments listed and printed.
//
//     bench_planning LARGE     a data folder, left as it is

#include "core/calendar.h"
#include "core/globals.h"
#include "data/Practice.h"
#include "data/ReportTemplates.h"
#include "planning/Planning.h"
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
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>
#include <vector>

using namespace bench;
using planning::Planning;

namespace {

constexpr int Units = 20;
constexpr int Slots = 10;
constexpr int Patients = 4000;
constexpr int ListedAppointments = 60;
constexpr int OtherAppointments = 10; // of each other unit on that day
const QDate ListedDay(2008, 6, 17);

/// The counts behind the board, by prepared statements.
class PlainBoard {
public:
    explicit PlainBoard(const PlainDatabase& database)
        : units(database, "select num, denom from Presta order by Ordre"),
          programmed(database, "select count(num) from Plani where date = ?1 and Num_Presta = ?2"),
          performed(database, "select count(num) from Actes where date_Presta = ?1 and num_presta = ?2"),
          slot(database, "select count(num) from Plani where Num_Presta = ?1 and date = ?2 and HH = ?3")
    {
        while (units.Step())
            keys.push_back(units.Number(0));
        units.Reset();
    }

    void CountDay(const QDate& day)
    {
        counted = 0;
        for (PlainStatement* count : {&programmed, &performed}) {
            count->Bind(1, day.toString(Qt::ISODate));
            for (const qint64 unit : keys) {
                count->Bind(2, unit).Step();
                counted += count->Number(0);
                count->Reset();
            }
        }
    }

    void CountMonth(const QDate& month)
    {
        slot.Bind(1, keys.at(1));
        for (int day = 1; day <= month.daysInMonth(); ++day) {
            slot.Bind(2, QDate(month.year(), month.month(), day).toString(Qt::ISODate));
            for (int hour = 0; hour < Slots; ++hour) {
                slot.Bind(3, hour).Step();
                counted += slot.Number(0);
                slot.Reset();
            }
        }
    }

    std::vector<qint64> keys;
    qint64 counted = 0; ///< appointments and acts of the day, and of the month after CountMonth

private:
    PlainStatement units, programmed, performed, slot;
};

qint64 CountedOn(const Planning& board)
{
    qint64 counted = 0;
    for (int row = 0; row < board.Grid1.Rows(); ++row)
        for (const int column : {Planning::Programmed, Planning::Performed})
            counted += board.Grid1.Text(row, column).toInt();
    for (int row = 0; row < board.Grid3.Rows(); ++row)
        for (int column = Planning::FirstHour; column < board.Grid3.Columns(); ++column)
            counted += board.Grid3.Text(row, column).toInt();
    return counted;
}

void MeasureBoard(Figures& figures, const QString& folder)
{
    const OpenPractice practice(folder);
    const PlainDatabase database(host::PathIn(folder, data::DatabaseFile));
    const QDate today = basic::DateValue(OpenPractice::LastDay());
    host::FixToday(today);
    PlainBoard plain(database);
    Require(plain.keys.size() == Units, "a practice of twenty services is wanted");

    Planning board;
    board.Load();
    board.show();
    QApplication::processEvents();
    figures.Compare(
        "planning, the counts of its opening", {.measured = 51},
        [&] {
            plain.CountDay(today);
            plain.CountMonth(today);
        },
        [&] {
            board.CountDayByUnit();
            board.PrepareMonthGrid();
            board.FillMonthCounts();
        },
        {.ratio = 2});
    Require(CountedOn(board) == plain.counted, "the board counts otherwise");
    std::printf("    (%lld counted)\n", static_cast<long long>(plain.counted));

    figures.Compare(
        "planning, opened and painted", {.measured = 15},
        [&] {
            plain.CountDay(today);
            plain.CountMonth(today);
        },
        [&] {
            Planning opened;
            opened.Load();
            opened.show();
            QApplication::processEvents();
        },
        {.milliseconds = 100});

    // Forward and back, so that the day stays the same.
    figures.Compare(
        "planning, two next days", {.measured = 51},
        [&] {
            plain.CountDay(today.addDays(-1));
            plain.CountDay(today);
        },
        [&] {
            board.Image2_Click(Planning::DayBefore);
            board.Image2_Click(Planning::DayAfter);
        },
        {.ratio = 2});
}

void FillPractice(PlainDatabase& database)
{
    database.Run("BEGIN IMMEDIATE");
    PlainStatement patient(database,
                           "insert into Patients (nom, Prenom, tel, ville, N_carte) values (?1, ?2, ?3, 'Alger', ?3)");
    for (int i = 0; i < Patients; ++i)
        patient.Bind(1, QString("Nom%1").arg(i))
            .Bind(2, QString("Prénom%1").arg(i))
            .Bind(3, QString("0550%1").arg(i))
            .Run();
    PlainStatement unit(database, "insert into Presta (denom, Ordre) values (?, ?)");
    PlainStatement appointment(database, "insert into Plani (date, Num_Presta, HH, num_patient) values (?, ?, ?, ?)");
    appointment.Bind(1, ListedDay.toString(Qt::ISODate));
    for (int i = 0; i < Units; ++i) {
        unit.Bind(1, QString("Unité %1").arg(i)).Bind(2, i).Run();
        for (int each = 0; each < (i == 0 ? ListedAppointments : OtherAppointments); ++each)
            appointment.Bind(2, i + 1).Bind(3, each % Slots).Bind(4, 1 + (i + each * 31) % Patients).Run();
    }
    database.Run("COMMIT");
}

/// The rows of a unit's list, formatted as on the screen.
qint64 ListPlainly(PlainStatement& appointments, PlainStatement& patient)
{
    static const QStringList hours{" 8-9",   " 9-10",  " 10-11", " 11-12", " 12-13",
                                   " 13-14", " 14-15", " 15-16", " 16-17", " 17-18"};
    std::vector<QStringList> rows;
    for (; appointments.Step(); patient.Reset()) {
        QStringList& row = rows.emplace_back();
        row << QString::number(rows.size()) << hours[appointments.Number(1)];
        if (patient.Bind(1, appointments.Number(2)).Step())
            for (int field = 0; field < 5; ++field)
                row << " " + patient.Text(field);
    }
    appointments.Reset();
    return static_cast<qint64>(rows.size());
}

void MeasureList(Figures& figures, const PlainDatabase& database)
{
    PlainStatement appointments(
        database, "select num, HH, num_patient from Plani where Num_Presta = 1 and date = '2008-06-17' order by HH");
    PlainStatement patient(database, "select nom, Prenom, tel, ville, N_carte from Patients where num = ?");
    Planning board;
    board.Load();
    board.show();
    QApplication::processEvents();
    qint64 listed = 0;
    figures.Compare(
        "a unit's list of 60 appointments", {.measured = 101}, [&] { listed = ListPlainly(appointments, patient); },
        [&] { board.LoadDayAppointments(); }, {.ratio = 3});
    Require(listed == ListedAppointments && board.Grid2.Rows() == listed, "the two lists differ");
    figures.Compare(
        "a unit's list, opened and painted", {.measured = 15}, [&] { listed = ListPlainly(appointments, patient); },
        [&] {
            board.Image1_Click(Planning::OpenList);
            QApplication::processEvents();
            board.Image4_Click(Planning::CloseList);
        },
        {.milliseconds = 50});
}

/// Shows a preview until its first page is painted, and closes it.
class PreviewDesk : public QuietDesk {
public:
    void ShowModal(forms::Form& preview) override
    {
        preview.Load();
        preview.show();
        QApplication::processEvents();
        preview.grab(); // the offscreen platform paints only on demand
        visible.push_back(static_cast<double>(sinceClick.nsecsElapsed()) / 1e6);
        preview.Unload();
    }

    QElapsedTimer sinceClick;
    std::vector<double> visible;
};

void MeasurePrint(Figures& figures)
{
    constexpr int prints = 9;
    PreviewDesk desk;
    Planning board;
    board.Load();
    board.SSOption1[Planning::AllUnits].setChecked(true);
    for (int print = 0; print < prints; ++print) {
        desk.sinceClick.start();
        board.Image4_Click(Planning::Print);
    }
    Require(desk.visible.size() == prints, "no preview came");
    figures.Print("planning of all units, click to visible page", Median(desk.visible), "ms", 100);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Require(argc == 2, "usage: bench_planning LARGE");
    forms::ApplyStyle(application);
    Figures figures;
    {
        const QuietDesk desk;
        MeasureBoard(figures, QString::fromLocal8Bit(argv[1]));
    }
    const QTemporaryDir folder;
    data::CreatePractice(folder.path(), {.accessCode = 6, .letterhead = {"Cabinet"}});
    Require(data::HasReportTemplate(folder.path(), "Planning.RPT"), "the program has no Planning.RPT");
    PlainDatabase database(host::PathIn(folder.path(), data::DatabaseFile));
    FillPractice(database);
    host::FixToday(ListedDay);
    const OpenPractice practice(folder.path());
    {
        const QuietDesk desk;
        MeasureList(figures, database);
    }
    MeasurePrint(figures);
    return figures.ExitCode();
}
