// What the pages show: charts, tables and their texts.
#include "evolution/Evolution.h"

#include "platform/basic/Numbers.h"
#include "platform/pages/Chart.h"
#include "platform/pages/ValueText.h"

using basic::Val;
using pages::ChartSeries;

namespace evolution {

namespace {

QString AmountText(double dinars)
{
    return pages::NumberText(dinars, "# ### ### ##0.00");
}

/// An amount in a table, where 0 is left empty.
QString CellText(double dinars)
{
    return dinars == 0 ? QString() : AmountText(dinars);
}

QString InDinars(double dinars)
{
    return AmountText(dinars) + " DA";
}

double ShareOf(double part, double all)
{
    constexpr double percent = 100;
    return all > 0 ? percent * part / all : 0;
}

QString ShareText(double part, double all)
{
    return part == 0 ? QString() : pages::NumberText(ShareOf(part, all), "##0.0");
}

QString Capitalized(const QString& name)
{
    return name.left(1).toUpper() + name.mid(1);
}

struct AllServices {
    double acts = 0;
    double receipts = 0;
};

AllServices SumOf(const std::vector<ServiceFigures>& services)
{
    AllServices all;
    for (const ServiceFigures& service : services) {
        all.acts += static_cast<double>(service.AllActs());
        all.receipts += service.AllReceipts();
    }
    return all;
}

QString ActsText(qint64 acts)
{
    return pages::NumberText(static_cast<double>(acts), "### ### ##0") + (acts == 1 ? " acte" : " actes");
}

/// Fills a table with one row for each item, the last or the first one selected; without items one row stays empty.
template <class Items, class Cells>
void FillTable(forms::Grid& grid, const Items& items, int selected, const Cells& cellsOf)
{
    grid.ClearToOneRow();
    grid.SetRows(std::max(1, static_cast<int>(items.size())));
    int row = 0;
    for (const auto& item : items) {
        int column = 0;
        for (const QString& text : cellsOf(item))
            grid.SetText(row, column++, text);
        ++row;
    }
    grid.SelectRow(selected);
}

} // namespace

QString Evolution::PeriodName() const
{
    return Shown.months.front().month.Name() + " à " + Shown.months.back().month.Name();
}

QString Evolution::ChargeNote() const
{
    QString note = "Charges\u00A0: la charge par jour d'aujourd'hui, " + InDinars(Shown.dayCharge) +
                   ", pour chaque jour de tous les mois. Les dépenses n'entrent pas dans le net.";
    if (Shown.firstRecorded && !Shown.months.front().isYearBeforeRecorded)
        note += " Les mois avant " + Shown.firstRecorded->Name() + ", où rien n'est enregistré, ne sont pas dessinés.";
    return note;
}

QString Evolution::EmptyNote() const
{
    return "Aucune recette et aucune dépense, " + PeriodName();
}

pages::Chart Evolution::MonthsChart() const
{
    using Kind = ChartSeries::Kind;
    pages::Chart chart{.labels = {},
                       .series = {{"Recettes", Kind::Bar},
                                  {"Charges", Kind::Bar},
                                  {"Dépenses", Kind::Bar},
                                  {"Net", Kind::Line},
                                  {"Net un an plus tôt", Kind::ThinLine}},
                       .unit = "DA",
                       .note = ChargeNote(),
                       .emptyText = EmptyNote()};
    for (const MonthFigures& month : Shown.months) {
        chart.labels << month.month.Short();
        const std::pair<double, bool> values[] = {{month.receipts, month.isRecorded},
                                                  {month.charges, month.isRecorded},
                                                  {month.expenses, month.isRecorded},
                                                  {month.net, month.isRecorded},
                                                  {month.netYearBefore, month.isYearBeforeRecorded}};
        for (std::size_t series = 0; series < std::size(values); ++series)
            chart.series[series].values.push_back(values[series].second ? std::optional(values[series].first)
                                                                        : std::nullopt);
    }
    if (Shown.IsEmpty())
        chart.series.clear();
    return chart;
}

QString Evolution::DescriptionOf(const MonthFigures& month) const
{
    const QString yearBefore =
        month.isYearBeforeRecorded ? " (un an plus tôt " + InDinars(month.netYearBefore) + ")" : QString();
    return QStringLiteral("%1\u00A0: recettes %2, charges %3, net %4%5\u00A0; dépenses %6")
        .arg(Capitalized(month.month.Name()), InDinars(month.receipts), InDinars(month.charges), InDinars(month.net),
             yearBefore, InDinars(month.expenses));
}

QStringList Evolution::MonthDescriptions() const
{
    QStringList descriptions;
    for (const MonthFigures& month : Shown.months)
        descriptions << DescriptionOf(month);
    return descriptions;
}

void Evolution::FillMonths()
{
    MonthsFilled = true;
    Chart1.SetChart(MonthsChart(), MonthDescriptions());
    FillTable(Grid1, Shown.months, Count() - 1, [](const MonthFigures& month) -> QStringList {
        return {" " + Capitalized(month.month.Name()),
                CellText(month.receipts),
                CellText(month.charges),
                CellText(month.net),
                CellText(month.expenses),
                CellText(month.netYearBefore)};
    });
    ShowTotals();
}

/// Sums the figures as shown, where an empty cell counts as 0.
void Evolution::ShowTotals()
{
    for (int column = Receipts; column <= NetYearBefore; ++column) {
        double total = 0;
        for (int row = 0; row < Grid1.Rows(); ++row)
            total += Val(Grid1.Text(row, column));
        Label3[column].setText(CellText(total));
    }
}

pages::Chart Evolution::ServicesChart() const
{
    pages::Chart chart{.labels = {},
                       .series = {{"Part des recettes"}, {"Part des actes"}},
                       .unit = "%",
                       .note = {},
                       .emptyText = "Aucun acte, " + PeriodName(),
                       .across = true};
    const AllServices all = SumOf(Shown.services);
    for (const ServiceFigures& service : Shown.services) {
        chart.labels << service.name;
        chart.series[0].values.emplace_back(ShareOf(service.AllReceipts(), all.receipts));
        chart.series[1].values.emplace_back(ShareOf(static_cast<double>(service.AllActs()), all.acts));
    }
    return chart;
}

QStringList Evolution::ServiceDescriptions() const
{
    const AllServices all = SumOf(Shown.services);
    QStringList descriptions;
    for (const ServiceFigures& service : Shown.services)
        descriptions << QStringLiteral("%1\u00A0: recettes %2 (%3 %), %4 (%5 %)")
                            .arg(service.name, InDinars(service.AllReceipts()),
                                 pages::NumberText(ShareOf(service.AllReceipts(), all.receipts), "##0.0"),
                                 ActsText(service.AllActs()),
                                 pages::NumberText(ShareOf(static_cast<double>(service.AllActs()), all.acts), "##0.0"));
    return descriptions;
}

void Evolution::FillServices()
{
    ServicesFilled = true;
    SSPanel2.hide();
    Image2.hide();
    Grid3.hide();
    Grid2.show();
    Label5.show();
    Chart2.SetTitle("Graphique des unités");
    Chart2.SetChart(ServicesChart(), ServiceDescriptions());
    const AllServices all = SumOf(Shown.services);
    FillTable(Grid2, Shown.services, 0, [&all](const ServiceFigures& service) -> QStringList {
        const auto acts = static_cast<double>(service.AllActs());
        return {" " + service.name, acts == 0 ? QString() : pages::NumberText(acts, "### ### ##0"),
                ShareText(acts, all.acts), CellText(service.AllReceipts()),
                ShareText(service.AllReceipts(), all.receipts)};
    });
    Label5.setText(QStringLiteral("Total\u00A0: %1, recettes %2")
                       .arg(ActsText(static_cast<qint64>(all.acts)), InDinars(all.receipts)));
}

pages::Chart Evolution::ServiceMonthsChart() const
{
    const ServiceFigures& service = Shown.services.at(static_cast<std::size_t>(OpenedService));
    pages::Chart chart{.labels = {},
                       .series = {{"Recettes"}},
                       .unit = "DA",
                       .note = {},
                       .emptyText = "Aucune recette, " + PeriodName()};
    for (const MonthFigures& month : Shown.months)
        chart.labels << month.month.Short();
    chart.series[0].values.assign(service.receipts.begin(), service.receipts.end());
    return chart;
}

QStringList Evolution::ServiceMonthDescriptions() const
{
    const ServiceFigures& service = Shown.services.at(static_cast<std::size_t>(OpenedService));
    QStringList descriptions;
    for (std::size_t month = 0; month < Shown.months.size(); ++month)
        descriptions << QStringLiteral("%1, %2\u00A0: recettes %3, %4")
                            .arg(service.name, Shown.months[month].month.Name(), InDinars(service.receipts[month]),
                                 ActsText(service.acts[month]));
    return descriptions;
}

void Evolution::FillServiceMonths()
{
    ServicesFilled = true;
    const ServiceFigures& service = Shown.services.at(static_cast<std::size_t>(OpenedService));
    SSPanel2.SetCaption(service.name);
    SSPanel2.show();
    Image2.show();
    Grid2.hide();
    Label5.hide();
    Grid3.show();
    Chart2.SetTitle("Graphique des mois de " + service.name);
    Chart2.SetChart(ServiceMonthsChart(), ServiceMonthDescriptions());
    std::size_t index = 0;
    FillTable(Grid3, Shown.months, Count() - 1, [&](const MonthFigures& month) -> QStringList {
        const std::size_t at = index++;
        return {" " + Capitalized(month.month.Name()),
                service.acts[at] == 0 ? QString()
                                      : pages::NumberText(static_cast<double>(service.acts[at]), "### ### ##0"),
                CellText(service.receipts[at])};
    });
}

} // namespace evolution
