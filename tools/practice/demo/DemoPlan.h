#pragma once

#include "platform/dao/Database.h"
#include "practice/demo/Demo.h"
#include "practice/demo/Dice.h"

#include <vector>

namespace practice {

/// A day on which the practice is open.
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

// Writers of the tables. They use record sets, as the program does.
void WriteServices(const dao::Database& database, const DemoPlan& plan);
void WriteTariffs(const dao::Database& database);
void WriteCharges(const dao::Database& database, const DemoPlan& plan);
void WritePatients(const dao::Database& database, const DemoPlan& plan, Dice& dice);
/// Writes acts and expenses together, day by day: expenses are paid from the cash received.
void WriteDays(const dao::Database& database, const DemoPlan& plan, Dice& dice);
void WriteAppointments(const dao::Database& database, const DemoPlan& plan, Dice& dice);
void WriteDeletedActs(const dao::Database& database, const DemoPlan& plan, Dice& dice);

/// On older days two acts in three are archived, as after an actualisation.
inline constexpr int DaysKeptWhole = 60;

/// Friday is the day of rest.
bool IsWorkingDay(const QDate& date);

} // namespace practice
