#include "cash/ActLists.h"

#include "core/lists.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

using namespace core;

namespace cash {

int AppendService(forms::Grid& grid, basic::Int16& nextRow, const dao::Recordset& service, const dao::Recordset& totals)
{
    const int row = TakeRow(grid, nextRow);
    grid.SetText(row, ServiceColumn::Name, " " + TextOrNothing(service["denom"]));
    if (totals["S1"].Long() > 0)
        grid.SetText(row, ServiceColumn::Count, basic::PlainText(totals["S1"].Long()));
    if (!totals["S2"].IsNull() && totals["S2"].Double() > 0)
        grid.SetText(row, ServiceColumn::Received, basic::PlainText(totals["S2"].Double()) + " ");
    return row;
}

void ClearList(forms::Grid& grid, forms::FigureLabel& total, dao::KeyList& keys)
{
    grid.ClearToOneRow();
    total.setText("");
    keys.clear();
}

NamesOfActs::NamesOfActs(const dao::Recordset& patientLookup, const dao::Recordset& serviceLookup, NullName nullName)
    : patients(patientLookup, {"nom", "Prenom"}), services(serviceLookup, {"denom"}), asNull(nullName)
{
}

void NamesOfActs::Show(forms::Grid& grid, int row, const dao::Recordset& act)
{
    ShowCells(patients, act["num_patient"], grid, row, ActColumn::LastName);
    ShowCells(services, act["num_presta"], grid, row, ActColumn::Service);
}

void NamesOfActs::ShowCells(NameLookup& lookup, const dao::Field& key, forms::Grid& grid, int row,
                            int firstColumn) const
{
    const auto& names = lookup.Find(key);
    if (!names)
        return;
    int column = firstColumn;
    for (const QString& name : *names) {
        const bool isNothing = name.isNull() && asNull == NullName::AsNothing;
        grid.SetText(row, column++, isNothing ? QString() : " " + name);
    }
}

} // namespace cash
