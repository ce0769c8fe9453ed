// The list of pending settlements and the rows of a report, each beside the same work as plain prepared statements in
// the same run. Prints floor, ours and their ratio; ends with 1 when a ratio is past its bound.

#include "cash/F_Inst.h"
#include "core/configuration.h"
#include "core/globals.h"
#include "core/opening.h"
#include "core/printing.h"
#include "data/Practice.h"
#include "platform/forms/QtDesk.h"
#include "platform/forms/Style.h"
#include "platform/host/Files.h"

#include <QApplication>
#include <QDate>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <sqlite3.h>
#include <vector>

namespace {

constexpr int Runs = 7;
constexpr int ReportRows = 16352;
constexpr int Patients = 4000;
constexpr int Services = 12;
constexpr int Years = 5;
constexpr int ActsOfYear = 40000; // every second one is pending
constexpr int FirstYear = 2006;
constexpr int ListedYear = 2008;

void Require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "bench: %s\n", what);
    std::exit(2);
}

/// A statement of the floor.
class Plain {
public:
    Plain(sqlite3* database, const char* sql)
    {
        Require(sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) == SQLITE_OK, sqlite3_errmsg(database));
    }
    ~Plain() { sqlite3_finalize(statement); }
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;

    Plain& Bind(int place, qint64 number)
    {
        sqlite3_bind_int64(statement, place, number);
        return *this;
    }
    Plain& Bind(int place, const QString& text)
    {
        const QByteArray utf8 = text.toUtf8();
        sqlite3_bind_text(statement, place, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
        return *this;
    }
    bool Step()
    {
        const int result = sqlite3_step(statement);
        Require(result == SQLITE_ROW || result == SQLITE_DONE, "a statement of the floor failed");
        return result == SQLITE_ROW;
    }
    void Run()
    {
        Step();
        Reset();
    }
    void Reset() { sqlite3_reset(statement); }
    bool IsNull(int column) { return sqlite3_column_type(statement, column) == SQLITE_NULL; }
    qint64 Number(int column) { return sqlite3_column_int64(statement, column); }
    double Real(int column) { return sqlite3_column_double(statement, column); }
    QString Text(int column)
    {
        return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                                 sqlite3_column_bytes(statement, column));
    }

private:
    sqlite3_stmt* statement = nullptr;
};

/// A connection of the floor, set as the program's own.
class PlainDatabase {
public:
    explicit PlainDatabase(const QString& path)
    {
        Require(sqlite3_open(path.toUtf8().constData(), &handle) == SQLITE_OK, "the database doesn't open");
        Run("PRAGMA journal_mode = WAL");
        Run("PRAGMA synchronous = FULL");
    }
    ~PlainDatabase() { sqlite3_close(handle); }
    PlainDatabase(const PlainDatabase&) = delete;
    PlainDatabase& operator=(const PlainDatabase&) = delete;

    operator sqlite3*() const { return handle; }
    void Run(const char* sql) { Require(sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql); }

private:
    sqlite3* handle = nullptr;
};

void FillPractice(PlainDatabase& database)
{
    database.Run("BEGIN IMMEDIATE");
    Plain patient(database, "INSERT INTO Patients (nom, Prenom) VALUES (?, ?)");
    for (int i = 0; i < Patients; ++i)
        patient.Bind(1, QString("Nom%1").arg(i)).Bind(2, QString("Prénom%1").arg(i)).Run();
    Plain service(database, "INSERT INTO Presta (denom, Ordre) VALUES (?, ?)");
    for (int i = 0; i < Services; ++i)
        service.Bind(1, QString("Unité %1").arg(i)).Bind(2, i).Run();
    Plain act(
        database,
        "INSERT INTO Actes (Date, date_Presta, MM, AA, HH, Heure, num_patient, num_presta, montant, Type, flag_R) "
        "VALUES (?1, ?1, ?2, ?3, 2, '10:15', ?4, ?5, ?6, 'C', ?7)");
    for (int i = 0; i < Years * ActsOfYear; ++i) {
        const QDate day = QDate(FirstYear + i / ActsOfYear, 1, 1).addDays(i % ActsOfYear * 365LL / ActsOfYear);
        act.Bind(1, day.toString(Qt::ISODate)).Bind(2, day.month()).Bind(3, day.year());
        act.Bind(4, 1 + i * 31LL % Patients)
            .Bind(5, 1 + i % Services)
            .Bind(6, i % 4 == 0 ? 150 : 0)
            .Bind(7, i % 2 == 0 ? 1 : 2);
        act.Run();
    }
    database.Run("COMMIT");
}

/// The best of several runs, in milliseconds: what the work costs when nothing else disturbs it.
template <class Work>
double Best(Work work)
{
    double best = 1e9;
    for (int run = 0; run < Runs; ++run) {
        QElapsedTimer clock;
        clock.start();
        work();
        best = std::min(best, static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    return best;
}

bool Report(const char* what, double floor, double ours, double bound)
{
    const double ratio = ours / floor;
    std::printf("%-44s floor %8.2f ms   ours %8.2f ms   ratio %5.2f   bound %4.1f%s\n", what, floor, ours, ratio, bound,
                ratio <= bound ? "" : "   TOO SLOW");
    return ratio <= bound;
}

bool MeasureReportRows(PlainDatabase& database)
{
    dao::KeyList keys;
    for (int key = 1; key <= ReportRows; ++key)
        keys << key;
    const double floor = Best([&] {
        database.Run("BEGIN IMMEDIATE");
        database.Run("DELETE FROM Prov");
        Plain row(database, "INSERT INTO Prov (num) VALUES (?)");
        for (const dao::Key key : keys)
            row.Bind(1, key).Run();
        database.Run("COMMIT");
        database.Run("PRAGMA wal_checkpoint(PASSIVE)"); // both move the rows from the log into the file
    });
    const double ours = Best([&] { core::RefillScratchTable("Prov", core::KeyRows(keys)); });
    return Report("16 352 rows into Prov", floor, ours, 2.0);
}

using PlainRow = std::array<QString, 8>;

std::vector<PlainRow> ListPlainly(PlainDatabase& database)
{
    static const QString codes[] = {"NP", "R-"};
    Plain acts(database,
               "SELECT num, num_patient, num_presta, strftime('%d/%m/%Y', date_Presta), Heure, flag_R, montant "
               "FROM Actes WHERE date >= ? AND date <= ? AND flag_R < 2 ORDER BY num");
    Plain patient(database, "SELECT nom, Prenom FROM Patients WHERE num = ?");
    Plain service(database, "SELECT denom FROM Presta WHERE num = ?");
    acts.Bind(1, QString("%1-01-01").arg(ListedYear)).Bind(2, QString("%1-12-31").arg(ListedYear));
    std::vector<PlainRow> rows;
    dao::KeyList keys;
    while (acts.Step()) {
        PlainRow& row = rows.emplace_back();
        row[0] = QString::number(rows.size());
        if (patient.Bind(1, acts.Number(1)).Step()) {
            row[1] = " " + patient.Text(0);
            row[2] = " " + patient.Text(1);
        }
        patient.Reset();
        if (service.Bind(1, acts.Number(2)).Step())
            row[3] = " " + service.Text(0);
        service.Reset();
        row[4] = acts.Text(3);
        row[5] = acts.Text(4);
        row[6] = codes[acts.Number(5)];
        if (acts.Real(6) != 0)
            row[7] = QString::number(acts.Real(6), 'g', 15) + " ";
        keys << static_cast<dao::Key>(acts.Number(0));
    }
    return rows;
}

bool MeasurePendingList(PlainDatabase& database)
{
    std::size_t listed = 0;
    const double floor = Best([&] { listed = ListPlainly(database).size(); });

    cash::F_Inst screen;
    screen.Load();
    screen.show();
    QApplication::processEvents();
    screen.Dates.Text1[1].setText(QString("01/01/%1").arg(ListedYear));
    screen.Dates.Text1[2].setText(QString("31/12/%1").arg(ListedYear));
    const double ours = Best([&] {
        screen.Image2_Click(4);
        QApplication::processEvents(); // until it is painted
    });
    Require(static_cast<std::size_t>(screen.Grid3.Rows()) == listed, "the two lists differ");
    std::printf("%zu pending acts of %d\n", listed, ListedYear);
    return Report("a year of pending settlements, shown", floor, ours, 2.5);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    forms::ApplyStyle(application);
    forms::QtDesk desk;
    forms::SetDesk(&desk);

    const QTemporaryDir folder;
    data::CreatePractice(folder.path(), {.accessCode = 6, .letterhead = {"Cabinet"}});
    PlainDatabase database(host::PathIn(folder.path(), data::databaseFile));
    FillPractice(database);

    core::FillCalendarNames();
    core::DataFolder = folder.path();
    core::LoadConfiguration();
    core::CreateTheWorkspace();
    core::OpenDataFiles();
    const bool rows = MeasureReportRows(database);
    const bool list = MeasurePendingList(database);
    core::ResetGlobals();
    return rows && list ? 0 : 1;
}
