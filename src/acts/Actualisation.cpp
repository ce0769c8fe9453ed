#include "acts/Actualisation.h"

#include "core/globals.h"
#include "platform/basic/Dates.h"
#include "platform/basic/RuntimeError.h"

using namespace basic;
using namespace core;

namespace acts {

Actualisation::Actualisation(const QString& startDate, const QString& endDate, Int16 skipCount)
    : StartDate(startDate), EndDate(endDate), SkipCount(skipCount)
{
}

void Actualisation::ThinPeriod()
{
    DayCount = DaysBetween(DateValue(StartDate), DateValue(EndDate));
    for (DayIndex = 0; DayIndex <= DayCount; ++DayIndex) {
        DayUS = QueryDate(DateText(AddDays(DateValue(StartDate), DayIndex)));
        dao::Transaction wholeDay(TheDatabase);
        ActualiseDay();
        wholeDay.Commit();
    }

    StartUS = QueryDate(StartDate);
    EndUS = QueryDate(EndDate);
    QueryText = "Update Actes set Flag_H = 0 where date >=#" + StartUS + "# and date <=#" + EndUS + "# and Flag_R = 1";
    TheDatabase.Execute(QueryText, dao::FailOnError);
}

void Actualisation::ActualiseDay()
{
    QueryText = "Update Actes set Flag_H = 1 where date =#" + DayUS + "#";
    TheDatabase.Execute(QueryText, dao::FailOnError);

    QueryText = "Select * from Presta order by ordre";
    PrestaList = TheDatabase.OpenRecordset(QueryText);
    for (; !PrestaList.IsEOF(); PrestaList.MoveNext())
        ThinService(PrestaList["num"].Key());
}

void Actualisation::ThinService(dao::Key service)
{
    QueryText = "Select * from Actes where date =#" + DayUS + "# and num_presta = " + QString::number(service);
    DayActs = TheDatabase.OpenRecordset(QueryText);
    while (!DayActs.IsEOF()) {
        DayActs.Edit();
        DayActs["Flag_H"] = 0;
        DayActs.Update();
        DayActs.MoveNext();
        for (int skipped = 0; skipped < SkipCount && !DayActs.IsEOF(); ++skipped)
            DayActs.MoveNext();
    }
}

void Actualisation::ShowAllInPeriod()
{
    StartUS = QueryDate(StartDate);
    EndUS = QueryDate(EndDate);
    QueryText = "Update Actes set Flag_H = 0 where date >=#" + StartUS + "# and date <=#" + EndUS + "#";
    try {
        TheDatabase.Execute(QueryText);
    } catch (const RuntimeError&) { // the closing message is shown anyway; the acts are unchanged
    }
}

} // namespace acts
