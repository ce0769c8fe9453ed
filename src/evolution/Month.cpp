#include "evolution/Month.h"

#include "core/globals.h"
#include "platform/basic/Dates.h"

namespace evolution {

QString Month::FirstDay() const
{
    return basic::DateText(first);
}

QString Month::LastDay() const
{
    return basic::DateText(first.addDays(Days() - 1));
}

QString Month::Name() const
{
    const QString name = core::MonthNames.at(static_cast<std::size_t>(Number() - 1)).trimmed().toLower();
    return QStringLiteral("%1 %2").arg(name).arg(Year());
}

QString Month::Short() const
{
    constexpr const char* names[] = {"janv.", "févr.", "mars",  "avr.", "mai",  "juin",
                                     "juil.", "août",  "sept.", "oct.", "nov.", "déc."};
    return QStringLiteral("%1 %2").arg(QString::fromUtf8(names[Number() - 1])).arg(Year());
}

} // namespace evolution
