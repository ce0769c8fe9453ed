// Import of 400,000 acts beside the same rows by one prepared statement in one transaction of plain SQLite, and for how
// long another program is kept from writing meanwhile.
//
//     bench_import

#include "data/Practice.h"
#include "import/LockWatch.h"
#include "platform/host/Files.h"
#include "practice/import/Import.h"
#include "support/Floor.h"
#include "support/Measure.h"

#include <QCoreApplication>
#include <QDate>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

using namespace bench;

namespace {

constexpr int Acts = 400'000;
constexpr int ActsOfADay = 100;
constexpr int Runs = 3;

struct Act {
    int key = 0;
    QDate day;
    int patient = 0;
    int service = 0;
    double amount = 0;
};

/// By key and day, as a practice fills its book.
std::vector<Act> ActsInOrder()
{
    std::mt19937 random(20080617);
    std::vector<Act> acts;
    for (int i = 0; i < Acts; ++i)
        acts.push_back({.key = i + 1,
                        .day = QDate(2000, 1, 1).addDays(i / ActsOfADay),
                        .patient = std::uniform_int_distribution(1, 20'000)(random),
                        .service = std::uniform_int_distribution(1, 10)(random),
                        .amount = 500 + 0.25 * std::uniform_int_distribution(0, 8000)(random)});
    return acts;
}

int SlotOf(const Act& act)
{
    return act.key % 10;
}

QString TimeOf(const Act& act)
{
    return QString("%1:%2").arg(8 + SlotOf(act), 2, 10, QChar('0')).arg(act.key % 60, 2, 10, QChar('0'));
}

QString CodeOf(const Act& act)
{
    return QString("K%1").arg(act.key % 31);
}

void WriteCsv(const QString& path, const std::vector<Act>& acts)
{
    QFile file(path);
    Require(file.open(QIODevice::WriteOnly), "no file " + path);
    file.write("num;Date;date_Presta;HH;Heure;num_patient;num_presta;montant;Type;flag_R;Flag_H\r\n");
    for (const Act& act : acts) {
        const QString day = act.day.toString("dd/MM/yyyy");
        const QStringList cells{QString::number(act.key),
                                day,
                                day,
                                QString::number(SlotOf(act)),
                                TimeOf(act),
                                QString::number(act.patient),
                                QString::number(act.service),
                                QString::number(act.amount, 'f', 2).replace('.', ','),
                                CodeOf(act),
                                QString::number(act.key % 6),
                                "0"};
        file.write(cells.join(';').toUtf8() + "\r\n");
    }
}

void InsertPlainly(const QString& folder, const std::vector<Act>& acts)
{
    PlainDatabase plain(host::PathIn(folder, data::DatabaseFile));
    plain.Run("begin immediate");
    PlainStatement insert(plain,
                          "insert into Actes (num, Date, MM, AA, date_Presta, HH, Heure, num_patient, num_presta, "
                          "montant, Type, flag_R, Flag_H) values (?,?,?,?,?,?,?,?,?,?,?,?,0)");
    for (const Act& act : acts) {
        const QString day = act.day.toString(Qt::ISODate);
        insert.Bind(1, act.key).Bind(2, day).Bind(3, act.day.month()).Bind(4, act.day.year()).Bind(5, day);
        insert.Bind(6, SlotOf(act)).Bind(7, TimeOf(act)).Bind(8, act.patient).Bind(9, act.service);
        insert.Bind(10, act.amount).Bind(11, CodeOf(act)).Bind(12, act.key % 6);
        insert.Run();
    }
    plain.Run("commit");
}

void ImportFile(const QString& folder, const QString& file)
{
    practice::Import import(folder, false);
    import.Read("Actes", file);
    import.Write();
    Require(import.ProblemCount() == 0 && import.Sum().added == Acts, "the import was refused");
}

/// New practices, one for each time that something is imported.
class Practices {
public:
    QString Next()
    {
        const QString folder = place.filePath(QString::number(++count));
        data::CreatePractice(folder, {.accessCode = 2, .letterhead = {"Dr"}});
        return folder;
    }
    QString File(const QString& name) const { return place.filePath(name); }

private:
    QTemporaryDir place;
    int count = 0;
};

/// Other acts, so many days later, in an order of keys that says nothing of their days.
void Renew(std::vector<Act>& acts, int days)
{
    std::ranges::shuffle(acts, std::mt19937(1));
    const int firstKey = std::ranges::max(acts, {}, &Act::key).key + 1;
    for (std::size_t i = 0; i < acts.size(); ++i) {
        acts[i].key = firstKey + static_cast<int>(i);
        acts[i].day = acts[i].day.addDays(days);
    }
}

double ImportWatched(const QString& folder, const QString& file)
{
    LockWatch watch(host::PathIn(folder, data::DatabaseFile));
    ImportFile(folder, file);
    return watch.Longest();
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Practices practices;
    Figures figures;
    std::vector<Act> acts = ActsInOrder();
    const QString file = practices.File("actes.csv");
    WriteCsv(file, acts);
    figures.Compare(
        "400,000 acts imported", {.measured = Runs}, [&] { InsertPlainly(practices.Next(), acts); },
        [&] { ImportFile(practices.Next(), file); }, {.ratio = 3});

    constexpr double waits = 4000; // the program waits for five seconds
    const QString filled = practices.Next();
    figures.Print("write lock held, into an empty practice", ImportWatched(filled, file), "ms", waits);
    Renew(acts, 4000);
    WriteCsv(file, acts);
    figures.Print("write lock held, shuffled, later than 400,000 others", ImportWatched(filled, file), "ms", waits);
    Renew(acts, -4000);
    WriteCsv(file, acts);
    const double among = ImportWatched(filled, file);
    std::printf("    (among 400,000 others of the same days %.0f ms; peak memory of the bench %.0f MB)\n", among,
                PeakMegabytes());
    return figures.ExitCode();
}
