#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

namespace data {

/// The name of a day's last copy: "ZEP_ONE 2026-11-23.MDB".
QString GenerationName(const QDate& day);

/// The day of such a name; invalid for any other name.
QDate GenerationDay(const QString& name);

/// Names of copies to delete: those outside the newest 7 days, 5 weeks (from Monday) and 12 months. Other names and
/// days to come are never returned.
QStringList SurplusGenerations(const QStringList& names, const QDate& today);

} // namespace data
