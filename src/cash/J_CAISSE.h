#pragma once

#include "cash/ActLists.h"
#include "cash/CorrectionPanel.h"
#include "core/KeyedList.h"
#include "core/ServiceList.h"
#include "core/lists.h"
#include "data/PaymentCode.h"
#include "platform/basic/Int16.h"
#include "platform/dao/Recordset.h"
#include "platform/forms/Bulle.h"
#include "platform/forms/ControlArray.h"
#include "platform/forms/Form.h"
#include "platform/forms/Grid.h"
#include "platform/report/Report.h"

namespace cash {

/// "Caisse du Jour": opening balance, receipts, expenses and closing balance of one day, with the lists behind the
/// figures. No balance is stored: every figure is recomputed, so correcting a past act changes that day's statement and
/// all later ones. Money counts on the act's own `date`. Opens on the day in PickedDate.
class J_CAISSE : public forms::Form {
    Q_OBJECT
public:
    J_CAISSE();

    forms::Panel SSPanel1{"SSPanel1"}; ///< caption: the heading; Tag: the shown day as dd/mm/yyyy
    enum Tab { RecapTab, SettledTab, PendingTab, ExpensesTab };
    forms::TabStrip SSTab1{"SSTab1"};
    enum RecapColumn { Unit = core::ServiceColumn::Name, Count, Received };
    forms::Grid Grid1; ///< "Récap": the services
    enum ListColumn { Hour = ActColumn::Service + 1, Code, Amount };
    forms::Grid Grid2; ///< "Actes Réglés"
    forms::Grid Grid3; ///< "Instances"
    enum ExpenseColumn { ExpenseNumber, Object, Spent };
    forms::Grid Grid4; ///< "Dépenses"
    enum Figure {
        DayActs,
        OpeningBalance,
        DayReceived,
        DaySpent,
        NewBalance,
        SettledTotal,
        PendingTotal,
        ExpensesTotal
    };
    forms::ControlArray<forms::FigureLabel, 8> RCP{"RCP"};
    enum PageAction { PrintSettled, PrintPending, PrintExpenses, PrintRecap, Correct };
    forms::ControlArray<forms::Picture, 5> Image2{"Image2"};
    CorrectionPanel SSPanel2{"SSPanel2", "Text1"};
    enum Action { OtherDate = 1, Quit };
    forms::ControlArray<forms::Picture, 2, 1> Image1{"Image1"};
    forms::Bulle Bulle;

    /// Shows a day, given as dd/mm/yyyy.
    void ShowCashDay(const QString& day);
    void FillSettledActs();
    void FillPendingActs();
    void FillDayExpenses();
    void FillCashRecap();
    /// Loads the current pending act into the correction panel; false when it no longer exists.
    bool LoadCorrection();
    /// Saves the act in the correction panel and refreshes the day; false when the act no longer exists.
    bool SaveCorrection();
    /// Prints the statement of the day as shown.
    void PrintCashRecap();
    /// Prints a list of the day through the template of that name.
    void PrintDayList(const dao::KeyList& list, const QString& templateName);

    void Grid3_Click();
    void Grid3_DblClick();
    void Image1_Click(int index);
    void Image2_Click(int index);

protected:
    void Form_Load() override;
    void EscapePressed() override;

private:
    void BuildForm();
    void BuildPages();
    /// Shows a later or earlier day, unless an act is being corrected.
    void MoveDay(int days);
    QString CutCashDay();
    void SumServices();
    double BalanceBefore();
    void ListActs(dao::Recordset& acts, core::KeyedList& list, forms::FigureLabel& total, bool showsZeroAmounts);
    void ListAct(const dao::Recordset& act, NamesOfActs& names, core::KeyedList& list, bool showsZeroAmounts);
    void OpenCorrection();
    void CloseCorrection();
    void PrintOrRefuse(const dao::KeyList& list, const QString& templateName);

    QString CashDayUS; ///< the shown day as mm/dd/yyyy
    basic::Int16 ActsTotal;
    double ReceivedTotal = 0; ///< dinars
    double RunningAmount = 0; ///< dinars

    dao::Recordset PatientLookup, ServiceLookup;
    dao::Recordset SettledActs, PendingActs, DayExpenses;
    dao::Recordset ServiceRecords, ServiceTotals;

    core::KeyedList Services{Grid1};
    core::KeyedList List2{Grid2}; ///< the settled acts
    core::KeyedList List3{Grid3}; ///< the pending acts
    core::KeyedList List4{Grid4}; ///< the expenses
    const QStringList List_R = data::PaymentCodes();
    const QStringList List_HH = core::HourSlots();
    report::Report Report1;
};

} // namespace cash
