#pragma once

#include <QDate>
#include <QString>

namespace evolution {

/// A month of the calendar.
class Month {
public:
    Month(int year, int month) : first(year, month, 1) {}
    explicit Month(const QDate& day) : Month(day.year(), day.month()) {}

    Month Plus(int months) const { return Month(first.addMonths(months)); }
    int Year() const { return first.year(); }
    int Number() const { return first.month(); } ///< 1 to 12

    /// The first and the last day as dd/mm/yyyy.
    QString FirstDay() const;
    QString LastDay() const;
    int Days() const { return first.daysInMonth(); }

    QString Name() const;  ///< "novembre 2025"
    QString Short() const; ///< "nov. 2025"

    bool operator>=(const Month& other) const { return first >= other.first; }

private:
    QDate first;
};

} // namespace evolution
