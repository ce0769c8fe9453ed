#pragma once

#include "core/PeriodChooser.h"
#include "support/User.h"

namespace tests {

/// Opens a screen's chooser by its key unless it is shown.
inline void ChooseDates(core::PeriodChooser& dates)
{
    if (!dates.isVisible())
        Press(*dates.window(), Qt::Key_F4);
}

/// Enters a day in the chooser and accepts it.
inline void AcceptDay(core::PeriodChooser& dates, const QString& day)
{
    ChooseDates(dates);
    dates.SSTab2.setCurrentIndex(core::PeriodChooser::DayPage);
    dates.Text1[core::PeriodChooser::Day].setText(day);
    Click(dates.Image2[core::PeriodChooser::AcceptDay]);
}

/// Enters a period in the chooser and accepts it.
inline void AcceptPeriod(core::PeriodChooser& dates, const QString& first, const QString& last)
{
    ChooseDates(dates);
    dates.SSTab2.setCurrentIndex(core::PeriodChooser::PeriodPage);
    dates.Text1[core::PeriodChooser::First].setText(first);
    dates.Text1[core::PeriodChooser::Last].setText(last);
    Click(dates.Image2[core::PeriodChooser::AcceptPeriod]);
}

} // namespace tests
