#include "LargePractice.h"
#include "acts/Actualisation.h"
#include "acts/New_Act.h"
#include "acts/New_Mecano.h"
#include "core/globals.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Style.h"
#include "platform/host/Host.h"

#include <QApplication>
#include <QDate>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

/// Says nothing and answers yes.
class QuietDesk : public forms::Desk {
public:
    forms::Answer Message(const QString&, forms::Icon, const QString&, forms::Buttons buttons) override
    {
        return buttons == forms::Buttons::YesNo ? forms::Answer::Yes : forms::Answer::Ok;
    }
    void ShowModal(forms::Form&) override {}
    void Beep() override {}
    [[noreturn]] void EndProgram(int code) override { std::exit(code); }
};

void Report(const char* name, int acts, bench::Time plain, bench::Time ours)
{
    std::printf("%-34s %8d acts  plain %8.2f ms (%8.2f cpu)  ours %8.2f ms (%8.2f cpu)  ratio %5.2f (%5.2f cpu)\n",
                name, acts, plain.clock, plain.processor, ours.clock, ours.processor, ours.clock / plain.clock,
                ours.processor / plain.processor);
    std::fflush(stdout);
}

/// What the sheet reads, by prepared statements: counts and acts of every service, the patient of every act.
class PlainSheet {
public:
    explicit PlainSheet(bench::Plain& database)
        : services(database.Prepare("select num, denom from Presta order by Ordre")),
          count(database.Prepare("select count(num) from Actes where Date='2008-06-17' and num_presta=?")),
          recent(
              database.Prepare("select count(num) from Actes where Date='2008-06-17' and num_presta=? and Flag_H=0")),
          acts(database.Prepare("select num,num_patient,date_Presta,HH,Type,flag_R,Flag_H from Actes "
                                "where Date='2008-06-17' and num_presta=? order by Date, num")),
          patient(database.Prepare("select nom, Prenom from Patients where num=?"))
    {
    }
    ~PlainSheet()
    {
        for (sqlite3_stmt* statement : {services, count, recent, acts, patient})
            sqlite3_finalize(statement);
    }
    PlainSheet(const PlainSheet&) = delete;
    PlainSheet& operator=(const PlainSheet&) = delete;

    void Read()
    {
        while (sqlite3_step(services) == SQLITE_ROW) {
            for (sqlite3_stmt* counting : {count, recent}) {
                sqlite3_bind_int(counting, 1, sqlite3_column_int(services, 0));
                sqlite3_step(counting);
                sqlite3_reset(counting);
            }
            sqlite3_bind_int(acts, 1, sqlite3_column_int(services, 0));
            while (sqlite3_step(acts) == SQLITE_ROW)
                ReadAct();
            sqlite3_reset(acts);
        }
        sqlite3_reset(services);
    }

private:
    void ReadAct()
    {
        for (int column = 0; column < sqlite3_column_count(acts); ++column)
            length = length + (sqlite3_column_text(acts, column) != nullptr ? 1 : 0);
        sqlite3_bind_int(patient, 1, sqlite3_column_int(acts, 1));
        sqlite3_step(patient);
        length = length + sqlite3_column_bytes(patient, 0) + sqlite3_column_bytes(patient, 1);
        sqlite3_reset(patient);
    }

    sqlite3_stmt *services, *count, *recent, *acts, *patient;
    volatile long length = 0;
};

double MeasureSheet(bench::Plain& plain, int acts)
{
    acts::New_Act sheet;
    sheet.Load();
    sheet.show();
    QApplication::processEvents();
    PlainSheet plainSheet(plain);
    const bench::Time floor = bench::MedianTime(51, [&] { plainSheet.Read(); });
    const bench::Time fill = bench::MedianTime(51, [&] { sheet.ShowDay(); });
    const bench::Time shown = bench::MedianTime(51, [&] {
        sheet.ShowDay();
        QApplication::processEvents();
    });
    Report("sheet of 250 acts, filled", acts, floor, fill);
    Report("sheet of 250 acts, filled + drawn", acts, floor, shown);
    return fill.processor;
}

void MeasureToggles(bench::Plain& plain, int acts)
{
    sqlite3_stmt* update = plain.Prepare("update Actes set Flag_H=? where num=?");
    std::vector<int> keys;
    sqlite3_stmt* day = plain.Prepare("select num from Actes where Date='2008-06-18'");
    while (sqlite3_step(day) == SQLITE_ROW)
        keys.push_back(sqlite3_column_int(day, 0));
    sqlite3_finalize(day);
    int flag = 0;
    const bench::Time floor = bench::MedianTime(5, [&] {
        flag = 1 - flag;
        plain.Run("begin immediate");
        for (const int key : keys) {
            sqlite3_bind_int(update, 1, flag);
            sqlite3_bind_int(update, 2, key);
            bench::Plain::RunOnce(update);
        }
        plain.Run("commit");
    });
    sqlite3_finalize(update);

    acts::New_Act sheet;
    sheet.Load();
    sheet.DayLabel.setText(bench::FullDay);
    sheet.ShowDay();
    const bench::Time ours = bench::MedianTime(5, [&] {
        for (int row = 0; row < sheet.Grid2.Rows(); ++row) {
            sheet.Grid2.SetRow(row);
            sheet.ToggleActArchive();
        }
        sheet.SaveActToggles();
    });
    Report("5000 acts toggled and saved", acts, floor, ours);
}

/// One act in three of every service and day, each day a transaction.
void RunYearPlainly(bench::Plain& database)
{
    sqlite3_stmt* archive = database.Prepare("update Actes set Flag_H=1 where Date=?");
    sqlite3_stmt* select = database.Prepare("select num from Actes where Date=? and num_presta=? order by num");
    sqlite3_stmt* keep = database.Prepare("update Actes set Flag_H=0 where num=?");
    std::vector<int> kept;
    for (int day = 0; day < bench::YearDays; ++day) {
        const QByteArray date = QDate(2007, 1, 1).addDays(day).toString(Qt::ISODate).toLatin1();
        database.Run("begin immediate");
        sqlite3_bind_text(archive, 1, date.constData(), -1, SQLITE_STATIC);
        bench::Plain::RunOnce(archive);
        kept.clear();
        for (int service = 1; service <= bench::Services; ++service) {
            sqlite3_bind_text(select, 1, date.constData(), -1, SQLITE_STATIC);
            sqlite3_bind_int(select, 2, service);
            for (int place = 0; sqlite3_step(select) == SQLITE_ROW; ++place)
                if (place % 3 == 0)
                    kept.push_back(sqlite3_column_int(select, 0));
            sqlite3_reset(select);
        }
        for (const int key : kept) {
            sqlite3_bind_int(keep, 1, key);
            bench::Plain::RunOnce(keep);
        }
        database.Run("commit");
    }
    database.Run("update Actes set Flag_H=0 where Date between '2007-01-01' and '2007-09-07' and flag_R=1");
    for (sqlite3_stmt* statement : {archive, select, keep})
        sqlite3_finalize(statement);
}

void MeasureYear(bench::Plain& plain, int acts)
{
    const bench::Time floor = bench::MedianTime(5, [&] { RunYearPlainly(plain); });
    const bench::Time ours =
        bench::MedianTime(5, [] { acts::Actualisation("01/01/2007", "07/09/2007", 2).ThinPeriod(); });
    Report("a year's actualisation (88,000)", acts, floor, ours);
}

/// The dialog's opening, which looks for the first and the last day of all acts.
void MeasureDialog(bench::Plain& plain, int acts)
{
    sqlite3_stmt* ends = plain.Prepare("select (select min(Date) from Actes), (select max(Date) from Actes)");
    const bench::Time floor = bench::MedianTime(5, [&] { bench::Plain::RunOnce(ends); });
    sqlite3_finalize(ends);
    const bench::Time ours = bench::MedianTime(5, [] { acts::New_Mecano().Load(); });
    Report("the actualisation's dialog opened", acts, floor, ours);
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    forms::ApplyStyle(application);
    QuietDesk desk;
    forms::SetDesk(&desk);
    host::FixToday(QDate::fromString(bench::SheetDay, "dd/MM/yyyy"));

    double small = 0;
    for (const int acts : {100'000, 1'000'000}) {
        const bench::LargePractice practice(acts);
        bench::Plain plain(practice.PlainFile());
        const double fill = MeasureSheet(plain, acts);
        MeasureToggles(plain, acts);
        MeasureYear(plain, acts);
        MeasureDialog(plain, acts);
        if (small == 0)
            small = fill;
        else
            std::printf("ten times the acts: the day takes %.2f times as long\n", fill / small);
    }
    return 0;
}
