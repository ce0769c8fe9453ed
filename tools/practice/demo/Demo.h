#pragma once

#include <QDate>
#include <QString>
#include <optional>

namespace practice {

/// The access code of every demo practice.
inline constexpr int DemoAccessCode = 2468;

/// The size of a demo; defaults depend on the number of acts.
struct DemoOptions {
    std::optional<int> acts; ///< none: 20 to 60 acts a working day for 18 months
    std::optional<int> patients;
    std::optional<int> services;
    std::optional<int> days; ///< working days
    std::optional<int> expenses;
    quint64 seed = 1;
    QDate until; ///< the last and busiest day; invalid means today
};

/// Creates a realistic practice: patients, services, tariffs, acts of every code and type, appointments around the last
/// day, expenses, deleted acts, charges.
///
/// The same options give the same rows on every machine. A million acts are spread over 4,000 working days with 100,000
/// patients, 20 services and 50,000 expenses. Raises 58 when the folder isn't empty, and the errors of CreatePractice.
void MakeDemo(const QString& folder, const DemoOptions& options);

} // namespace practice
