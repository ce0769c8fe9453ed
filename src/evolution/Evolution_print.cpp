#include "evolution/Evolution.h"

#include "core/globals.h"
#include "core/printing.h"
#include "platform/host/Files.h"
#include "platform/pages/Chart.h"

using namespace core;

namespace evolution {

namespace {

constexpr auto MonthsTemplate = "ZEP_EVO1.RPT";
constexpr auto ServicesTemplate = "ZEP_EVO2.RPT";

/// What the template may draw: nothing, the figures of the month, or those of the year before too.
double RecordedMark(const Figures& figures, const MonthFigures& month)
{
    if (figures.IsEmpty())
        return 0;
    return month.isYearBeforeRecorded ? 2 : month.isRecorded ? 1 : 0;
}

} // namespace

void Evolution::PrintPage()
{
    if (SSTab1.currentIndex() == MonthsPage)
        PrintMonths();
    else if (OpenedService < 0)
        PrintServices();
    else
        PrintServiceMonths();
}

void Evolution::PrintMonths()
{
    RunPrintStep(Report1, {.reportName = MonthsTemplate,
                           .headings = {{"ch4", SSPanel1.Caption()}, {"ch5", ChargeNote()}, {"ch6", EmptyNote()}},
                           .scratchTable = "RCP2",
                           .fillRows =
                               [this](ScratchRows& rows) {
                                   for (const MonthFigures& month : Shown.months)
                                       rows.Add({{"denom", month.month.Short()},
                                                 {"C1", month.receipts},
                                                 {"C2", month.charges},
                                                 {"C3", month.net},
                                                 {"C4", month.expenses},
                                                 {"C5", month.netYearBefore},
                                                 {"C7", RecordedMark(Shown, month)}});
                               },
                           .folder = host::FolderOfOwnFile(ProgramFolder, MonthsTemplate),
                           .proposedName = SSPanel1.Caption()});
}

/// Prints the months of a service with the template of the months, whose empty columns and series are omitted.
void Evolution::PrintServiceMonths()
{
    const ServiceFigures& service = Shown.services.at(static_cast<std::size_t>(OpenedService));
    const QString title = service.name + ", " + PeriodName();
    RunPrintStep(Report1, {.reportName = MonthsTemplate,
                           .headings = {{"ch4", title}, {"ch5", QString()}, {"ch6", ServiceMonthsChart().emptyText}},
                           .scratchTable = "RCP2",
                           .fillRows =
                               [&](ScratchRows& rows) {
                                   for (std::size_t month = 0; month < Shown.months.size(); ++month)
                                       rows.Add({{"denom", Shown.months[month].month.Short()},
                                                 {"C1", service.receipts[month]},
                                                 {"C6", static_cast<double>(service.acts[month])},
                                                 {"C7", 1}});
                               },
                           .folder = host::FolderOfOwnFile(ProgramFolder, MonthsTemplate),
                           .proposedName = title});
}

void Evolution::PrintServices()
{
    RunPrintStep(Report1, {.reportName = ServicesTemplate,
                           .headings = {{"ch4", SSPanel1.Caption() + ", par unité"},
                                        {"ch5", QString()},
                                        {"ch6", ServicesChart().emptyText}},
                           .scratchTable = "RCP2",
                           .fillRows =
                               [this](ScratchRows& rows) {
                                   const pages::Chart shares = ServicesChart();
                                   std::size_t row = 0;
                                   for (const ServiceFigures& service : Shown.services) {
                                       rows.Add({{"denom", service.name},
                                                 {"C1", static_cast<double>(service.AllActs())},
                                                 {"C2", shares.series[1].values[row].value_or(0)},
                                                 {"C3", service.AllReceipts()},
                                                 {"C4", shares.series[0].values[row].value_or(0)}});
                                       ++row;
                                   }
                               },
                           .folder = host::FolderOfOwnFile(ProgramFolder, ServicesTemplate),
                           .proposedName = SSPanel1.Caption() + ", par unité"});
}

} // namespace evolution
