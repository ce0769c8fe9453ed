#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

namespace archives {

/// The name of a day's last copy: "ZEP_ONE 2026-11-23.MDB", or "ZEP_ONE 2026-11-23 (2).MDB" where another file has that
/// name.
QString GenerationName(const QDate& day, int number = 1);

/// The day of such a name; invalid for any other name.
QDate GenerationDay(const QString& name);

/// Names of copies to delete: those outside the newest 7 days, 5 weeks (from Monday) and 12 months. Other names and
/// days to come are never returned.
QStringList SurplusGenerations(const QStringList& names, const QDate& today);

} // namespace archives
