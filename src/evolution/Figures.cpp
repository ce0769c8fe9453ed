#include "evolution/Figures.h"

#include "core/NetResult.h"
#include "core/globals.h"
#include "core/lists.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"

#include <algorithm>
#include <numeric>

using namespace core;

namespace evolution {

namespace {

constexpr int MonthsOfYear = 12;

/// The bounds of a month as statements need them.
struct Bounds {
    explicit Bounds(const Month& month)
        : firstUS(basic::QueryDate(month.FirstDay())), lastUS(basic::QueryDate(month.LastDay()))
    {
    }
    QString firstUS;
    QString lastUS;
};

std::vector<ServiceFigures> ReadServices()
{
    std::vector<ServiceFigures> services;
    dao::Recordset records = TheDatabase.OpenRecordset("Select * from Presta order by ordre");
    for (; !records.IsEOF(); records.MoveNext())
        services.push_back({records["num"].Key(), TextOrNothing(records["denom"]).trimmed(), {}, {}});
    return services;
}

/// The receipts of a month, not rounded. `keep` appends the figures of each service to its own.
double ReadReceipts(const Month& month, std::vector<ServiceFigures>& services, bool keep)
{
    const Bounds bounds(month);
    double receipts = 0;
    for (ServiceFigures& service : services) {
        const dao::Recordset sums = SumActs(bounds.firstUS, bounds.lastUS, service.key);
        const double sum = sums["S2"].IsNull() ? 0 : sums["S2"].Double();
        receipts += sum;
        if (keep) {
            service.acts.push_back(sums["S1"].Long());
            service.receipts.push_back(sum);
        }
    }
    return receipts;
}

double ReadExpenses(const Month& month)
{
    const Bounds bounds(month);
    const dao::Recordset sums = TheDatabase.OpenRecordset("select sum(montant) as S from Recettes where date >=#" +
                                                          bounds.firstUS + "# and date <=#" + bounds.lastUS + "#");
    return sums["S"].IsNull() ? 0 : basic::Val(ShownAmount(sums["S"].Double()));
}

/// The month of the first act or expense of the practice.
std::optional<Month> ReadFirstMonth()
{
    std::optional<QDate> first;
    for (const char* table : {"Actes", "Recettes"}) {
        const dao::Recordset found =
            TheDatabase.OpenRecordset("select min(date) as S from " + QString::fromLatin1(table));
        const QDate day = found["S"].IsNull() ? QDate() : basic::DateValue(found["S"].Text());
        if (day.isValid() && (!first || day < *first))
            first = day;
    }
    return first ? std::optional(Month(*first)) : std::nullopt;
}

/// Receipts, charges and net of a month, rounded as shown.
MonthFigures Rounded(const Month& month, double receipts, double dayCharge)
{
    const QString shownReceipts = ShownIfAny(receipts);
    const QString shownCharges = ShownIfAny(month.Days() * dayCharge);
    // Shown once more: the difference of two figures may have a tail in binary.
    return {.month = month,
            .receipts = basic::Val(shownReceipts),
            .charges = basic::Val(shownCharges),
            .net = basic::Val(ShownAmount(NetOf(shownReceipts, shownCharges)))};
}

} // namespace

qint64 ServiceFigures::AllActs() const
{
    return std::accumulate(acts.begin(), acts.end(), qint64{0});
}

double ServiceFigures::AllReceipts() const
{
    return std::accumulate(receipts.begin(), receipts.end(), 0.0);
}

bool Figures::IsEmpty() const
{
    return std::ranges::all_of(months,
                               [](const MonthFigures& each) { return each.receipts == 0 && each.expenses == 0; });
}

Figures ReadFigures(const Month& last, int count)
{
    const dao::ReadTransaction oneState(TheDatabase);
    Figures figures{
        .dayCharge = ReadDayCharge(), .months = {}, .services = ReadServices(), .firstRecorded = ReadFirstMonth()};
    std::vector<double> nets; // of the months and of the year before them
    for (int index = -MonthsOfYear; index < count; ++index) {
        const Month month = last.Plus(index - count + 1);
        const double receipts = ReadReceipts(month, figures.services, index >= 0);
        MonthFigures read = Rounded(month, receipts, figures.dayCharge);
        nets.push_back(read.net);
        if (index < 0)
            continue;
        read.expenses = ReadExpenses(month);
        read.isRecorded = figures.firstRecorded && month >= *figures.firstRecorded;
        read.isYearBeforeRecorded = figures.firstRecorded && month.Plus(-MonthsOfYear) >= *figures.firstRecorded;
        read.netYearBefore = nets[static_cast<std::size_t>(index)];
        figures.months.push_back(read);
    }
    return figures;
}

} // namespace evolution
