#pragma once

#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"

/// What the lists of acts have in common.
namespace forms {
class FigureLabel;
class Grid;
}

namespace cash {

/// The first state of a list: one empty row, no total, no keys.
void ClearList(forms::Grid& grid, forms::FigureLabel& total, dao::KeyList& keys);

/// The row that `nextRow` counts up to, added when the grid has no such row yet. Raises 6 past row 32,766.
int TakeRow(forms::Grid& grid, basic::Int16& nextRow);

/// How a name that is Null stands in its cell.
enum class NullName { AsBlank, AsNothing };

/// Where names are looked up: all patients and all services, by their key.
struct NameLookups {
    dao::Recordset& patients;
    dao::Recordset& services;
};

/// Shows the act's patient and service in columns 1 to 3 of the row, each text after a blank. What isn't found stays empty.
void ShowNames(forms::Grid& grid, int row, const dao::Recordset& act, const NameLookups& lookups, NullName nullName);

} // namespace cash
