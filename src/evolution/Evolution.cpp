#include "evolution/Evolution.h"

#include "core/globals.h"
#include "core/screens.h"
#include "core/windows.h"
#include "platform/basic/Numbers.h"
#include "platform/forms/Desk.h"
#include "platform/forms/Guard.h"
#include "platform/host/Host.h"

#include <QKeyEvent>

using namespace core;
using namespace forms;

namespace evolution {

namespace {

constexpr int OneYear = 12; // months
constexpr int FirstYear = 1900;
constexpr int LastYear = 9998;

QList<Grid::Column> MonthColumns()
{
    constexpr int nameTwips = 1900;
    constexpr int amountTwips = 1800;
    QList<Grid::Column> columns{{"Mois", nameTwips}};
    for (const char* heading : {"Recettes", "Charges", "Net", "Dépenses", "Net un an plus tôt"})
        columns << Grid::Column{QString::fromUtf8(heading), amountTwips, Qt::AlignRight};
    columns[Evolution::Expenses].tip = "Les dépenses n'entrent pas dans le net";
    return columns;
}

QList<Grid::Column> ServiceColumns()
{
    constexpr int nameTwips = 3000;
    constexpr int figureTwips = 1500;
    constexpr int amountTwips = 1900;
    return {{"Unité", nameTwips},
            {"Actes", figureTwips, Qt::AlignRight},
            {"% des actes", figureTwips, Qt::AlignRight},
            {"Recettes", amountTwips, Qt::AlignRight},
            {"% des recettes", amountTwips, Qt::AlignRight}};
}

QList<Grid::Column> ServiceMonthColumns()
{
    constexpr int nameTwips = 3000;
    constexpr int figureTwips = 1900;
    return {{"Mois", nameTwips}, {"Actes", figureTwips, Qt::AlignRight}, {"Recettes", figureTwips, Qt::AlignRight}};
}

} // namespace

Evolution::Evolution()
    : Form("Evolution", "Évolution"), Grid1("Grid1", MonthColumns()), Grid2("Grid2", ServiceColumns()),
      Grid3("Grid3", ServiceMonthColumns()), LastMonth(host::Today())
{
    BuildForm();
    ConnectHandlers();
}

void Evolution::ConnectHandlers()
{
    OnEach(Image1, &Picture::clicked, *this, &Evolution::Image1_Click);
    OnEach(Image3, &Picture::clicked, *this, &Evolution::Image3_Click);
    On(Image2, &Picture::clicked, *this, &Evolution::ShowAllServices);
    On(Combo1, &QComboBox::activated, *this, [this] { ApplyChoice(); });
    On(Text1, &TextBox::Entered, *this, &Evolution::TakeYear);
    On(Text1, &TextBox::LostFocus, *this, [this] { Text1.setText(basic::PlainText(LastMonth.Year())); });
    for (const int span : {Year, TwoYears})
        On(Option1[span], &QRadioButton::clicked, *this, [this, span] { ShowMonths(LastMonth, (span + 1) * OneYear); });
    On(SSTab1, &QTabWidget::currentChanged, *this, [this] { FillShownPage(); });

    On(Grid1, &Grid::Click, *this, [this] { Chart1.SetCurrent(Grid1.Row()); });
    On(Grid1, &Grid::Entered, *this, [this] { OpenMonth(Grid1.Row()); });
    On(Grid1, &Grid::DblClick, *this, [this] { OpenMonth(Grid1.Row()); });
    On(Chart1, &report::ChartView::CurrentChanged, *this, [this](int month) { Grid1.SelectRow(month); });
    On(Chart1, &report::ChartView::Entered, *this, &Evolution::OpenMonth);
    On(Chart1, &report::ChartView::DescriptionChanged, *this, [this] { Label2.setText(Chart1.Description()); });

    On(Grid2, &Grid::Click, *this, [this] { Chart2.SetCurrent(Grid2.Row()); });
    On(Grid2, &Grid::Entered, *this, [this] { ShowService(Grid2.Row()); });
    On(Grid2, &Grid::DblClick, *this, [this] { ShowService(Grid2.Row()); });
    On(Grid3, &Grid::Click, *this, [this] { Chart2.SetCurrent(Grid3.Row()); });
    On(Grid3, &Grid::Entered, *this, [this] { OpenMonth(Grid3.Row()); });
    On(Grid3, &Grid::DblClick, *this, [this] { OpenMonth(Grid3.Row()); });
    On(Chart2, &report::ChartView::CurrentChanged, *this,
       [this](int label) { (OpenedService < 0 ? Grid2 : Grid3).SelectRow(label); });
    On(Chart2, &report::ChartView::Clicked, *this, [this](int label) {
        if (OpenedService < 0)
            ShowService(label);
    });
    On(Chart2, &report::ChartView::Entered, *this,
       [this](int label) { OpenedService < 0 ? ShowService(label) : OpenMonth(label); });
    On(Chart2, &report::ChartView::DescriptionChanged, *this, [this] { Label4.setText(Chart2.Description()); });
}

void Evolution::Form_Load()
{
    CenterForm(*this);
    setWindowTitle(" ");
    for (const QString& name : MonthNames)
        Combo1.addItem(name.trimmed());
    Option1[Year].setChecked(true);
    ShowMonths(LastMonth, OneYear);
    Chart1.setFocus();
}

/// Brings the rows that were selected before the tables had their size into view.
void Evolution::showEvent(QShowEvent* event)
{
    Form::showEvent(event);
    Grid1.SelectRow(Grid1.Row());
}

void Evolution::Image1_Click(int index)
{
    if (index == Print)
        PrintPage();
    else
        Unload();
}

void Evolution::Image3_Click(int index)
{
    const Month stepped = LastMonth.Plus(index == Previous ? -1 : 1);
    if (stepped.Year() >= FirstYear && stepped.Year() <= LastYear)
        ShowMonths(stepped, Count());
}

void Evolution::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier)
        Combo1.setFocus();
    else
        Form::keyPressEvent(event);
}

/// Discards a year that wasn't applied, or returns to all services.
void Evolution::EscapePressed()
{
    if (Text1.hasFocus())
        Text1.setText(basic::PlainText(LastMonth.Year()));
    else if (SSTab1.currentIndex() == ServicesPage && OpenedService >= 0)
        ShowAllServices();
}

void Evolution::ApplyChoice()
{
    ShowMonths(Month(LastMonth.Year(), Combo1.currentIndex() + 1), Count());
}

void Evolution::TakeYear()
{
    const double year = basic::Val(Text1.text());
    if (year < FirstYear || year > LastYear || year != static_cast<int>(year)) {
        MsgBox("Année incorrecte", Icon::Critical, "ATTENTION");
        Text1.setFocus();
        return;
    }
    ShowMonths(Month(static_cast<int>(year), LastMonth.Number()), Count());
}

void Evolution::ShowMonths(const Month& last, int count)
{
    LastMonth = last;
    Combo1.SetListIndex(last.Number() - 1);
    Text1.setText(basic::PlainText(last.Year()));
    const Hourglass pointer;
    Shown = ReadFigures(last, count);
    SSPanel1.SetCaption("Évolution, " + PeriodName());
    if (OpenedService >= static_cast<int>(Shown.services.size()))
        OpenedService = -1;
    MonthsFilled = ServicesFilled = false;
    FillShownPage();
}

void Evolution::FillShownPage()
{
    if (SSTab1.currentIndex() == MonthsPage && !MonthsFilled)
        FillMonths();
    else if (SSTab1.currentIndex() == ServicesPage && !ServicesFilled)
        OpenedService < 0 ? FillServices() : FillServiceMonths();
}

void Evolution::ShowService(int row)
{
    if (row >= static_cast<int>(Shown.services.size()))
        return;
    OpenedService = row;
    FillServiceMonths();
    Chart2.setFocus();
}

void Evolution::ShowAllServices()
{
    const int left = OpenedService;
    OpenedService = -1;
    FillServices();
    Chart2.SetCurrent(left);
    Grid2.SelectRow(left);
    Chart2.setFocus();
}

void Evolution::OpenMonth(int row)
{
    const Month& month = Shown.months.at(static_cast<std::size_t>(row)).month;
    OpenResult(month.FirstDay(), month.LastDay());
}

} // namespace evolution
