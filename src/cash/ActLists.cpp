#include "cash/ActLists.h"

#include "core/lists.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

using namespace core;

namespace cash {

void ClearList(forms::Grid& grid, forms::FigureLabel& total, dao::KeyList& keys)
{
    grid.ClearToOneRow();
    total.setText("");
    keys.clear();
}

NamesOfActs::NamesOfActs(const dao::Recordset& patientLookup, const dao::Recordset& serviceLookup, NullName nullName)
    : patients{patientLookup, {"nom", "Prenom"}}, services{serviceLookup, {"denom"}}, asNull(nullName)
{
}

void NamesOfActs::Show(forms::Grid& grid, int row, const dao::Recordset& act)
{
    ShowCells(patients, act["num_patient"], grid, row, ActColumn::LastName);
    ShowCells(services, act["num_presta"], grid, row, ActColumn::Service);
}

void NamesOfActs::ShowCells(Lookup& lookup, const dao::Field& key, forms::Grid& grid, int row, int firstColumn) const
{
    if (key.IsNull())
        return;
    int column = firstColumn;
    for (const QString& cell : CellsOf(lookup, key.Key()))
        grid.SetText(row, column++, cell);
}

const QStringList& NamesOfActs::CellsOf(Lookup& lookup, dao::Key key) const
{
    const auto known = lookup.known.constFind(key);
    if (known != lookup.known.constEnd())
        return *known;
    QStringList& cells = lookup.known[key];
    if (!FindKey(lookup.rows, key))
        return cells;
    for (const char* name : lookup.fields) {
        const dao::Field field = lookup.rows[name];
        const bool isNothing = field.IsNull() && asNull == NullName::AsNothing;
        cells << (isNothing ? QString() : " " + TextOrNothing(field));
    }
    return cells;
}

} // namespace cash
