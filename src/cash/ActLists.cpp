#include "cash/ActLists.h"

#include "platform/forms/Controls.h"
#include "platform/forms/Grid.h"

using namespace core;

namespace cash {

void ClearList(KeyedList& list, forms::FigureLabel& total)
{
    list.Clear();
    total.setText("");
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
