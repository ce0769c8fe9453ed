// The list of pending settlements and the rows of a report, each compared with plain prepared statements.

#include "cash/F_Inst.h"
#include "core/printing.h"
#include "data/Practice.h"
#include "platform/forms/Style.h"
#include "platform/host/Files.h"
#include "support/Floor.h"
#include "support/Measure.h"
#include "support/OpenPractice.h"
#include "support/QuietDesk.h"

#include <QApplication>
#include <QDate>
#include <QTemporaryDir>
#include <array>
#include <cstdio>
#include <vector>

using namespace bench;

namespace {

constexpr int ReportRows = 16352;
constexpr int Patients = 4000;
constexpr int Services = 12;
constexpr int Years = 5;
constexpr int ActsOfYear = 40000; // every second one is pending
constexpr int FirstYear = 2006;
constexpr int ListedYear = 2008;

void FillPractice(PlainDatabase& database)
{
    database.Run("BEGIN IMMEDIATE");
    PlainStatement patient(database, "INSERT INTO Patients (nom, Prenom) VALUES (?, ?)");
    for (int i = 0; i < Patients; ++i)
        patient.Bind(1, QString("Nom%1").arg(i)).Bind(2, QString("Prénom%1").arg(i)).Run();
    PlainStatement service(database, "INSERT INTO Presta (denom, Ordre) VALUES (?, ?)");
    for (int i = 0; i < Services; ++i)
        service.Bind(1, QString("Unité %1").arg(i)).Bind(2, i).Run();
    PlainStatement act(
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

void MeasureReportRows(Figures& figures, PlainDatabase& database)
{
    dao::KeyList keys;
    for (int key = 1; key <= ReportRows; ++key)
        keys << key;
    figures.Compare(
        "16,352 rows into Prov", {},
        [&] {
            database.Run("BEGIN IMMEDIATE");
            database.Run("DELETE FROM Prov");
            PlainStatement row(database, "INSERT INTO Prov (num) VALUES (?)");
            for (const dao::Key key : keys)
                row.Bind(1, key).Run();
            database.Run("COMMIT");
            database.Run(
                "PRAGMA wal_checkpoint(PASSIVE)"); // both variants include moving the rows from the log into the file
        },
        [&] { core::RefillScratchTable("Prov", core::KeyRows(keys)); }, {.ratio = 2});
}

using PlainRow = std::array<QString, 8>;

std::vector<PlainRow> ListPlainly(PlainDatabase& database)
{
    static const QString codes[] = {"NP", "R-"};
    PlainStatement acts(
        database, "SELECT num, num_patient, num_presta, strftime('%d/%m/%Y', date_Presta), Heure, flag_R, montant "
                  "FROM Actes WHERE date >= ? AND date <= ? AND flag_R < 2 ORDER BY num");
    PlainStatement patient(database, "SELECT nom, Prenom FROM Patients WHERE num = ?");
    PlainStatement service(database, "SELECT denom FROM Presta WHERE num = ?");
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

void MeasurePendingList(Figures& figures, PlainDatabase& database)
{
    cash::F_Inst screen;
    screen.Load();
    screen.show();
    QApplication::processEvents();
    screen.Dates.Text1[1].setText(QString("01/01/%1").arg(ListedYear));
    screen.Dates.Text1[2].setText(QString("31/12/%1").arg(ListedYear));
    std::size_t listed = 0;
    figures.Compare(
        "a year of pending settlements, shown", {}, [&] { listed = ListPlainly(database).size(); },
        [&] {
            screen.Image2_Click(4);
            QApplication::processEvents(); // until it is painted
        },
        {.ratio = 2.5});
    Require(static_cast<std::size_t>(screen.Grid3.Rows()) == listed, "the two lists differ");
    std::printf("    (%zu pending acts of %d)\n", listed, ListedYear);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    forms::ApplyStyle(application);
    const QuietDesk desk;

    const QTemporaryDir folder;
    data::CreatePractice(folder.path(), {.accessCode = 6, .letterhead = {"Cabinet"}});
    PlainDatabase database(host::PathIn(folder.path(), data::DatabaseFile));
    FillPractice(database);

    const OpenPractice practice(folder.path());
    Figures figures;
    MeasureReportRows(figures, database);
    MeasurePendingList(figures, database);
    return figures.ExitCode();
}
