#pragma once

#include "platform/basic/Int16.h"

#include <array>

namespace cash {

/// Counts acts by payment state and tariff code. A state's position is `flag_R` + 1; a code's position is that of its
/// rate, 0 for "C" to 31 for "K30".
class CodeTally {
public:
    enum Position : int { FirstState = 1, LastState = 6, AllStates = 7, AllCodes = 32 };

    void Clear() { counts = {}; }
    /// Counts one act. Raises 9 for a payment state or code without a position.
    void Add(int flag_R, int codeIndex);
    /// Sums up the positions AllStates and AllCodes. Raises 6 past 32,767.
    void SumUp();
    /// Raises 9 for an invalid position.
    basic::Int16 At(int state, int code) const;

private:
    static constexpr int States = 8;
    static constexpr int Codes = 34;

    static std::size_t IndexOf(int state, int code);

    std::array<basic::Int16, std::size_t{States} * Codes> counts{};
};

} // namespace cash
