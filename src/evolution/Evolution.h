#pragma once

#include "evolution/Figures.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/report/ChartView.h"
#include "platform/report/Report.h"

namespace pages {
struct Chart;
}

namespace evolution {

/// "Évolution": the last 12 or 24 months up to a month that is chosen, as a chart and a table. The first page compares
/// receipts, charges, net and expenses of the months, the second one the services; there a service can be opened to see
/// its months. A page is filled when it is first shown.
class Evolution : public forms::Form {
    Q_OBJECT
public:
    Evolution();

    forms::Panel SSPanel1{"SSPanel1"}; ///< caption: the months shown
    forms::Label Label1{"Label1", "Jusqu'à"};
    forms::ComboBox Combo1{"Combo1"};  ///< the last month
    forms::AmountField Text1{"Text1"}; ///< its year
    enum Step { Previous, Next };
    forms::ControlArray<forms::Picture, 2> Image3{"Image3"};
    enum Span { Year, TwoYears };
    forms::ControlArray<forms::OptionButton, 2> Option1{"Option1"};
    enum Action { Print, Quit };
    forms::ControlArray<forms::Picture, 2> Image1{"Image1"};

    enum Page { MonthsPage, ServicesPage };
    forms::TabStrip SSTab1{"SSTab1"};
    report::ChartView Chart1{"Chart1", "Graphique des mois"};
    forms::Label Label2{"Label2"}; ///< the month under the pointer or the current one, in words
    enum MonthColumn { MonthName, Receipts, Charges, Net, Expenses, NetYearBefore };
    forms::Grid Grid1;
    forms::ControlArray<forms::FigureLabel, 5, Receipts> Label3{"Label3"}; ///< column totals

    forms::Panel SSPanel2{"SSPanel2"}; ///< caption: the service whose months are shown
    forms::Picture Image2{"Image2"};   ///< returns to all services
    report::ChartView Chart2{"Chart2", "Graphique des unités"};
    forms::Label Label4{"Label4"};
    enum ServiceColumn { ServiceName, Acts, ShareOfActs, Amount, ShareOfAmount };
    forms::Grid Grid2;
    forms::Label Label5{"Label5"}; ///< the totals of all services
    enum ServiceMonthColumn { ServiceMonth, MonthActs, MonthAmount };
    forms::Grid Grid3;

    /// Shows `count` months up to `last`.
    void ShowMonths(const Month& last, int count);
    /// Shows the months of a service on the second page.
    void ShowService(int row);
    void ShowAllServices();
    /// Opens "Résultat" on one of the months shown.
    void OpenMonth(int row);
    /// Prints the chart and the table of the page shown.
    void PrintPage();

    void Image1_Click(int index);
    void Image3_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void BuildForm();
    void BuildPages();
    void ConnectHandlers();

    void ApplyChoice();
    void TakeYear();
    void FillShownPage();
    void FillMonths();
    void FillServices();
    void FillServiceMonths();
    void ShowTotals();

    int Count() const { return static_cast<int>(Shown.months.size()); }
    QString PeriodName() const;
    QString ChargeNote() const;
    QString EmptyNote() const;
    pages::Chart MonthsChart() const;
    pages::Chart ServicesChart() const;
    pages::Chart ServiceMonthsChart() const;
    QString DescriptionOf(const MonthFigures& month) const;
    QStringList MonthDescriptions() const;
    QStringList ServiceDescriptions() const;
    QStringList ServiceMonthDescriptions() const;

    void PrintMonths();
    void PrintServices();
    void PrintServiceMonths();

    Month LastMonth; ///< the last of the months shown
    Figures Shown;
    int OpenedService = -1; ///< row of the service whose months are shown
    bool MonthsFilled = false;
    bool ServicesFilled = false;
    report::Report Report1;
};

} // namespace evolution
