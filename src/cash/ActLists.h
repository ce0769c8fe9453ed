#pragma once

#include "core/KeyedList.h"
#include "core/NameLookup.h"
#include "platform/dao/Recordset.h"

namespace forms {
class FigureLabel;
class Grid;
} // namespace forms

/// Shared by the lists of acts.
namespace cash {

/// The leading columns of every list of acts.
namespace ActColumn {
enum : int { Number, LastName, FirstName, Service };
} // namespace ActColumn

/// Empties a list and its total.
void ClearList(core::KeyedList& list, forms::FigureLabel& total);

/// Balances and totals on the screens of the till, in dinars.
inline constexpr auto AmountMask = "# ### ##0.00";

/// How a Null name is shown in its cell.
enum class NullName { AsBlank, AsNothing };

/// Looks up the patients and services of a list of acts while it is filled, each only once.
class NamesOfActs {
public:
    NamesOfActs(const dao::Recordset& patientLookup, const dao::Recordset& serviceLookup, NullName nullName);

    /// Writes the act's patient and service into their columns, each text after a blank. Cells of missing rows stay
    /// empty.
    void Show(forms::Grid& grid, int row, const dao::Recordset& act);

private:
    void ShowCells(core::NameLookup& lookup, const dao::Field& key, forms::Grid& grid, int row, int firstColumn) const;

    core::NameLookup patients;
    core::NameLookup services;
    NullName asNull;
};

} // namespace cash
