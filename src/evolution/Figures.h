#pragma once

#include "evolution/Month.h"
#include "platform/dao/Recordset.h"

#include <optional>
#include <vector>

namespace evolution {

/// The figures of a month in dinars, rounded to centimes as "Résultat" shows them.
struct MonthFigures {
    Month month;
    double receipts = 0;
    double charges = 0;
    double net = 0;
    double expenses = 0; ///< no part of the net
    double netYearBefore = 0;
    bool isRecorded = false; ///< not before the first act or expense of the practice
    bool isYearBeforeRecorded = false;
};

/// A service with its acts and receipts in each of the months.
struct ServiceFigures {
    dao::Key key = 0;
    QString name;
    std::vector<qint64> acts;
    std::vector<double> receipts;

    qint64 AllActs() const;
    double AllReceipts() const;
};

struct Figures {
    double dayCharge = 0; ///< today's, applied to every month
    std::vector<MonthFigures> months;
    std::vector<ServiceFigures> services; ///< in the order of the list
    std::optional<Month> firstRecorded;   ///< the month of the first act or expense

    /// Whether no month has receipts or expenses.
    bool IsEmpty() const;
};

/// Reads the figures of `count` months up to `last`, in one read transaction. Acts of deleted services don't count.
Figures ReadFigures(const Month& last, int count);

} // namespace evolution
