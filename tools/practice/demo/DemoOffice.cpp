#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "practice/demo/DemoPlan.h"
#include "practice/demo/DemoWords.h"
#include "practice/demo/RowBatches.h"

#include <array>

namespace practice {

void WriteServices(const dao::Database& database, const DemoPlan& plan)
{
    const auto known = Services();
    RowBatches batches(database, "Presta", plan.services);
    dao::Recordset services = database.OpenRecordset("Presta");
    for (int order = 0; order < plan.services; ++order) {
        const ServiceWords& words = known[static_cast<std::size_t>(order) % known.size()];
        const bool again = static_cast<std::size_t>(order) >= known.size();
        services.AddNew();
        services["num"] = order + 1;
        services["denom"] = again ? QString("%1 %2").arg(words.name).arg(order + 1) : QString(words.name);
        services["prix"] = static_cast<double>(TariffRate(words.code));
        services["Ordre"] = order;
        services.Update();
        batches.Count();
    }
    batches.Finish();
}

void WriteTariffs(const dao::Database& database)
{
    dao::Recordset tariffs = database.OpenRecordset("Tarif");
    tariffs.AddNew();
    for (int position = 0; position < TariffPositions; ++position)
        tariffs.Fields(position) = TariffRate(position);
    tariffs.Update();
}

void WriteCharges(const dao::Database& database, const DemoPlan& plan)
{
    constexpr std::array identifiers{"16/00-0123456 A 08", "000816012345678",        "16012345678",
                                     "021 63 00 00",       "021 63 00 01",           "00400123456",
                                     "Alger Didouche",     "004 00123 4005678901 23"};
    constexpr std::array<double, 7> monthly{96000, 45000, 18500, 7250.5, 4200, 22000, 6800};

    dao::Recordset permanent = database.OpenRecordset("Permn");
    permanent.MoveFirst();
    permanent.Edit();
    for (std::size_t position = 0; position < identifiers.size(); ++position)
        permanent.Fields(static_cast<int>(position)) = identifiers[position];
    double total = 0;
    for (std::size_t charge = 0; charge < monthly.size(); ++charge) {
        permanent.Collect(QString("Charge%1").arg(charge + 1)) = monthly[charge];
        total += monthly[charge];
    }
    constexpr int daysOfMonth = 30;
    permanent["Charge8"] = total;
    permanent["Charge9"] = basic::Val(basic::Format(total / daysOfMonth, "#########.00"));
    permanent["Date"] = basic::DateText(plan.until.addDays(-DaysKeptWhole));
    constexpr int oneInThree = 2; // the option "1 sur 3" of the day sheet
    permanent["nbre"] = oneInThree;
    permanent["RC"] = "";
    permanent.Update();
}

} // namespace practice
