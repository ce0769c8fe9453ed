// Import of 400,000 acts beside the same rows by one prepared statement in one transaction of plain SQLite, and for how
// long another program is kept from writing meanwhile.
//
//     bench_import

#include "data/Practice.h"
#include "import/ActsFile.h"
#include "import/LockWatch.h"
#include "platform/host/Files.h"
#include "practice/import/Import.h"
#include "support/Floor.h"
#include "support/Measure.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

using namespace bench;

namespace {

constexpr int Acts = 400'000;
constexpr int Runs = 3;

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
    std::vector<Act> acts = ActsInOrder(Acts);
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
