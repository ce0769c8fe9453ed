// Feed of an acts' file of 400,000 rows, of which 300 are new, beside the same by prepared statements: each row looked
// up, compared and, if new, inserted. How long another program is kept from writing meanwhile.
//
//     bench_feed

#include "data/Practice.h"
#include "import/ActsFile.h"
#include "import/LockWatch.h"
#include "platform/host/Files.h"
#include "practice/feed/Feed.h"
#include "support/Floor.h"
#include "support/Measure.h"

#include <QCoreApplication>
#include <QTemporaryDir>

using namespace bench;

namespace {

constexpr int Acts = 400'000;
constexpr int NewActs = 300;
constexpr int Runs = 5;

bool IsAsStored(const PlainStatement& row, const Act& act, const QString& day)
{
    return row.Text(0) == day && row.Text(1) == day && row.Number(2) == SlotOf(act) && row.Text(3) == TimeOf(act) &&
           row.Number(4) == act.patient && row.Number(5) == act.service && row.Real(6) == act.amount &&
           row.Text(7) == CodeOf(act) && row.Number(8) == PaymentOf(act);
}

/// Inserts what isn't there by prepared statements.
void FeedPlainly(const QString& folder, const std::vector<Act>& acts)
{
    std::vector<Act> added;
    {
        const PlainDatabase plain(host::PathIn(folder, data::DatabaseFile));
        PlainStatement row(plain, "select Date, date_Presta, HH, Heure, num_patient, num_presta, montant, Type, flag_R "
                                  "from Actes where num=?");
        for (const Act& act : acts) {
            row.Bind(1, act.key);
            if (!row.Step())
                added.push_back(act);
            else
                Require(IsAsStored(row, act, act.day.toString(Qt::ISODate)), "another act");
            row.Reset();
        }
    }
    InsertPlainly(folder, added);
}

void FeedFile(const QString& folder, const QString& file)
{
    const practice::FeedReport report = practice::Feed(folder, {}).Run(file);
    Require(report.tables.at(0).counts.added == NewActs, "not all acts are new");
}

/// A practice without the new acts.
class EarlierPractice {
public:
    EarlierPractice(const std::vector<Act>& acts, const QString& file)
    {
        data::CreatePractice(Folder(), {.accessCode = 2, .letterhead = {"Dr"}});
        WriteCsv(file, acts);
        practice::Feed(Folder(), {}).Run(file);
    }
    QString Folder() const { return place.filePath("cabinet"); }
    void TakeAway() const
    {
        PlainDatabase(host::PathIn(Folder(), data::DatabaseFile))
            .Run(QString("delete from Actes where num > %1; delete from \"ZEP settlements\" where num > %1")
                     .arg(Acts - NewActs));
    }

private:
    QTemporaryDir place;
};

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir place;
    const QString file = place.filePath("Actes.csv");
    const std::vector<Act> acts = ActsInOrder(Acts);
    const EarlierPractice practice(acts, file);
    Figures figures;
    figures.Compare(
        "400,000 acts fed, 300 of them new", {.measured = Runs},
        [&] {
            practice.TakeAway();
            FeedPlainly(practice.Folder(), acts);
        },
        [&] {
            practice.TakeAway();
            FeedFile(practice.Folder(), file);
        },
        {.ratio = 3});

    practice.TakeAway();
    LockWatch watch(host::PathIn(practice.Folder(), data::DatabaseFile));
    FeedFile(practice.Folder(), file);
    figures.Print("write lock held", watch.Longest(), "ms", 1000);
    return figures.ExitCode();
}
