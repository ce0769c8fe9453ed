#pragma once

#include "platform/dao/DatabaseReader.h"
#include "practice/copies/Differences.h"

#include <QDate>
#include <QList>
#include <QMap>
#include <QStringList>

namespace practice {

/// The cash of each day that has acts or expenses, before a day: what was received and spent, in dinars.
class CashDays {
public:
    /// All days before `end`; all days when it is invalid.
    CashDays(const dao::DatabaseReader& reader, const QDate& end);

    /// Received less spent, in hundredths of a dinar: each sum is rounded as the screens show it. 0 for a day without
    /// any.
    qint64 Movement(const QDate& day) const;
    /// The balance in the evening of a day.
    double Balance(const QDate& day) const;
    QList<QDate> Days() const { return days.keys(); }
    QDate LastDay() const { return days.isEmpty() ? QDate() : days.lastKey(); }

private:
    struct Cash {
        double received = 0;
        double spent = 0;
    };
    void Add(const dao::DatabaseReader& reader, const char* table, const QDate& end, double Cash::*side);
    QMap<QDate, Cash> days;
};

/// A day whose movement differs between two states of a practice.
struct DifferingDay {
    QDate day;
    double before = 0; ///< balance of that evening, dinars
    double after = 0;
    QStringList reasons; ///< the acts and expenses that explain it, a line each
};

/// The days before `end` whose movement differs, by the rows that differ; later days that merely follow from them don't
/// count.
QList<DifferingDay> DifferingDays(const dao::DatabaseReader& before, const dao::DatabaseReader& after,
                                  const QList<TableChanges>& changes, const QDate& end);

} // namespace practice
