#pragma once

#include "cash/ActLists.h"
#include "cash/CodeTally.h"
#include "cash/Valuation.h"
#include "core/KeyedList.h"
#include "core/NameLookup.h"
#include "core/PeriodChooser.h"
#include "core/ServiceList.h"
#include "core/lists.h"
#include "core/printing.h"
#include "data/PaymentCode.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/report/Report.h"

#include <optional>

namespace cash {

/// "Journal d'activité": the acts of a day or period by service, by tariff code and payment state, and one by one.
/// Besides the amounts received it shows each act's value at the practice's reference rates. Never writes acts.
///
/// Three modes: choosing dates, reading, choosing what to print. A day without acts is refused; a period without acts
/// shows empty figures.
class Recettes : public forms::Form {
    Q_OBJECT
public:
    Recettes();

    forms::Panel SSPanel2{"SSPanel2", "Journal d'activité de la"};
    forms::Panel SSPanel1{"SSPanel1"}; ///< caption: the day or period
    core::PeriodChooser Dates;         ///< SSTab2: the day or period to analyse
    enum Tab { RecapTab, CodesTab, DetailTab };
    forms::TabStrip SSTab1{"SSTab1"};
    enum RecapColumn { Unit = core::ServiceColumn::Name, Count, Received, Theoretical };
    forms::Grid Grid1; ///< "Récap 1": the services
    forms::FigureLabel ActsTotal{"Label1(3)"};
    forms::FigureLabel ReceivedTotal{"Label1(2)"};     ///< of all acts, including those without a row in Grid2
    forms::FigureLabel TheoreticalTotal{"Label1(29)"}; ///< of the acts in Grid2
    enum CodeColumn { Code, FirstCount, LastCount = FirstCount + 6 };
    forms::Grid Grid3; ///< "Récap 2": counts of acts by code and payment state
    forms::ControlArray<forms::FigureLabel, 7> LT{"LT"};
    enum DetailColumn {
        ActUnit,
        ReceptionDate,
        ReceptionTime,
        Patient,
        ServiceDate,
        ServiceHour,
        Type,
        Payment,
        Amount,
        Value
    };
    forms::Grid Grid2; ///< "Détail": the acts
    forms::FigureLabel DetailReceivedTotal{"Label1(22)"};
    forms::FigureLabel DetailTheoreticalTotal{"Label1(25)"};
    enum PrintButton { PrintRecap, PrintDetail, PrintCodes };
    forms::ControlArray<forms::Picture, 3> Image3{"Image3"};
    forms::ControlArray<forms::Label, 3> Label5{"Label5"}; ///< hover legends of Image3
    forms::Panel SSPanel3{"SSPanel3", "Imprimer . . . "};
    enum Scope { AllUnits, CurrentUnit, Nothing };
    forms::ControlArray<forms::OptionButton, 3> SSOption1{"SSOption1"};
    enum ScopeChoice { Cancel, Accept };
    forms::ControlArray<forms::Picture, 2> Image4{"Image4"};
    enum Action { OtherDates, Quit };
    forms::ControlArray<forms::Picture, 2> Image1{"Image1"};
    forms::Bulle Bulle;

    /// Whether the chosen days have acts; shows a message otherwise.
    bool CheckDayActivity();
    /// Clears and fills the three tabs for the chosen days. The last cell in the first row of Grid1 and of Grid2 isn't
    /// cleared: it keeps its text until it is overwritten.
    void FillJournal();
    /// Prints the services as Grid1 shows them.
    void PrintJournalRecap();
    /// Prints the counts as Grid3 shows them; leaves the grid on its last row.
    void PrintCodeMatrix();
    /// Prints the acts of the current service, with the totals of all; refused for a service without acts.
    void PrintUnitDetail();
    /// Prints the acts of Grid2 in their order. An act deleted since is printed without a value.
    void PrintAllDetail();

    void Grid1_Click();
    void Grid2_Click();
    void Grid3_Click();
    void Image1_Click(int index);
    void Image2_Click(int index);
    void Image3_Click(int index);
    void Image4_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void BuildPages();
    void BuildScopePanel();
    void OpenLookups();
    void SetupJournalGrids();

    void ChooseDates();
    void ShowChosenDates(int acceptPicture);
    /// Returns to reading; focuses the grid of the current page.
    void Browse();
    void OpenScopePanel();
    void CloseScopePanel();

    QString ActsOfUnit(dao::Key unit) const;
    void ClearJournal();
    void AddService(core::NameLookup& patients);
    void AddJournalDetail(core::NameLookup& patients);
    /// Whether Grid2 has room for `acts` more; shows a message otherwise.
    bool FitsDetail(int acts) const;
    void AddDetailRow(const QString& unit, core::NameLookup& patients);
    void AddJournalRow();
    void ShowTotals();
    void ShowCodeCounts();
    std::vector<core::PrintStep::Heading> JournalHeadings() const;
    void Print(core::PrintStep step);
    void PrintActs(const QString& what, std::function<QList<ValuedAct>()> acts);

    core::TariffRates Rates{}; ///< read when the screen opens
    CodeTally CodeCounts;
    /// Values the acts in Grid2. An act without a code takes the code of the act before it, across services and fills.
    Valuation Values;
    QString FromDateUS; ///< chosen bounds as mm/dd/yyyy
    QString ToDateUS;
    int PeriodActs = 0;
    double PeriodReceived = 0; ///< dinars, like all below
    double PeriodTheoretical = 0;
    double ServiceReceived = 0;
    double ServiceTheoretical = 0;
    double DetailReceived = 0;
    double DetailTheoretical = 0;

    dao::Recordset PatientLookup, ActsByNum;
    dao::Recordset ServiceRecords, ServiceTotals, DetailActs;

    core::KeyedList LRecap{Grid1}; ///< the services
    core::KeyedList List1{Grid2};  ///< the acts of the detail
    const QStringList List_R = data::PaymentCodes();
    const QStringList List_HH = core::HourSlots();
    /// Shows the hourglass while set. A period that ends before it starts leaves it set until the next fill or print,
    /// or until the screen closes.
    std::optional<forms::Hourglass> Pointer;
    report::Report Report1;
};

} // namespace cash
