#pragma once

#include "platform/store/Value.h"

#include <QString>
#include <vector>

namespace pages {

/// A selection formula as an SQL condition, with the values for ?1, ?2 ... .
struct Selection {
    QString condition;
    std::vector<store::Value> values;
};

/// Parses "{Plani.date} = date(2008,06,17) and {Plani.Num_Presta} = 3": comparisons (= <> < <= > >=) of a field with a
/// number, a quoted text or a date, joined by "and". A date becomes ISO text. Raises 3075 for anything else.
Selection ReadSelection(const QString& formula);

} // namespace pages
