#pragma once

#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"

#include <QString>

namespace acts {

/// Decides which acts of a period are visible (`Flag_H` 0) and which are archived (1): for each service and day, one
/// act is kept and the next `SkipCount` are skipped, in key order, starting with the first act. Deterministic: a second
/// run over the same period sets the same flags. Acts outside the period are unchanged.
class Actualisation {
public:
    /// Dates are dd/mm/yyyy, both included. `SkipCount` is 0 to 4 and used by ThinPeriod only.
    Actualisation(const QString& StartDate, const QString& EndDate, basic::Int16 SkipCount);

    /// Thins day by day, then makes the acts with the code "R-" visible again. Each day is one transaction: an
    /// interrupted run leaves whole days, and running it again completes the period. Raises 6 for a period past 16 bits
    /// of days, 13 for a text that holds no date, 3187 when another program holds the file.
    void ThinPeriod();

    /// Makes every act of the period visible, whatever its code. A failure is ignored silently.
    void ShowAllInPeriod();

private:
    void ActualiseDay();
    void ThinService(dao::Key service);

    QString StartDate, EndDate;
    basic::Int16 SkipCount;
    QString StartUS, EndUS; ///< the period as mm/dd/yyyy
    QString DayUS;          ///< current day as mm/dd/yyyy
    basic::Int16 DayCount;  ///< days from the first to the last
    basic::Int16 DayIndex;
    dao::Recordset PrestaList;
    dao::Recordset DayActs; ///< the acts of one day and one service
};

} // namespace acts
