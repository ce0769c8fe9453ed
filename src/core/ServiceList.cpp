#include "core/ServiceList.h"

#include "core/KeyedList.h"
#include "core/lists.h"
#include "core/printing.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Grid.h"

namespace core {

int AppendService(KeyedList& services, const dao::Recordset& service, const dao::Recordset& totals)
{
    forms::Grid& grid = services.Grid();
    const int row = services.Add(service["num"].Key());
    grid.SetText(row, ServiceColumn::Name, " " + TextOrNothing(service["denom"]));
    if (totals["S1"].Long() > 0)
        grid.SetText(row, ServiceColumn::Count, basic::PlainText(totals["S1"].Long()));
    if (!totals["S2"].IsNull() && totals["S2"].Double() > 0)
        grid.SetText(row, ServiceColumn::Received, basic::PlainText(totals["S2"].Double()) + " ");
    return row;
}

void PrintServices(ScratchRows& rows, const forms::Grid& services)
{
    const bool hasValues = services.Columns() > ServiceColumn::Theoretical;
    for (int row = 0; row < services.Rows(); ++row) {
        const auto figure = [&](int column) { return basic::Val(services.Text(row, column)); };
        std::vector<ScratchRows::Cell> cells{{"unite", services.Text(row, ServiceColumn::Name).trimmed()},
                                             {"Page", figure(ServiceColumn::Count)},
                                             {"Mt", figure(ServiceColumn::Received)}};
        if (hasValues)
            cells.emplace_back("Mt2", figure(ServiceColumn::Theoretical));
        rows.Add(cells);
    }
}

} // namespace core
