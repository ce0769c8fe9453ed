#pragma once

#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"

#include <QString>

namespace acts {

/// Decides which acts of a period are visible (`Flag_H` 0) and which are archived (1): of each service and each day one
/// act is kept and `SkipCount` are skipped, by position in the order of the keys, starting with the first act. Nothing
/// random is in it, and a second run over the same period gives the same flags. Acts outside the period keep theirs.
class Actualisation {
public:
    /// The dates are dd/mm/yyyy texts, both days belong to the period. `SkipCount` is 0 to 4 and counts for ThinPeriod
    /// only.
    Actualisation(const QString& StartDate, const QString& EndDate, basic::Int16 SkipCount);

    /// Thins day after day, then makes the acts with the code "R-" visible again. Each day is one transaction: a run
    /// that is interrupted leaves whole days, and running it again repairs the period. Raises 6 for a period past 16
    /// bits of days, 13 for a text that holds no date, 3187 when another program holds the file.
    void ThinPeriod();

    /// Makes every act of the period visible, whatever its code. A failure is passed over in silence.
    void ShowAllInPeriod();

private:
    void ActualiseDay();
    void ThinService(dao::Key service);

    QString StartDate, EndDate;
    basic::Int16 SkipCount;
    QString StartUS, EndUS; ///< the period as mm/dd/yyyy
    QString DayUS;          ///< the day in hand as mm/dd/yyyy
    basic::Int16 DayCount;  ///< days from the first to the last
    basic::Int16 DayIndex;
    dao::Recordset PrestaList;
    dao::Recordset DayActs; ///< the acts of one day and one service
};

} // namespace acts
