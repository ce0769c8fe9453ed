#pragma once

#include "platform/dao/Recordset.h"

#include <QHash>
#include <QStringList>
#include <vector>

/// What the lists of acts have in common.
namespace forms {
class FigureLabel;
class Grid;
} // namespace forms

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
    struct Lookup {
        dao::Recordset rows;
        std::vector<const char*> fields;
        QHash<dao::Key, QStringList> known = {}; ///< cells by key; none where there is no such row
    };

    const QStringList& CellsOf(Lookup& lookup, dao::Key key) const;
    void ShowCells(Lookup& lookup, const dao::Field& key, forms::Grid& grid, int row, int firstColumn) const;

    Lookup patients;
    Lookup services;
    NullName asNull;
};

} // namespace cash
