#include "core/calendar.h"

#include "core/Q_Date_2.h"
#include "core/globals.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Desk.h"
#include "platform/host/Host.h"

using namespace basic;

namespace core {

namespace {

/// Index into the name tables: 0 for Sunday to 6 for Saturday.
std::size_t WeekdayLine(const QString& dateText)
{
    return static_cast<std::size_t>(Weekday(DateValue(DateToQueryText(dateText).trimmed())) - 1);
}

} // namespace

QString DayCaption(const QString& dateText)
{
    return DayNamesShort[WeekdayLine(dateText)].trimmed() + "  " + dateText;
}

QString LongDayName(const QString& dateText)
{
    return DayNamesLong[WeekdayLine(dateText)].trimmed();
}

bool IsDateText(const QString& dateText)
{
    try {
        return DateValue(dateText) == DateValue(DateToQueryText(dateText));
    } catch (const RuntimeError&) {
        return false;
    }
}

int DaysInMonth(int month, int year)
{
    switch (month) {
    case 2:
        return (year & 3) != 0 ? 28 : 29;
    case 4:
    case 6:
    case 9:
    case 11:
        return 30;
    default:
        return 31;
    }
}

std::optional<QString> PickDateFrom(const QString& dateText)
{
    PickedDay = RoundToInt(Val(dateText.left(2)));
    PickedMonth = RoundToInt(Val(dateText.mid(3, 2)));
    PickedYear = RoundToInt(Val(dateText.right(4)));

    Q_Date_2 picker;
    forms::TheDesk().ShowModal(picker);
    return PickedDay >= 1 ? std::optional(PickedDate) : std::nullopt;
}

std::optional<QString> PickDateFromToday()
{
    return PickDateFrom(DateText(host::Today()));
}

} // namespace core
