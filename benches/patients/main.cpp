// The search for patients and their list on a large practice, and the journal of deleted acts on its own practice, each
// compared with plain prepared statements.
//
//     bench_patients LARGE     a data folder, left as it is

#include "acts/F_Sppr.h"
#include "acts/New_Rech.h"
#include "acts/j_Client.h"
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
using acts::F_Sppr;
using acts::j_Client;
using acts::New_Rech;

namespace {

constexpr int DeletedLines = 5000;
constexpr int DeletedPatients = 4000;
constexpr int DeletedServices = 12;

using PlainRow = std::array<QString, 9>;

QString AfterBlank(const PlainStatement& row, int column)
{
    return row.IsNull(column) ? QString() : " " + row.Text(column);
}

/// Rows of the fields num, nom, Prenom, Sexe, Flag_H and four texts, formatted as in lists of patients.
std::vector<PlainRow> ListPlainly(PlainStatement& patients)
{
    std::vector<PlainRow> rows;
    std::vector<qint64> keys;
    for (; patients.Step(); keys.push_back(patients.Number(0))) {
        PlainRow& row = rows.emplace_back();
        row[0] = " " + QString::number(rows.size());
        row[1] = AfterBlank(patients, 1);
        row[2] = AfterBlank(patients, 2);
        row[3] = patients.Number(3) == 0 ? "M" : "F";
        row[4] = patients.Number(4) == 1 ? "OUI" : "";
        for (int text = 5; text < 9; ++text)
            row[static_cast<std::size_t>(text)] = AfterBlank(patients, text);
    }
    patients.Reset();
    return rows;
}

/// The floor uses SQLite's own like and order, which only fold ASCII letters.
void MeasureNames(Figures& figures, const PlainDatabase& plain)
{
    PlainStatement names(plain,
                         "select num, nom, Prenom, Sexe, Flag_H, strftime('%d/%m/%Y', Naiss), tel, ville, N_carte "
                         "from Patients where nom like 'Ma%' order by nom, Prenom");
    New_Rech screen;
    screen.Load();
    screen.show();
    QApplication::processEvents();
    screen.SSTab1.setCurrentIndex(New_Rech::NamesPage);
    screen.Text2[New_Rech::LastName].setText("Ma");
    std::size_t found = 0;
    figures.Compare(
        "\"Ma\" among 100,000 patients, shown", {.measured = 31}, [&] { found = ListPlainly(names).size(); },
        [&] {
            screen.Image2_Click(New_Rech::FindNames);
            QApplication::processEvents(); // until it is painted
        },
        {.ratio = 1.5, .milliseconds = 150});
    Require(static_cast<std::size_t>(screen.Grid2.Rows()) == found, "the two searches differ");
    std::printf("    (%zu patients)\n", found);
}

void MeasureCard(Figures& figures, const PlainDatabase& plain)
{
    PlainStatement anyCard(plain, "select N_carte from Patients where N_carte is not null and num > 50000");
    Require(anyCard.Step(), "no card numbers");
    const QString card = anyCard.Text(0);
    anyCard.Reset();
    PlainStatement byCard(plain, "select * from Patients where N_carte = ?");
    New_Rech screen;
    screen.Load();
    screen.Text2[New_Rech::CardNumber].setText(card);
    bool found = false;
    figures.Compare(
        "a patient by card number", {.measured = 31, .repeats = 20}, [&] { byCard.Bind(1, card).Run(); },
        [&] { found = screen.FindByCard(); }, {.milliseconds = 5});
    Require(found, "the card wasn't found");
}

void MeasureList(Figures& figures, const PlainDatabase& plain)
{
    PlainStatement list(plain, "select num, nom, Prenom, Sexe, Flag_H, tel, ville, diagno, null "
                               "from Patients order by num limit " +
                                   QString::number(j_Client::MostListed));
    j_Client screen;
    screen.Load();
    screen.show();
    QApplication::processEvents();
    screen.ListQuery = "select * from Patients order by num";
    figures.Compare(
        "16,352 patients, listed and painted", {.measured = 31}, [&] { ListPlainly(list); },
        [&] {
            screen.FillPatientGrid();
            QApplication::processEvents();
        },
        {.milliseconds = 100});
    Require(screen.Grid1.Rows() == j_Client::MostListed, "the list is shorter");
}

void FillJournal(PlainDatabase& database)
{
    database.Run("BEGIN IMMEDIATE");
    PlainStatement patient(database, "INSERT INTO Patients (nom, Prenom) VALUES (?, ?)");
    for (int i = 0; i < DeletedPatients; ++i)
        patient.Bind(1, QString("Nom%1").arg(i)).Bind(2, QString("Prénom%1").arg(i)).Run();
    PlainStatement service(database, "INSERT INTO Presta (denom, Ordre) VALUES (?, ?)");
    for (int i = 0; i < DeletedServices; ++i)
        service.Bind(1, QString("Unité %1").arg(i)).Bind(2, i).Run();
    PlainStatement line(database, "INSERT INTO Actes_suppr (Date, Heure, num_patient, num_presta, Type, flag_R, "
                                  "Date_Suppr, H_Suppr) VALUES (?1, '10:15', ?2, ?3, 'K7', ?4, ?1, '17:05')");
    for (int i = 0; i < DeletedLines; ++i) {
        line.Bind(1, QDate(2008, 1, 1).addDays(i * 7LL % 365).toString(Qt::ISODate));
        line.Bind(2, 1 + i * 31LL % DeletedPatients).Bind(3, 1 + i % DeletedServices).Bind(4, i % 6).Run();
    }
    database.Run("COMMIT");
}

std::vector<PlainRow> ListJournalPlainly(const PlainDatabase& database)
{
    static const QString codes[] = {" NP", " R-", " P ", " R+", " Gr", " AB"};
    PlainStatement lines(database, "SELECT num, strftime('%d/%m/%Y', Date), Heure, num_presta, Type, flag_R, "
                                   "num_patient, strftime('%d/%m/%Y', Date_Suppr), H_Suppr "
                                   "FROM Actes_suppr ORDER BY Date_Suppr");
    PlainStatement patient(database, "SELECT nom, Prenom FROM Patients WHERE num = ?");
    PlainStatement service(database, "SELECT denom FROM Presta WHERE num = ?");
    std::vector<PlainRow> rows;
    std::vector<qint64> keys;
    for (; lines.Step(); keys.push_back(lines.Number(0))) {
        PlainRow& row = rows.emplace_back();
        row[0] = lines.Text(1);
        row[1] = lines.Text(2);
        if (service.Bind(1, lines.Number(3)).Step())
            row[2] = " " + service.Text(0);
        service.Reset();
        row[3] = lines.Text(4);
        row[4] = codes[lines.Number(5)];
        if (patient.Bind(1, lines.Number(6)).Step()) {
            row[5] = " " + patient.Text(0);
            row[6] = " " + patient.Text(1);
        }
        patient.Reset();
        row[7] = lines.Text(7);
        row[8] = lines.Text(8);
    }
    return rows;
}

void MeasureJournal(Figures& figures)
{
    const QTemporaryDir folder;
    data::CreatePractice(folder.path(), {.accessCode = 6, .letterhead = {"Cabinet"}});
    PlainDatabase plain(host::PathIn(folder.path(), data::DatabaseFile));
    FillJournal(plain);
    const OpenPractice practice(folder.path());
    F_Sppr screen;
    screen.Load();
    screen.show();
    QApplication::processEvents();
    figures.Compare(
        "5,000 deleted acts, listed and painted", {.measured = 31}, [&] { ListJournalPlainly(plain); },
        [&] {
            F_Sppr opened; // reads the journal again
            opened.Load();
            QApplication::processEvents();
        },
        {.ratio = 2});
    Require(screen.Grid1.Rows() == DeletedLines, "the journal is shorter");
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Require(argc == 2, "usage: bench_patients LARGE");
    const QString folder = QString::fromLocal8Bit(argv[1]);
    forms::ApplyStyle(application);
    const QuietDesk desk;
    Figures figures;
    {
        const OpenPractice practice(folder);
        const PlainDatabase plain(host::PathIn(folder, data::DatabaseFile));
        MeasureNames(figures, plain);
        MeasureCard(figures, plain);
        MeasureList(figures, plain);
    }
    MeasureJournal(figures);
    return figures.ExitCode();
}
