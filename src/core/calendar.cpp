#include "core/calendar.h"

#include "core/Q_Date_2.h"
#include "core/globals.h"
#include "platform/basic/Dates.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/forms/TextBox.h"
#include "platform/host/Host.h"

#include <algorithm>

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

std::optional<QString> TypedDay(const QString& text)
{
    constexpr int firstYear = 1900;
    const QString typed = text.trimmed();
    const QString day = typed.left(2);
    const QString month = typed.mid(3, 2);
    const QString year = typed.right(4);
    if (typed.size() < DateLength || !std::ranges::all_of(day + month + year, [](QChar each) { return IsDigit(each); }))
        return std::nullopt;
    const int monthNumber = month.toInt();
    if (monthNumber < 1 || monthNumber > 12 || year.toInt() < firstYear || day.toInt() < 1 ||
        day.toInt() > DaysInMonth(monthNumber, year.toInt()))
        return std::nullopt;
    return day + "/" + month + "/" + year;
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

void OfferCalendar(forms::DateField& field)
{
    forms::On(field, &forms::DateField::CalendarWanted, field, [&field] {
        if (const auto chosen = PickDateFrom(TypedDay(field.text()).value_or(DateText(host::Today()))))
            field.setText(*chosen);
    });
}

} // namespace core
