#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

namespace data {

/// "ZEP_ONE 2026-11-23.MDB": the name under which the last copy of a day is kept.
QString GenerationName(const QDate& day);

/// The day of such a name; invalid for any other name.
QDate GenerationDay(const QString& name);

/// Those of the names that no rule keeps: names of a day that isn't the newest of one of the last 7 days, 5 weeks (from
/// Monday) or 12 months which have one. Other names and days later than today are never among them.
QStringList SurplusGenerations(const QStringList& names, const QDate& today);

} // namespace data
