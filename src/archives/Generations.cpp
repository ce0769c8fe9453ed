#include "archives/Generations.h"

#include <QRegularExpression>
#include <QSet>
#include <algorithm>

namespace archives {
namespace {

constexpr int DaysKept = 7;
constexpr int WeeksKept = 5;
constexpr int MonthsKept = 12;

QDate MondayOf(const QDate& day)
{
    return day.addDays(1 - day.dayOfWeek());
}

QDate FirstOfMonth(const QDate& day)
{
    return {day.year(), day.month(), 1};
}

} // namespace

QString GenerationName(const QDate& day, int number)
{
    const QString another = number > 1 ? QString(" (%1)").arg(number) : QString();
    return "ZEP_ONE " + day.toString(Qt::ISODate) + another + ".MDB";
}

QDate GenerationDay(const QString& name)
{
    static const QRegularExpression dated(R"(^ZEP_ONE (\d{4}-\d{2}-\d{2})( \([2-9]\))?\.MDB$)",
                                          QRegularExpression::CaseInsensitiveOption);
    const auto match = dated.match(name);
    return match.hasMatch() ? QDate::fromString(match.captured(1), Qt::ISODate) : QDate();
}

QStringList SurplusGenerations(const QStringList& names, const QDate& today)
{
    QList<std::pair<QDate, QString>> newestFirst;
    for (const QString& name : names) {
        if (const QDate day = GenerationDay(name); day.isValid() && day <= today)
            newestFirst << std::pair(day, name);
    }
    std::ranges::sort(newestFirst, std::ranges::greater());

    QStringList surplus;
    QSet<QDate> days;
    QSet<QDate> weeks;
    QSet<QDate> months;
    QDate lastKept;
    // Whether this is the first copy seen of its period, among at most so many periods.
    const auto isKeptBy = [](QSet<QDate>& kept, const QDate& period, int most) {
        if (kept.size() == most || kept.contains(period))
            return false;
        kept << period;
        return true;
    };
    for (const auto& [day, name] : newestFirst) {
        if (day == lastKept) // another file of that day, whichever is the good one
            continue;
        const bool byDay = isKeptBy(days, day, DaysKept);
        const bool byWeek = isKeptBy(weeks, MondayOf(day), WeeksKept);
        const bool byMonth = isKeptBy(months, FirstOfMonth(day), MonthsKept);
        if (!byDay && !byWeek && !byMonth)
            surplus << name;
        else
            lastKept = day;
    }
    return surplus;
}

} // namespace archives
