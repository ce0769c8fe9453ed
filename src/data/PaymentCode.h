#pragma once

#include <QStringList>

namespace data {

/// The states of payment of an act, values of its field `flag_R`, named after the codes that the screens show for them.
/// Below `P` an act is pending.
namespace PaymentCode {
enum : int {
    NP,     ///< "NP": unpaid
    RMinus, ///< "R-": underpaid, perhaps by nothing yet
    P,      ///< "P ": paid normally
    RPlus,  ///< "R+": overpaid
    Gr,     ///< "Gr"
    AB      ///< "AB"
};
} // namespace PaymentCode

/// The codes as the screens show them, by their values; "P " keeps its blank.
inline QStringList PaymentCodes()
{
    return {"NP", "R-", "P ", "R+", "Gr", "AB"};
}

} // namespace data
