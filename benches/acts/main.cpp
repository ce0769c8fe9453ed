// The day sheet and the actualisation on 100,000 and on 1,000,000 acts.

#include "acts/Actualisation.h"
#include "acts/New_Act.h"
#include "acts/New_Mecano.h"
#include "acts/SheetPractice.h"
#include "core/globals.h"
#include "platform/forms/Style.h"
#include "platform/host/Host.h"
#include "support/Measure.h"
#include "support/QuietDesk.h"

#include <QApplication>
#include <QDate>
#include <cstdio>
#include <vector>

using namespace bench;

namespace {

constexpr double GrowthLimit = 3; // time for a day in a table ten times as large

/// The data of the sheet by prepared statements: counts and acts of every service, the patient of every act.
class PlainSheet {
public:
    explicit PlainSheet(const PlainDatabase& database)
        : services(database, "select num, denom from Presta order by Ordre"),
          count(database, "select count(num) from Actes where Date='2008-06-17' and num_presta=?"),
          recent(database, "select count(num) from Actes where Date='2008-06-17' and num_presta=? and Flag_H=0"),
          acts(database, "select num,num_patient,date_Presta,HH,Type,flag_R,Flag_H from Actes "
                         "where Date='2008-06-17' and num_presta=? order by Date, num"),
          patient(database, "select nom, Prenom from Patients where num=?")
    {
    }

    void Read()
    {
        for (; services.Step();) {
            for (PlainStatement* counting : {&count, &recent})
                counting->Bind(1, services.Number(0)).Run();
            acts.Bind(1, services.Number(0));
            while (acts.Step())
                ReadAct();
            acts.Reset();
        }
        services.Reset();
    }

private:
    void ReadAct()
    {
        for (const int number : {0, 3, 5, 6})
            read += acts.Number(number);
        read += acts.Text(2).size() + acts.Text(4).size();
        patient.Bind(1, acts.Number(1)).Step();
        read += patient.Text(0).size() + patient.Text(1).size();
        patient.Reset();
    }

    PlainStatement services, count, recent, acts, patient;
    qint64 read = 0;
};

/// Returns the time to fill the sheet, in milliseconds.
double MeasureSheet(Figures& figures, const PlainDatabase& plain)
{
    acts::New_Act sheet;
    sheet.Load();
    sheet.show();
    QApplication::processEvents();
    PlainSheet plainSheet(plain);
    const Times filled = figures.Compare(
        "sheet of 250 acts, filled", {.measured = 51}, [&] { plainSheet.Read(); }, [&] { sheet.ShowDay(); },
        {.ratio = 4});
    figures.Compare(
        "sheet of 250 acts, filled and painted", {.measured = 51}, [&] { plainSheet.Read(); },
        [&] {
            sheet.ShowDay();
            QApplication::processEvents();
        },
        {.milliseconds = 50});
    return filled.ours;
}

void MeasureToggles(Figures& figures, PlainDatabase& plain)
{
    PlainStatement update(plain, "update Actes set Flag_H=? where num=?");
    std::vector<qint64> keys;
    PlainStatement day(plain, "select num from Actes where Date='2008-06-18'");
    while (day.Step())
        keys.push_back(day.Number(0));
    day.Reset();
    int flag = 0;

    acts::New_Act sheet;
    sheet.Load();
    sheet.DayLabel.setText(FullDay);
    sheet.ShowDay();
    figures.Compare(
        "5000 acts toggled and saved", {},
        [&] {
            flag = 1 - flag;
            plain.Run("begin immediate");
            for (const qint64 key : keys)
                update.Bind(1, flag).Bind(2, key).Run();
            plain.Run("commit");
        },
        [&] {
            for (int row = 0; row < sheet.Grid2.Rows(); ++row) {
                sheet.Grid2.SetRow(row);
                sheet.ToggleActArchive();
            }
            sheet.SaveActToggles();
        },
        {.milliseconds = 300});
}

/// One act in three of every service and day, each day a transaction.
void RunYearPlainly(PlainDatabase& database)
{
    PlainStatement archive(database, "update Actes set Flag_H=1 where Date=?");
    PlainStatement select(database, "select num from Actes where Date=? and num_presta=? order by num");
    PlainStatement keep(database, "update Actes set Flag_H=0 where num=?");
    std::vector<qint64> kept;
    for (int day = 0; day < YearDays; ++day) {
        const QString date = QDate(2007, 1, 1).addDays(day).toString(Qt::ISODate);
        database.Run("begin immediate");
        archive.Bind(1, date).Run();
        kept.clear();
        for (int service = 1; service <= Services; ++service) {
            select.Bind(1, date).Bind(2, service);
            for (int place = 0; select.Step(); ++place)
                if (place % 3 == 0)
                    kept.push_back(select.Number(0));
            select.Reset();
        }
        for (const qint64 key : kept)
            keep.Bind(1, key).Run();
        database.Run("commit");
    }
    database.Run("update Actes set Flag_H=0 where Date between '2007-01-01' and '2007-09-07' and flag_R=1");
}

void MeasureYear(Figures& figures, PlainDatabase& plain)
{
    figures.Compare(
        "a year's actualisation, 88,000 updates", {.measured = 5}, [&] { RunYearPlainly(plain); },
        [] { acts::Actualisation("01/01/2007", "07/09/2007", 2).ThinPeriod(); }, {.ratio = 3, .milliseconds = 1000});
}

/// Opening the dialog, which searches the first and the last day of all acts.
void MeasureDialog(Figures& figures, const PlainDatabase& plain)
{
    PlainStatement ends(plain, "select (select min(Date) from Actes), (select max(Date) from Actes)");
    figures.Compare(
        "the actualisation's dialog opened", {}, [&] { ends.Run(); }, [] { acts::New_Mecano().Load(); }, {});
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    forms::ApplyStyle(application);
    const QuietDesk desk;
    host::FixToday(QDate::fromString(SheetDay, "dd/MM/yyyy"));
    Figures figures;

    double small = 0;
    for (const int acts : {100'000, 1'000'000}) {
        std::printf("%d acts\n", acts);
        const SheetPractice practice(acts);
        PlainDatabase plain(practice.PlainFile());
        const double fill = MeasureSheet(figures, plain);
        MeasureToggles(figures, plain);
        MeasureYear(figures, plain);
        MeasureDialog(figures, plain);
        if (small > 0)
            figures.Print("    growth of the day on ten times the acts", fill / small, "x", GrowthLimit);
        small = fill;
    }
    return figures.ExitCode();
}
