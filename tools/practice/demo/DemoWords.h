#pragma once

#include <QString>
#include <span>
#include <vector>

/// The vocabulary of a demo practice.
namespace practice {

using Words = std::span<const char* const>;

Words FamilyNames();
Words FirstNamesOfMen();
Words FirstNamesOfWomen();
Words Towns();
Words Diagnoses();

struct ServiceWords {
    const char* name;
    int code;   ///< usual tariff position: 0 for C, n + 1 for Kn
    int weight; ///< how often the service is performed
};
std::span<const ServiceWords> Services();

struct ExpenseWords {
    const char* object;
    int lowest; ///< dinars
    int highest;
};
std::span<const ExpenseWords> Expenses();

} // namespace practice
