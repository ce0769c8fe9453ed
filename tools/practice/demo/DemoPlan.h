#pragma once

#include "platform/dao/Database.h"
#include "practice/demo/Demo.h"
#include "practice/demo/Dice.h"

#include <vector>

namespace practice {

/// One day on which the practice is open.
struct WorkingDay {
    QDate date;
    int acts = 0;
    int expenses = 0;

    bool IsHalfDay() const { return date.dayOfWeek() == Qt::Saturday; }
};

/// The size of a demo, with all defaults applied.
struct DemoPlan {
    int patients = 0;
    int services = 0;
    int appointments = 0;
    int deletedActs = 0;
    QDate until;
    std::vector<WorkingDay> days; ///< in order; the last one is `until`
};

/// The rate in dinars of tariff position 0 ("C") to 31 ("K30").
int TariffRate(int position);
/// "C" for position 0, "K" and position - 1 otherwise.
QString TariffCode(int position);
inline constexpr int TariffPositions = 32;

// One writer for each part of the practice; they use the program's record sets.
void WriteServices(const dao::Database& database, const DemoPlan& plan);
void WriteTariffs(const dao::Database& database);
void WriteCharges(const dao::Database& database, const DemoPlan& plan);
void WritePatients(const dao::Database& database, const DemoPlan& plan, Dice& dice);
/// Acts and expenses together, day by day, since the cash of a day pays its expenses.
void WriteDays(const dao::Database& database, const DemoPlan& plan, Dice& dice);
void WriteAppointments(const dao::Database& database, const DemoPlan& plan, Dice& dice);
void WriteDeletedActs(const dao::Database& database, const DemoPlan& plan, Dice& dice);

/// Older days have been thinned by an actualisation that keeps one act in three.
inline constexpr int DaysKeptWhole = 60;

/// Friday is the day of rest.
bool IsWorkingDay(const QDate& date);

} // namespace practice
