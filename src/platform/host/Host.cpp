#include "platform/host/Host.h"

namespace host {
namespace {

QDate& FixedToday()
{
    static QDate date;
    return date;
}

} // namespace

QDate Today()
{
    return FixedToday().isValid() ? FixedToday() : QDate::currentDate();
}

void FixToday(const QDate& date)
{
    FixedToday() = date;
}

} // namespace host
