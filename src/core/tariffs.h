#pragma once

#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"

#include <QString>
#include <array>

namespace core {

/// The reference rates in whole dinars, by position: 0 is the rate of code "C", n + 1 that of "K" + n, up to "K30".
inline constexpr int TariffCount = 32;
using TariffRates = std::array<basic::Int16, TariffCount>;

/// Opens table `Tarif` on its only row, adding an empty one if missing.
dao::Recordset OpenTariffs();

/// The rates in that row: Null is 0, decimals are rounded half to even. Raises 6 for a rate outside 16 bits.
TariffRates ReadTariffs(const dao::Recordset& tariff);

/// The code at a position: "C", "K0" ... "K30".
QString TariffCode(int position);

} // namespace core
