#pragma once

#include "core/PeriodChooser.h"
#include "support/User.h"

namespace tests {

/// Enters a day in the shown chooser and accepts it.
inline void AcceptDay(core::PeriodChooser& dates, const QString& day)
{
    dates.SSTab2.setCurrentIndex(core::PeriodChooser::DayPage);
    dates.Text1[core::PeriodChooser::Day].setText(day);
    Click(dates.Image2[core::PeriodChooser::AcceptDay]);
}

/// Enters a period in the shown chooser and accepts it.
inline void AcceptPeriod(core::PeriodChooser& dates, const QString& first, const QString& last)
{
    dates.SSTab2.setCurrentIndex(core::PeriodChooser::PeriodPage);
    dates.Text1[core::PeriodChooser::First].setText(first);
    dates.Text1[core::PeriodChooser::Last].setText(last);
    Click(dates.Image2[core::PeriodChooser::AcceptPeriod]);
}

} // namespace tests
