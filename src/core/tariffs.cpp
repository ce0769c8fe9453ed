#include "core/tariffs.h"

#include "core/globals.h"

namespace core {

dao::Recordset OpenTariffs()
{
    QueryText = "select * from Tarif";
    dao::Recordset tariff = TheDatabase.OpenRecordset(QueryText);
    if (tariff.RecordCount() == 0) {
        tariff.AddNew();
        tariff.Update();
    }
    tariff.MoveFirst();
    return tariff;
}

TariffRates ReadTariffs(const dao::Recordset& tariff)
{
    TariffRates rates;
    for (int position = 0; position < TariffCount; ++position) {
        const dao::Field rate = tariff.Fields(position);
        rates[static_cast<std::size_t>(position)] = rate.IsNull() ? basic::Int16(0) : rate.Integer();
    }
    return rates;
}

QString TariffCode(int position)
{
    return position == 0 ? QString("C") : "K" + QString::number(position - 1);
}

} // namespace core
