#pragma once

#include "platform/store/OpeningRules.h"

namespace store {

enum class Thoroughness : quint8 {
    Pages,  ///< every page and row
    Sums,   ///< also that the summed indexes agree with their tables
    Indexes ///< also that each index agrees with its table: several times as long
};

/// The first damage that a check finds; empty for a sound file. `summed` counts for Thoroughness::Sums alone.
QString FirstDamage(sqlite3* database, Thoroughness thoroughness, const QList<SummedIndex>& summed = {});

} // namespace store
