#include "core/NetResult.h"

#include "core/globals.h"
#include "platform/basic/Numbers.h"

namespace core {

double ReadDayCharge()
{
    const dao::Recordset permanentData = TheDatabase.OpenRecordset("Permn");
    const bool isCharged = permanentData.RecordCount() != 0 && !permanentData["Charge9"].IsNull();
    return isCharged ? permanentData["Charge9"].Double() : 0;
}

dao::Recordset SumActs(const QString& firstUS, const QString& lastUS, dao::Key service)
{
    QueryText = "select count(num) as S1, sum(montant) as S2 from Actes where date >=#" + firstUS + "# and date <=#" +
                lastUS + "# and num_presta = " + QString::number(service);
    return TheDatabase.OpenRecordset(QueryText);
}

QString ShownAmount(double dinars)
{
    return " " + basic::Format(dinars, "### ###.00");
}

QString ShownIfAny(double dinars)
{
    return dinars > 0 ? ShownAmount(dinars) : QString();
}

double NetOf(const QString& shownReceipts, const QString& shownCharges)
{
    return basic::Val(shownReceipts) - basic::Val(shownCharges);
}

} // namespace core
