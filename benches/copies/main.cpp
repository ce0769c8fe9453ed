// The copies of a large practice: made with dated ones at the shutdown, compared with the practice, and restored.
//
//     bench_copies LARGE     a data folder, left as it was

#include "archives/Archives.h"
#include "data/Practice.h"
#include "platform/host/FileWork.h"
#include "platform/host/Files.h"
#include "platform/store/DatabaseReader.h"
#include "practice/copies/CashDays.h"
#include "support/Floor.h"
#include "support/Measure.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace bench;

namespace {

void RemoveCopies(const QString& folder, const QString& pattern)
{
    const QDir archives(folder + "/ARCHIVES");
    for (const QString& name : archives.entryList({pattern}, QDir::Files))
        QFile::remove(archives.filePath(name));
}

/// The first shutdown of a day: the copy of an earlier day becomes a dated one.
void MeasureShutdown(Figures& figures, const QString& folder)
{
    const QString copy = folder + "/ARCHIVES/ZEP_ONE.MDB";
    archives::CopyToArchives(folder);
    figures.Compare(
        "shutdown with dated copies", {.measured = 5},
        [&] { archives::CopyDatabase(folder + "/ZEP_ONE.MDB", folder + "/ARCHIVES/plain.db"); },
        [&] {
            QFile file(copy);
            Require(file.open(QIODevice::ReadWrite), "no copy");
            file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime);
            file.close();
            archives::CopyToArchives(folder);
        },
        {.ratio = 1.1});
    Require(archives::ArchivedCopies(folder).size() == 2, "no dated copy was kept");
    RemoveCopies(folder, "plain.db");
    RemoveCopies(folder, "ZEP_ONE 2*.MDB");
}

/// Reads every value of the tables that are compared.
qint64 ReadAll(const PlainDatabase& database)
{
    qint64 read = 0;
    for (const char* const table :
         {"Patients", "Actes", "Actes_suppr", "Plani", "Presta", "Recettes", "Tarif", "Permn"}) {
        PlainStatement rows(database, QString("select * from %1").arg(table));
        while (rows.Step())
            read += !rows.IsNull(0);
    }
    return read;
}

void MeasureComparison(Figures& figures, const QString& folder)
{
    const QString now = folder + "/ZEP_ONE.MDB";
    const QString copy = folder + "/ARCHIVES/ZEP_ONE.MDB";
    const QString plain = folder + "/ARCHIVES/plain.db";
    QFile::copy(copy, plain); // opened for writing by the floor, which breaks a seal
    const PlainDatabase plainNow(now);
    const PlainDatabase plainCopy(plain);
    figures.Compare(
        "compare with a copy", {.measured = 5}, [&] { Require(ReadAll(plainNow) == ReadAll(plainCopy), "other rows"); },
        [&] {
            const store::DatabaseReader before(copy);
            const store::DatabaseReader after(now);
            const auto changes = practice::DifferencesOf(before, after);
            Require(practice::DifferingDays(before, after, changes, QDate::currentDate()).isEmpty(), "days differ");
        },
        {.ratio = 3});
    host::RemoveDatabase(plain);
}

void MeasureRestoration(Figures& figures, const QString& folder)
{
    const QString copy = folder + "/ARCHIVES/ZEP_ONE.MDB";
    const QString plain = folder + "/plain.db";
    figures.Compare(
        "restore", {.measured = 5},
        [&] {
            QFile::remove(plain);
            host::CopyFile(copy, plain);
            PlainDatabase(plain).Run("pragma quick_check");
        },
        [&] { archives::Restore(copy, folder); }, {.ratio = 1.5});
    host::RemoveDatabase(plain);
    RemoveCopies(folder, "ZEP_ONE avant restauration *.MDB");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Require(argc == 2, "usage: bench_copies LARGE");
    const QString folder = QString::fromLocal8Bit(argv[1]);
    Figures figures;
    MeasureShutdown(figures, folder);
    MeasureComparison(figures, folder);
    MeasureRestoration(figures, folder);
    return figures.ExitCode();
}
