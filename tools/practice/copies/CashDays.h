#pragma once

#include "platform/store/DatabaseReader.h"
#include "practice/copies/Differences.h"

#include <QDate>
#include <QList>
#include <QMap>
#include <QStringList>

namespace practice {

/// The amounts received and spent on each day with acts or expenses, in dinars.
class CashDays {
public:
    /// Reads the days before `end`, or all if it is invalid.
    CashDays(const store::DatabaseReader& reader, const QDate& end);

    /// Received less spent, in hundredths of a dinar, each sum rounded as on the screens. 0 for a day without either.
    qint64 Movement(const QDate& day) const;
    /// The balance at the end of a day.
    double Balance(const QDate& day) const;
    QList<QDate> Days() const { return days.keys(); }
    QDate LastDay() const { return days.isEmpty() ? QDate() : days.lastKey(); }

private:
    struct Cash {
        double received = 0;
        double spent = 0;
    };
    void Add(const store::DatabaseReader& reader, const char* table, const QDate& end, double Cash::*side);
    QMap<QDate, Cash> days;
};

/// A day whose cash movement differs between two states of a practice.
struct DifferingDay {
    QDate day;
    double before = 0; ///< balance at the end of the day, dinars
    double after = 0;
    QStringList reasons; ///< acts and expenses that differ, one line each
};

/// The days before `end` whose movement differs. Days whose balance differs only because of an earlier day aren't
/// listed.
QList<DifferingDay> DifferingDays(const store::DatabaseReader& before, const store::DatabaseReader& after,
                                  const QList<TableChanges>& changes, const QDate& end);

} // namespace practice
