#pragma once

#include "core/NameLookup.h"
#include "platform/dao/Recordset.h"

namespace forms {
class FigureLabel;
class Grid;
} // namespace forms

/// What the lists of acts have in common.
namespace cash {

/// The columns that every list of acts begins with.
namespace ActColumn {
enum : int { Number, LastName, FirstName, Service };
} // namespace ActColumn

/// The first state of a list: one empty row, no total, no keys.
void ClearList(forms::Grid& grid, forms::FigureLabel& total, dao::KeyList& keys);

/// Balances and totals on the screens of the till, in dinars.
inline constexpr auto AmountMask = "# ### ##0.00";

/// How a name that is Null is shown in its cell.
enum class NullName { AsBlank, AsNothing };

/// Looks up the patients and services of the acts of one list while it is filled, each of them once.
class NamesOfActs {
public:
    NamesOfActs(const dao::Recordset& patientLookup, const dao::Recordset& serviceLookup, NullName nullName);

    /// Shows the act's patient and service in their columns of the row, each text after a blank. What isn't found stays
    /// empty.
    void Show(forms::Grid& grid, int row, const dao::Recordset& act);

private:
    void ShowCells(core::NameLookup& lookup, const dao::Field& key, forms::Grid& grid, int row, int firstColumn) const;

    core::NameLookup patients;
    core::NameLookup services;
    NullName asNull;
};

} // namespace cash
