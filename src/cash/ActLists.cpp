#include "cash/ActLists.h"

#include "core/lists.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

using namespace core;

namespace cash {

namespace {

QString NameCell(const dao::Field& name, NullName nullName)
{
    if (name.IsNull() && nullName == NullName::AsNothing)
        return {};
    return " " + TextOrNothing(name);
}

bool Find(dao::Recordset& lookup, const dao::Field& key)
{
    return !key.IsNull() && FindKey(lookup, key.Key());
}

} // namespace

void ClearList(forms::Grid& grid, forms::FigureLabel& total, dao::KeyList& keys)
{
    grid.ClearToOneRow();
    total.setText("");
    keys.clear();
}

int TakeRow(forms::Grid& grid, basic::Int16& nextRow)
{
    const int row = nextRow;
    if (row > grid.Rows() - 1)
        grid.AppendRow();
    ++nextRow;
    return row;
}

void ShowNames(forms::Grid& grid, int row, const dao::Recordset& act, const NameLookups& lookups, NullName nullName)
{
    if (Find(lookups.patients, act["num_patient"])) {
        grid.SetText(row, 1, NameCell(lookups.patients["nom"], nullName));
        grid.SetText(row, 2, NameCell(lookups.patients["Prenom"], nullName));
    }
    if (Find(lookups.services, act["num_presta"]))
        grid.SetText(row, 3, NameCell(lookups.services["denom"], nullName));
}

} // namespace cash
